#include "Platform/X11/EndOnServerLoss.h"

#include <QGuiApplication>
#include <QThread>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>

#include <utility>

namespace Platform {

namespace {

std::function<void()>& atLoss()
{
    static std::function<void()> handler;
    return handler;
}

QtMessageHandler& nextHandler()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

bool isLost()
{
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr && x11->connection() != nullptr
        && xcb_connection_has_error(x11->connection()) != 0;
}

/// The warning that Qt gives before it exits is the one sign of the loss that comes in time: a
/// handler of std::atexit runs only after the statics that were made later have gone.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (QThread::currentThread() == qGuiApp->thread() && isLost())
        if (const auto end = std::exchange(atLoss(), nullptr))
            end();
    nextHandler()(type, context, message);
}

} // namespace

EndOnServerLoss::EndOnServerLoss(std::function<void()> end)
{
    atLoss() = std::move(end);
    nextHandler() = qInstallMessageHandler(handleMessage);
}

EndOnServerLoss::~EndOnServerLoss()
{
    qInstallMessageHandler(nextHandler());
    atLoss() = nullptr;
}

} // namespace Platform
