#include "Platform/X11/X11DisplayServer.h"

#include "Harness/PaintedWindow.h"
#include "Harness/Waiting.h"
#include "OwnWindow.h"
#include "Platform/DisplayServerContract.h"
#include "Platform/X11/Session.h"

#include <gtest/gtest.h>
#include <map>

namespace {

constexpr QRgb plain = 0xff000000; ///< Added to colours that the contract compares whole.

class X11World final : public ContractWorld {
public:
    Platform::DisplayServer& server() override { return *m_server; }

    quint32 showWindow(const QRect& rect, QRgb color, const QString& title) override
    {
        QByteArrayList options{"plain", "yes"};
        if (!title.isEmpty())
            options += {"name", title.toUtf8()};
        auto window = std::make_unique<Harness::PaintedWindow>(
            rect.translated(origin()), color & ~plain, options);
        const auto id = window->id();
        m_windows[id] = std::move(window);
        return id;
    }

    void showOwnWindow(const QRect& rect) override
    {
        m_ownWindows.push_back(std::make_unique<OwnWindow>(rect.translated(origin())));
    }

    void closeWindow(quint32 id) override { m_windows.erase(id); }

private:
    static QPoint origin() { return QGuiApplication::primaryScreen()->geometry().topLeft(); }

    std::unique_ptr<Platform::X11DisplayServer> m_server =
        std::make_unique<Platform::X11DisplayServer>(std::move(*Platform::X11::Session::open({})));
    std::map<quint32, std::unique_ptr<Harness::PaintedWindow>> m_windows;
    std::vector<std::unique_ptr<OwnWindow>> m_ownWindows;
};

} // namespace

std::unique_ptr<ContractWorld> makeContractWorld()
{
    return std::make_unique<X11World>();
}
