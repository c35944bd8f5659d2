// Shows an alert with the title, the text and the buttons of its arguments, one after the other,
// and says which button was taken.

#include "Platform/Desktop/MessageBoxAlerts.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const auto arguments = QApplication::arguments();
    Platform::MessageBoxAlerts alerts;
    bool isBack = false;
    alerts.present({.title = arguments.at(1), .text = arguments.at(2), .buttons = arguments.mid(3)},
        [&](int button) {
            static_cast<void>(std::printf("%s %d\n", isBack ? "later" : "at once", button));
            static_cast<void>(std::fflush(stdout));
            QApplication::quit();
        });
    isBack = true;
    return QApplication::exec();
}
