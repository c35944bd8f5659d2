#include "Fakes/FakeDisplayServer.h"

#include "Platform/DisplayServerContract.h"

namespace {

class FakeWorld final : public ContractWorld {
public:
    Platform::DisplayServer& server() override { return m_server; }

    quint32 showWindow(const QRect& rect, QRgb color, const QString& title) override
    {
        return show(rect, color, title, false);
    }

    void showOwnWindow(const QRect& rect) override { show(rect, 0, QString(), true); }

    void closeWindow(quint32 id) override { m_server.closeWindow(id); }

private:
    struct Shown {
        Platform::SharedWindow window;
        QRgb color;
    };

    quint32 show(const QRect& rect, QRgb color, const QString& title, bool isOwn)
    {
        Platform::SharedWindow window;
        window.id = ++m_lastId;
        window.frame = rect;
        window.contentRect = rect;
        window.title = title;
        window.isOwn = isOwn;
        window.isOnScreen = true;
        m_windows.prepend({window, color});
        for (const auto& shown : m_windows) { // The server takes them from front to back.
            m_server.closeWindow(shown.window.id);
            m_server.addWindow(shown.window, shown.color);
        }
        return window.id;
    }

    Fakes::FakeDisplayServer m_server{};
    QList<Shown> m_windows;
    quint32 m_lastId = 0;
};

} // namespace

std::unique_ptr<ContractWorld> makeContractWorld()
{
    return std::make_unique<FakeWorld>();
}
