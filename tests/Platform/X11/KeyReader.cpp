// A window that says of every key press what shortcut it types, as "code modifiers", or "none".

#include "HotKeyShortcut.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>

#include <cstdio>

namespace {

class KeyReader final : public QRasterWindow {
protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const auto shortcut = Lumenote::HotKeyShortcut::fromEvent(*event);
        if (shortcut)
            static_cast<void>(std::printf("%u %x\n", shortcut->keyCode, shortcut->modifiers));
        else
            static_cast<void>(std::puts("none"));
        static_cast<void>(std::fflush(stdout));
    }

    void focusInEvent(QFocusEvent* /*event*/) override
    {
        static_cast<void>(std::puts("ready"));
        static_cast<void>(std::fflush(stdout));
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    KeyReader window;
    window.show();
    window.requestActivate();
    return QGuiApplication::exec();
}
