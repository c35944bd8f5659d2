// Puts what it reads from standard input on the desktop's pasteboard, as "png" or "text", says so,
// and keeps it there until it is ended.

#include "Platform/Desktop/ClipboardPasteboard.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QFile input;
    if (argc != 2 || !input.open(stdin, QIODevice::ReadOnly))
        return 64;
    const auto bytes = input.readAll();
    Platform::ClipboardPasteboard pasteboard;
    const bool isSet = qstrcmp(argv[1], "png") == 0 ? pasteboard.setPng(bytes)
                                                    : pasteboard.setText(QString::fromUtf8(bytes));
    static_cast<void>(std::puts(isSet ? "set" : "refused"));
    static_cast<void>(std::fflush(stdout));
    return QGuiApplication::exec();
}
