#include "Platform/Bundle.h"

#include "Harness/Folder.h"

using Platform::Bundle;

namespace {

TEST(BundleTest, onlyACompleteBundleIsOne)
{
    const Harness::Folder folder;
    const auto read = [&](const QByteArray& contents) {
        return Platform::readBundle(QString::fromStdString(folder.fileWith(contents)));
    };
    const Bundle complete{
        .identifier = u"org.example.App"_qs, .shortVersion = u"1.2"_qs, .version = u"345"_qs};
    EXPECT_EQ(read(R"({"identifier": "org.example.App", "shortVersion": "1.2", "version": "345"})"),
        complete);
    for (const auto* contents :
        {R"({"identifier": "org.example.App", "shortVersion": 1.2, "version": "345"})",
            R"({"identifier": "org.example.App", "shortVersion": "1.2"})",
            R"(["identifier", "shortVersion", "version"])", R"({"identifier": "org.exam)", ""})
        EXPECT_EQ(read(contents), std::nullopt) << contents;
    for (const auto& path : {folder.pathOf("nothing here"), folder.path()})
        EXPECT_EQ(Platform::readBundle(QString::fromStdString(path)), std::nullopt) << path;
}

} // namespace
