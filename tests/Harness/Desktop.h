#pragma once

#include <QByteArrayList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>

#include <memory>

namespace Harness {

/// What one does to a desktop from outside: with the tools of X, and with other programs on it.
class Desktop {
public:
    explicit Desktop(
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    /// Where the two displays of DesktopMain are, in pixels of the root. Nothing is in the corner.
    static constexpr QRect firstMonitor{700, 50, 900, 800};
    static constexpr QRect secondMonitor{0, 100, 700, 600};

    bool setUpMonitors() const;
    bool plugSecondMonitor() const;
    bool unplugSecondMonitor() const;

    /// Runs a program until it ends. Whether it succeeded.
    bool run(const char* program, const QByteArrayList& arguments) const;
    QByteArray output(const char* program, const QByteArrayList& arguments) const;

    /// Ended together with the pointer. Null where it doesn't get to work.
    using Program = std::unique_ptr<QProcess, void (*)(QProcess*)>;
    Program startWindowManager() const; ///< Openbox.
    Program startCompositor(const QByteArrayList& arguments = {}) const; ///< Picom.
    Program start(const char* program, const QByteArrayList& arguments) const;

private:
    QProcessEnvironment m_environment;
};

} // namespace Harness
