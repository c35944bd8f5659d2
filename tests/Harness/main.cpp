// The main program of every test: the same locale, fonts and drawing on each machine, and nothing
// of the user's own folders.

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <gtest/gtest.h>

namespace {

bool pinFolders(const QTemporaryDir& home)
{
    const QDir root(home.path());
    bool isComplete = home.isValid() && qputenv("HOME", home.path().toUtf8());
    for (const auto* variable :
        {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        isComplete = isComplete
            && root.mkdir(QString::fromLatin1(variable),
                QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
            && qputenv(variable, root.filePath(QString::fromLatin1(variable)).toUtf8());
    return isComplete;
}

void pinSurroundings()
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const auto* variable : {"LANGUAGE", "QT_QPA_PLATFORMTHEME", "QT_IM_MODULE", "DISPLAY",
             "WAYLAND_DISPLAY", "TESSDATA_PREFIX"})
        qunsetenv(variable);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    if (!pinFolders(home)) {
        static_cast<void>(std::fputs("harness: no temporary folders to run in\n", stderr));
        return 1;
    }
    pinSurroundings();
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
