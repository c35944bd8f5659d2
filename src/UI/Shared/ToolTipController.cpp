#include "UI/Shared/ToolTipController.h"

#include <QWidget>

namespace Lumenote {

ToolTipController::ToolTipController(QObject* parent)
    : ToolTipController(parent, {})
{
}

ToolTipController::ToolTipController(QObject* parent, Delays delays)
    : QObject(parent)
    , m_delays(delays)
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, [this] { show(m_pending); });
}

void ToolTipController::enter(const QString& text, const QRectF& frame)
{
    m_pending = Tip{.text = text, .frame = frame};
    const bool isRecent =
        m_sinceHidden.isValid() && !m_sinceHidden.hasExpired(m_delays.recent.count());
    if (m_tip || isRecent) {
        m_delay.stop();
        show(m_pending);
    } else {
        m_delay.start(m_delays.first);
    }
}

void ToolTipController::exit(const QString& text)
{
    if (m_pending && m_pending->text == text) {
        m_pending.reset();
        m_delay.stop();
    }
    if (m_tip && m_tip->text == text) {
        m_sinceHidden.start();
        show(std::nullopt);
    }
}

void ToolTipController::clear()
{
    m_pending.reset();
    m_delay.stop();
    m_sinceHidden.invalidate();
    show(std::nullopt);
}

void ToolTipController::show(const std::optional<Tip>& tip)
{
    if (tip == m_tip)
        return;
    m_tip = tip;
    emit tipChanged();
}

ToolTipController* ToolTipController::of(const QWidget& widget)
{
    return widget.window()->findChild<ToolTipController*>();
}

} // namespace Lumenote
