#include "Platform/UserDefaults.h"

#include "Fakes/FakeUserDefaults.h"
#include "Harness/Folder.h"
#include "Platform/Bundle.h"
#include "Platform/Freedesktop/UserDefaultsFile.h"

#include <QDateTime>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

namespace {

enum class Kind { inMemory, inAFile };

class UserDefaultsContract : public testing::TestWithParam<Kind> {
protected:
    /// As at the start of a run.
    std::shared_ptr<Platform::UserDefaults> open()
    {
        if (GetParam() == Kind::inMemory)
            return m_inMemory;
        return std::make_shared<Platform::UserDefaultsFile>(
            m_folder.filePath(u"not yet there/defaults.ini"_qs));
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Fakes::FakeUserDefaults> m_inMemory =
        std::make_shared<Fakes::FakeUserDefaults>();
};

TEST_P(UserDefaultsContract, whatIsSetIsThereAtOnceAndAtTheNextRun)
{
    const QDateTime date({2026, 3, 1}, {12, 30, 15, 250}, Qt::UTC);
    const QVariantMap values{{u"Number"_qs, 768U}, {u"Negative"_qs, -1}, {u"On"_qs, true},
        {u"Off"_qs, false}, {u"Date"_qs, date}, {u"Text"_qs, u"Ü, \"=;\n%"_qs}};
    auto defaults = open();
    for (auto entry = values.begin(); entry != values.end(); ++entry)
        defaults->setValue(entry.key(), entry.value());
    for (int run = 1; run <= 2; ++run) {
        for (auto entry = values.begin(); entry != values.end(); ++entry)
            EXPECT_EQ(defaults->value(entry.key()), entry.value())
                << qPrintable(entry.key()) << " in run " << run;
        defaults.reset(); // The old one has written before the new one reads.
        defaults = open();
    }
    // Not the text "true", which would be a record of another type.
    EXPECT_EQ(defaults->value(u"On"_qs).typeId(), QMetaType::Bool);
    EXPECT_EQ(defaults->value(u"Date"_qs).toDateTime().timeSpec(), Qt::UTC);
}

TEST_P(UserDefaultsContract, theLastChangeCounts)
{
    auto defaults = open();
    for (int number = 1; number <= 20; ++number)
        defaults->setValue(u"Number"_qs, number);
    defaults->setValue(u"Removed"_qs, 1);
    defaults->remove(u"Removed"_qs);
    defaults.reset();
    defaults = open();
    EXPECT_EQ(defaults->value(u"Number"_qs), 20);
    EXPECT_FALSE(defaults->value(u"Removed"_qs).isValid());
}

INSTANTIATE_TEST_SUITE_P(UserDefaults, UserDefaultsContract,
    testing::Values(Kind::inMemory, Kind::inAFile),
    [](const auto& kind) { return kind.param == Kind::inMemory ? "inMemory" : "inAFile"; });

TEST(UserDefaultsFileTest, aBrokenFileIsReplaced)
{
    const Harness::Folder folder;
    const auto path = QString::fromStdString(
        folder.fileWith(QByteArrayLiteral("[General\n=\0\xff\xfe%zz\nHotKeyCode"), "defaults.ini"));
    Platform::UserDefaultsFile(path).setValue(u"Number"_qs, 7);
    EXPECT_EQ(Platform::UserDefaultsFile(path).value(u"Number"_qs), 7);
}

TEST(UserDefaultsFileTest, aFolderThatCantBeWrittenLeavesTheValuesInForce)
{
    Platform::UserDefaultsFile defaults(u"/dev/null/defaults.ini"_qs);
    defaults.setValue(u"Number"_qs, 7);
    EXPECT_EQ(defaults.value(u"Number"_qs), 7);
}

TEST(UserDefaultsFileTest, aDevelopmentBuildHasAFileOfItsOwn)
{
    const auto config = qEnvironmentVariable("XDG_CONFIG_HOME");
    const Platform::Bundle bundle{
        .identifier = u"org.example.App"_qs, .shortVersion = u"1.2"_qs, .version = u"345"_qs};
    EXPECT_EQ(
        Platform::UserDefaultsFile::standardPath(bundle), config + u"/org.example.App.ini"_qs);
    EXPECT_EQ(
        Platform::UserDefaultsFile::standardPath(std::nullopt), config + u"/Lumenote (dev).ini"_qs);
}

} // namespace
