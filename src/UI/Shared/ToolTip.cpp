#include "UI/Shared/ToolTip.h"

#include "Platform/DesktopWords.h"
#include "UI/Shared/ToolTipController.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace Lumenote {

namespace {

/// Watches the pointer come to its control and go.
class ToolTipTrigger : public QObject {
public:
    explicit ToolTipTrigger(QWidget& control)
        : QObject(&control)
        , m_control(control)
    {
        control.installEventFilter(this);
    }

    void setText(const QString& text) { m_text = text; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Enter)
            enter();
        else if (event->type() == QEvent::Leave || event->type() == QEvent::Hide)
            exit();
        return QObject::eventFilter(watched, event);
    }

private:
    void enter()
    {
        m_tips = ToolTipController::of(m_control);
        if (m_tips == nullptr)
            return;
        m_shownText = m_text;
        auto* const content = qobject_cast<QWidget*>(m_tips->parent());
        m_tips->enter(m_text, QRectF(m_control.mapTo(content, QPoint()), QSizeF(m_control.size())));
    }

    void exit()
    {
        if (m_tips != nullptr)
            m_tips->exit(m_shownText);
    }

    QWidget& m_control;
    QString m_text;
    QString m_shownText; ///< That of the last enter: the text may have changed under the pointer.
    /// Of the last enter as well: a control under the pointer is left while its window is being
    /// taken apart, which is no time to look for anything in it.
    QPointer<ToolTipController> m_tips;
};

} // namespace

void setTip(QWidget& control, const QString& text)
{
    auto* trigger = dynamic_cast<ToolTipTrigger*>(
        control.findChild<QObject*>(QStringLiteral("tip"), Qt::FindDirectChildrenOnly));
    if (trigger == nullptr) {
        trigger = new ToolTipTrigger(control);
        trigger->setObjectName(QStringLiteral("tip"));
    }
    const auto words = Platform::inDesktopWords(text);
    trigger->setText(words);
    control.setAccessibleName(words);
}

} // namespace Lumenote
