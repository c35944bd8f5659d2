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

// Hidden files, braces, lower case and a missing date are among what the fuzz target replays.
TEST(CaptureIdentityTest, aNameIsACapturesOnlyIfAllOfItIs)
{
    const std::string date = "20260116-173005-123-";
    for (const auto& name : {date + uuid + ".jpeg", date + uuid + ".\xff\xf0%41 ", date + uuid,
             "20240229-000000-000-" + uuid + ".png",
             date + "00000000-0000-0000-0000-000000000000.png"})
        EXPECT_TRUE(CaptureIdentity::fromFileName(name)) << name;
    for (const auto& name :
        {"20260116-173005-" + uuid + ".png", "20260229-000000-000-" + uuid + ".png",
            "20260116-240000-000-" + uuid + ".png", "20161231-235960-000-" + uuid + ".png",
            "00000101-000000-000-" + uuid + ".png", "2026+116-173005-123-" + uuid + ".png",
            "2026011-6173005-123-" + uuid + ".png", "2026011\u0666-173005-123-" + uuid + ".png",
            date + "3F2504E04-F89-41D3-9A0C-0305E82C3301.png",
            date + "3F2504E0-4F89-41D3-9A0C-0305E82C330G.png",
            date + std::string(1, '\0') + uuid.substr(1) + ".png", date + uuid + ".png.part",
            date + uuid + "-1.png", std::string(), std::string("Text")})
        EXPECT_FALSE(CaptureIdentity::fromFileName(name)) << name;
}

} // namespace
