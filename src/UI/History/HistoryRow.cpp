#include "UI/History/HistoryRow.h"

#include "UI/History/HistoryCaption.h"
#include "UI/History/HistoryMeasures.h"
#include "UI/History/HistoryThumbnail.h"
#include "UI/Shared/FocusRing.h"
#include "UI/Shared/GlyphButton.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"

#include <QKeyEvent>
#include <QPainter>

namespace Lumenote {

namespace {

namespace Metrics {
using namespace HistoryMeasures;
constexpr double radius = 10;
constexpr double fillOpacity = 0.06;
constexpr double hoverOpacity = 0.1;
constexpr double currentOpacity = 0.14;
constexpr double outlineOpacity = 0.08;
constexpr double outlineWidth = 1;
constexpr double currentOutlineWidth = 1.5;
constexpr double fontSize = 10;
constexpr double ageOpacity = 0.85;
constexpr double dimensionsOpacity = 0.6;
constexpr int captionSpacing = 6;
constexpr int dotSide = 6;
constexpr int deleteSide = 22;
constexpr int deletePadding = 10;
constexpr double deleteGlyphBox = 23;
constexpr double deleteFillOpacity = 0.62;
constexpr double deleteOutlineOpacity = 0.22;
} // namespace Metrics

bool isDeletion(const QKeyEvent& key)
{
    return key.modifiers() == Qt::NoModifier
        && (key.key() == Qt::Key_Delete || key.key() == Qt::Key_Backspace);
}

bool isPress(const QKeyEvent& key)
{
    return !key.modifiers().testFlag(Qt::ControlModifier)
        && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter
            || key.key() == Qt::Key_Space);
}

} // namespace

HistoryRow::HistoryRow(QWidget* parent)
    : QAbstractButton(parent)
    , m_delete(
          new GlyphButton(QStringLiteral("deleteCaptureButton"), QStringLiteral("trash"), this))
{
    setObjectName(QStringLiteral("historyRow"));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    m_delete->setGeometry(Metrics::rowWidth - Metrics::deletePadding - Metrics::deleteSide,
        Metrics::deletePadding, Metrics::deleteSide, Metrics::deleteSide);
    m_delete->setGlyphSide(Metrics::deleteGlyphBox);
    m_delete->setSurface(
        Theme::black(Metrics::deleteFillOpacity), Theme::white(Metrics::deleteOutlineOpacity));
    setTip(*m_delete, tr("Delete this capture"));
    m_delete->installEventFilter(this);
    m_delete->hide();
    connect(m_delete, &QAbstractButton::clicked, this, &HistoryRow::deleteRequested);
}

void HistoryRow::setEntry(const CaptureHistory::Entry& entry)
{
    const bool hasNewLook = entry.thumbnail.cacheKey() != m_entry.thumbnail.cacheKey()
        || entry.pixelSize != m_entry.pixelSize;
    m_entry = {.id = entry.id,
        .thumbnail = entry.thumbnail,
        .capturedAt = entry.capturedAt,
        .pixelSize = entry.pixelSize};
    setAccessibleDescription(HistoryCaption::dimensions(m_entry.pixelSize));
    updateCaption();
    if (!hasNewLook)
        return;
    m_thumbnail = {};
    resize(sizeHint());
    update();
}

void HistoryRow::setCurrent(bool isCurrent)
{
    m_isCurrent = isCurrent;
    updateCaption();
    update();
}

void HistoryRow::setNow(const QDateTime& now)
{
    m_now = now;
    updateCaption();
}

void HistoryRow::updateCaption()
{
    const auto age = HistoryCaption::age(m_entry.capturedAt, m_now);
    setAccessibleName(HistoryCaption::accessibleName(age, m_isCurrent));
    if (age == m_age)
        return;
    m_age = age;
    update();
}

QSize HistoryRow::sizeHint() const
{
    return {Metrics::rowWidth, HistoryMeasures::rowHeight(m_entry.pixelSize)};
}

QWidget* HistoryRow::lastControl() const
{
    return m_delete;
}

// Events

void HistoryRow::updateDeleteButton()
{
    m_delete->setVisible(underMouse() || hasFocus() || m_delete->hasFocus());
}

void HistoryRow::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    updateDeleteButton();
}

void HistoryRow::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    updateDeleteButton();
}

void HistoryRow::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    updateDeleteButton();
    emit focusArrived();
}

void HistoryRow::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    updateDeleteButton();
}

/// Of the delete button.
bool HistoryRow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_delete && event->type() == QEvent::FocusOut)
        QMetaObject::invokeMethod(this, &HistoryRow::updateDeleteButton, Qt::QueuedConnection);
    return QAbstractButton::eventFilter(watched, event);
}

/// Keys that would do something else in the window around.
bool HistoryRow::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        event->setAccepted(isPress(key) || isDeletion(key));
        return event->isAccepted();
    }
    return QAbstractButton::event(event);
}

void HistoryRow::keyPressEvent(QKeyEvent* event)
{
    const bool isHeld = event->isAutoRepeat(); // The next row would have it then.
    if (isDeletion(*event) && !isHeld)
        emit deleteRequested();
    else if (isPress(*event) && !isHeld)
        click();
    else
        event->ignore(); // Arrows are the list's.
}

// Painting

const QPixmap& HistoryRow::thumbnail(double devicePixelRatio)
{
    if (m_thumbnail.isNull() || m_thumbnail.devicePixelRatio() != devicePixelRatio) {
        const QSize size(
            Metrics::thumbnailWidth, HistoryMeasures::thumbnailHeight(m_entry.pixelSize));
        m_thumbnail = historyThumbnail(m_entry.thumbnail, size, devicePixelRatio);
    }
    return m_thumbnail;
}

void HistoryRow::paintPlate(QPainter& painter) const
{
    auto opacity = underMouse() ? Metrics::hoverOpacity : Metrics::fillOpacity;
    if (m_isCurrent || isDown())
        opacity = Metrics::currentOpacity;
    const auto width = m_isCurrent ? Metrics::currentOutlineWidth : Metrics::outlineWidth;
    const auto outline = m_isCurrent ? Theme::accent() : Theme::white(Metrics::outlineOpacity);
    const auto inset = width / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::white(opacity));
    painter.drawRoundedRect(rect(), Metrics::radius, Metrics::radius);
    painter.setPen(QPen(outline, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
        Metrics::radius - inset, Metrics::radius - inset);
}

void HistoryRow::paintCaption(QPainter& painter) const
{
    QRect caption(Metrics::rowPadding, height() - Metrics::rowPadding - Metrics::captionHeight,
        Metrics::thumbnailWidth, Metrics::captionHeight);
    painter.setFont(Theme::font(Metrics::fontSize, QFont::Medium));
    painter.setPen(Theme::white(Metrics::ageOpacity));
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignVCenter, m_age);
    if (m_isCurrent) {
        QRectF dot(0, 0, Metrics::dotSide, Metrics::dotSide);
        dot.moveCenter(QRectF(caption).center());
        dot.moveRight(caption.right() + 1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::accent());
        painter.drawEllipse(dot);
        caption.setRight(caption.right() - Metrics::dotSide - Metrics::captionSpacing);
    }
    painter.setFont(Theme::font(Metrics::fontSize));
    painter.setPen(Theme::white(Metrics::dimensionsOpacity));
    painter.drawText(
        caption, Qt::AlignRight | Qt::AlignVCenter, HistoryCaption::dimensions(m_entry.pixelSize));
}

void HistoryRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPlate(painter);
    painter.drawPixmap(
        QPoint(Metrics::rowPadding, Metrics::rowPadding), thumbnail(devicePixelRatioF()));
    paintCaption(painter);
    if (hasFocus())
        FocusRing::paint(painter, rect(), Metrics::radius);
}

} // namespace Lumenote
