#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QTimer>

#include <chrono>
#include <optional>

namespace Lumenote {

/// Decides which tool tip a workbench shows. Frames are in the coordinates of the window's content.
class ToolTipController : public QObject {
    Q_OBJECT

public:
    struct Tip {
        QString text;
        QRectF frame; ///< Of what it is about.

        bool operator==(const Tip&) const = default;
    };

    struct Delays {
        std::chrono::milliseconds first{1500};
        std::chrono::milliseconds recent{600}; ///< So long after one, the next shows at once.
    };

    explicit ToolTipController(QObject* parent);
    ToolTipController(QObject* parent, Delays delays);

    /// The pointer is over the control at @p frame, and has left it.
    void enter(const QString& text, const QRectF& frame);
    void exit(const QString& text);

    /// Shows nothing, as if nothing had been shown: what the tips were about may have moved.
    void clear();

    const std::optional<Tip>& tip() const { return m_tip; }

    /// The one of the window that @p widget is in; null where it has none.
    static ToolTipController* of(const QWidget& widget);

signals:
    void tipChanged();

private:
    void show(const std::optional<Tip>& tip);

    const Delays m_delays;
    std::optional<Tip> m_tip;
    std::optional<Tip> m_pending;
    QElapsedTimer m_sinceHidden; ///< Invalid where none was shown before.
    QTimer m_delay;
};

} // namespace Lumenote
