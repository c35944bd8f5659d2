#include "Harness/Surroundings.h"

#include <QDir>
#include <QFile>

namespace Harness {

Surroundings::Surroundings()
    : m_isComplete(pinFolders())
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const auto* variable : {"LANGUAGE", "QT_QPA_PLATFORMTHEME", "QT_IM_MODULE", "DISPLAY",
             "WAYLAND_DISPLAY", "TESSDATA_PREFIX"})
        qunsetenv(variable);
}

bool Surroundings::pinFolders()
{
    const QDir root(m_home.path());
    bool isComplete = m_home.isValid() && qputenv("HOME", m_home.path().toUtf8());
    for (const auto* variable :
        {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        isComplete = isComplete
            && root.mkdir(QString::fromLatin1(variable),
                QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
            && qputenv(variable, root.filePath(QString::fromLatin1(variable)).toUtf8());
    return isComplete;
}

} // namespace Harness
