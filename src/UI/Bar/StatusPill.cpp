#include "UI/Bar/StatusPill.h"

#include "Platform/DesktopWords.h"
#include "UI/Shared/Theme.h"

#include <QAccessibleWidget>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double tintOpacity = 0.55;
constexpr int padding = 18;
constexpr double fontSize = 13;
} // namespace Metrics

/// An alert, which screen readers say aloud when it appears or changes.
class PillAccessibility : public QAccessibleWidget {
public:
    explicit PillAccessibility(StatusPill& pill)
        : QAccessibleWidget(&pill, QAccessible::AlertMessage)
    {
    }
};

void installAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory([](const QString& /*type*/, QObject* object) {
            auto* const pill = qobject_cast<StatusPill*>(object);
            return pill != nullptr
                ? static_cast<QAccessibleInterface*>(new PillAccessibility(*pill))
                : nullptr;
        });
        return true;
    }();
    Q_UNUSED(isInstalled);
}

QFont messageFont()
{
    return Theme::font(Metrics::fontSize, QFont::Medium);
}

} // namespace

StatusPill::StatusPill(QWidget* parent)
    : Capsule(parent)
{
    installAccessibility();
    setObjectName(QStringLiteral("status"));
    setTint(Theme::accent(Metrics::tintOpacity));
}

void StatusPill::setMessage(const QString& message)
{
    m_message = Platform::inDesktopWords(message);
    setAccessibleName(m_message);
    update();
}

int StatusPill::wantedWidth() const
{
    const auto text = QFontMetricsF(messageFont()).horizontalAdvance(m_message);
    return static_cast<int>(std::ceil(text)) + 2 * Metrics::padding;
}

void StatusPill::paintEvent(QPaintEvent* event)
{
    Capsule::paintEvent(event);
    QPainter painter(this);
    painter.setPen(Qt::white);
    painter.setFont(messageFont());
    painter.drawText(innerRect().adjusted(Metrics::padding, 0, -Metrics::padding, 0),
        Qt::AlignCenter, m_message);
}

} // namespace Lumenote
