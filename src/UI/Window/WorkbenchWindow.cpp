#include "UI/Window/WorkbenchWindow.h"

#include "Platform/ApplicationActivation.h"
#include "Platform/DisplayServer.h"
#include "Platform/FloatingWindows.h"
#include "UI/Shared/Glass.h"
#include "UI/Shared/Theme.h"
#include "UI/Window/WindowPlacement.h"
#include "UI/Workbench/FloatingContent.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

#include <utility>

namespace Lumenote {

namespace {

constexpr int fadeDuration = 120;

} // namespace

WorkbenchWindow::WorkbenchWindow(const Desktop& desktop)
    : m_desktop(desktop)
    , m_drag(*this)
{
    // A dialog, since tiling window managers leave those where they are.
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
        | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setObjectName(QStringLiteral("WorkbenchWindow"));
    setWindowTitle(tr("Lumenote"));
    setMouseTracking(true);
    setPalette(Theme::darkPalette());
    connect(&desktop.displayServer, &Platform::DisplayServer::compositorChanged, this,
        &WorkbenchWindow::takeCompositor);
    connect(&desktop.floatingWindows, &Platform::FloatingWindows::blursBehindChanged, this,
        &WorkbenchWindow::takeCompositor);
}

void WorkbenchWindow::setContent(FloatingContent* content)
{
    m_content = content;
    m_content->setFocusPolicy(Qt::ClickFocus);
    m_content->setGeometry(rect());
    const auto margins = FloatingContent::shadowMargins();
    setMinimumSize(QRect(QPoint(), WindowPlacement::leastSize).marginsAdded(margins).size());
    connect(m_content, &FloatingContent::shapeChanged, this, &WorkbenchWindow::applyShape);
    takeCompositor();
}

void WorkbenchWindow::setCardFrame(const QRect& frame)
{
    setGeometry(frame.marginsAdded(FloatingContent::shadowMargins()));
}

QRect WorkbenchWindow::cardFrame() const
{
    return geometry().marginsRemoved(FloatingContent::shadowMargins());
}

void WorkbenchWindow::bringUp()
{
    if (!isVisible()) {
        winId(); // There has to be a window before it can be prepared.
        m_desktop.floatingWindows.prepare(*windowHandle(), FloatingContent::shadowMargins());
        windowHandle()->installEventFilter(this);
        applyShape();
        m_content->setFocus(); // So that no control has the keyboard before it is asked for.
        show();
    }
    raise();
    activateWindow();
}

void WorkbenchWindow::takeCompositor()
{
    const bool isBlended = m_desktop.displayServer.hasCompositor();
    const auto glass = m_desktop.floatingWindows.blursBehind() ? Glass::Backing::blurred
                                                               : Glass::Backing::translucent;
    Glass::setBacking(isBlended ? glass : Glass::Backing::opaque);
    m_content->setBlended(isBlended);
    applyShape();
    update();
}

/// Beside what is shown the pointer belongs to others; where nothing is blended, so do the pixels.
void WorkbenchWindow::applyShape()
{
    if (windowHandle() == nullptr)
        return;
    const bool isBlended = m_desktop.displayServer.hasCompositor();
    if (isBlended)
        clearMask();
    else
        setMask(m_content->visibleRegion());
    m_desktop.floatingWindows.setInputShape(
        *windowHandle(), isBlended ? m_content->inputRegion() : m_content->visibleRegion());
    if (Glass::backing() == Glass::Backing::blurred)
        m_desktop.floatingWindows.setBlurRegion(*windowHandle(), m_content->visibleRegion());
}

void WorkbenchWindow::fadeOut(std::function<void()> onEnd)
{
    m_isFading = true;
    if (!m_desktop.displayServer.hasCompositor() || !Motion::isEnabled()) {
        onEnd();
        return;
    }
    auto* const fade = new Motion::Run(
        Motion::easeInOut(fadeDuration),
        [this, onEnd = std::move(onEnd)](double progress) {
            setWindowOpacity(1 - progress);
            if (progress >= 1)
                onEnd();
        },
        this);
    fade->restart();
}

void WorkbenchWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || event->isAutoRepeat()) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (!m_content->cancelGesture())
        emit cancelled();
}

void WorkbenchWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    emit cancelled();
}

QPoint WorkbenchWindow::inContent(const QMouseEvent& event) const
{
    return mapFromGlobal(event.globalPosition().toPoint());
}

void WorkbenchWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_drag.press(event->globalPosition().toPoint(),
            WindowDrag::edgesAt(m_content->cardRect(), inContent(*event)));
}

void WorkbenchWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        m_drag.move(event->globalPosition().toPoint());
    else
        setCursor(
            WindowDrag::cursor(WindowDrag::edgesAt(m_content->cardRect(), inContent(*event))));
}

void WorkbenchWindow::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    m_drag.release();
}

void WorkbenchWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_content != nullptr)
        m_content->setGeometry(rect());
}

void WorkbenchWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    applyShape();
}

/// A click on any part of the window brings it forward, also where no window manager does; and what
/// moves begins to when there is something to see.
bool WorkbenchWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Expose && windowHandle()->isExposed() && !m_hasEntered) {
        m_hasEntered = true;
        m_content->playEntrance();
    }
    if (event->type() == QEvent::MouseButtonPress && !m_isFading && !isActiveWindow()) {
        raise();
        activateWindow();
        m_desktop.activation.activate(*windowHandle());
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace Lumenote
