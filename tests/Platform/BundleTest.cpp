#include "Platform/Bundle.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <gtest/gtest.h>

using Platform::Bundle;

namespace {

TEST(BundleTest, onlyACompleteBundleIsOne)
{
    struct Row {
        const char* name;
        QByteArray contents;
        std::optional<Bundle> bundle;
    };
    const Bundle complete{
        .identifier = u"org.example.App"_qs, .shortVersion = u"1.2"_qs, .version = u"345"_qs};
    const std::array rows{
        Row{"complete",
            R"({"identifier": "org.example.App", "shortVersion": "1.2", "version": "345"})",
            complete},
        Row{"numberForText",
            R"({"identifier": "org.example.App", "shortVersion": 1.2, "version": "345"})",
            std::nullopt},
        Row{"fieldMissing", R"({"identifier": "org.example.App", "shortVersion": "1.2"})",
            std::nullopt},
        Row{"list", R"(["identifier", "shortVersion", "version"])", std::nullopt},
        Row{"cutShort", R"({"identifier": "org.exam)", std::nullopt},
        Row{"empty", "", std::nullopt},
    };
    const QTemporaryDir folder;
    for (const auto& row : rows) {
        const auto path = folder.filePath(QString::fromUtf8(row.name));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(row.contents);
        file.close();
        EXPECT_EQ(Platform::readBundle(path), row.bundle) << row.name;
    }
    EXPECT_EQ(Platform::readBundle(folder.filePath(u"nothing here"_qs)), std::nullopt);
    EXPECT_EQ(Platform::readBundle(folder.path()), std::nullopt) << "a folder";
}

} // namespace
