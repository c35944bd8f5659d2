#include "Model/CaptureIdentity.h"

#include <gtest/gtest.h>

namespace {

using Lumenote::CaptureIdentity;

const std::string uuid = "3F2504E0-4F89-41D3-9A0C-0305E82C3301";

TEST(CaptureIdentityTest, nameTellsWhatItWasMadeFrom)
{
    const CaptureIdentity identity{.id = QUuid(QString::fromStdString(uuid)),
        .capturedAt = QDateTime(QDate(2026, 1, 16), QTime(17, 30, 5, 123), Qt::UTC)};
    EXPECT_EQ(identity.fileName(), "20260116-173005-123-" + uuid + ".png");
    EXPECT_EQ(CaptureIdentity::fromFileName(identity.fileName()), identity);

    auto elsewhere = identity;
    elsewhere.capturedAt = identity.capturedAt.toOffsetFromUtc(3600);
    EXPECT_EQ(elsewhere.fileName(), identity.fileName());
}

struct Name {
    const char* name;
    std::string fileName;
    bool isCapture;
};

class CaptureNameTest : public testing::TestWithParam<Name> { };

TEST_P(CaptureNameTest, isACaptureOnlyIfAllOfItIs)
{
    EXPECT_EQ(CaptureIdentity::fromFileName(GetParam().fileName).has_value(), GetParam().isCapture);
}

const std::string date = "20260116-173005-123-";

INSTANTIATE_TEST_SUITE_P(, CaptureNameTest,
    testing::Values(Name{"otherExtension", date + uuid + ".jpeg", true},
        Name{"strangeExtension", date + uuid + ".\xff\xf0%41 ", true},
        Name{"noExtension", date + uuid, true},
        Name{"lowerCase", date + "3f2504e0-4f89-41d3-9a0c-0305e82c3301.png", true},
        Name{"leapDay", "20240229-000000-000-" + uuid + ".png", true},
        Name{"nilUuid", date + "00000000-0000-0000-0000-000000000000.png", true},
        Name{"noMilliseconds", "20260116-173005-" + uuid + ".png", false},
        Name{"noLeapDay", "20260229-000000-000-" + uuid + ".png", false},
        Name{"month13", "20261316-173005-123-" + uuid + ".png", false},
        Name{"hour24", "20260116-240000-000-" + uuid + ".png", false},
        Name{"leapSecond", "20161231-235960-000-" + uuid + ".png", false},
        Name{"yearZero", "00000101-000000-000-" + uuid + ".png", false},
        Name{"signInDate", "2026+116-173005-123-" + uuid + ".png", false},
        Name{"blankInDate", "2026 116-173005-123-" + uuid + ".png", false},
        Name{"shiftedDashes", "2026011-6173005-123-" + uuid + ".png", false},
        Name{"otherDigits", "2026011\u0666-173005-123-" + uuid + ".png", false},
        Name{"bracedUuid", date + "{" + uuid + "}.png", false},
        Name{"shiftedUuid", date + "3F2504E04-F89-41D3-9A0C-0305E82C3301.png", false},
        Name{"noHexDigit", date + "3F2504E0-4F89-41D3-9A0C-0305E82C330G.png", false},
        Name{"zeroInside", date + std::string(1, '\0') + uuid.substr(1) + ".png", false},
        Name{"secondExtension", date + uuid + ".png.part", false},
        Name{"hidden", "." + date + uuid + ".png", false},
        Name{"tail", date + uuid + "-1.png", false}, Name{"empty", "", false},
        Name{"textFolder", "Text", false}),
    [](const auto& info) { return info.param.name; });

} // namespace
