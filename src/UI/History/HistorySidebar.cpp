#include "UI/History/HistorySidebar.h"

#include "UI/History/HistoryList.h"
#include "UI/History/HistoryMeasures.h"
#include "UI/Shared/GlyphButton.h"
#include "UI/Shared/Shadow.h"
#include "UI/Shared/SlimScrollBar.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>

#include <algorithm>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double radius = 14;
constexpr int headerPadding = 12;
constexpr int headerSpacing = 6;
constexpr double titleSize = 12;
constexpr double countSize = 11;
constexpr double countOpacity = 0.55;
constexpr int closeSide = 18;
constexpr double closeGlyphBox = 23;
constexpr double dividerOpacity = 0.09;
constexpr double outlineOpacity = 0.1;
constexpr int outlineWidth = 1;
constexpr int barEndMargin = 6;
} // namespace Metrics

/// Black, a material that lightens it, and a quarter of black again.
constexpr QColor surfaceColor(30, 30, 32);

const Shadow& shadow()
{
    static const Shadow shadow{.color = Theme::black(0.35), .radius = 16, .offset = {4, 2}};
    return shadow;
}

QLabel* makeLabel(const QString& name, const QFont& font, const QColor& color, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setFont(font);
    auto palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
    return label;
}

} // namespace

HistorySidebar::HistorySidebar(
    CaptureHistory& history, QWidget* parent, std::function<QDateTime()> now)
    : QWidget(parent)
    , m_history(history)
    , m_header(new QWidget(this))
    , m_count(makeLabel(QStringLiteral("captureCount"), Theme::font(Metrics::countSize),
          Theme::white(Metrics::countOpacity), m_header))
    , m_scroller(new QScrollArea(this))
{
    setObjectName(QStringLiteral("HistorySidebar"));
    setAccessibleName(tr("Previous captures"));
    addHeader();
    addList(std::move(now));
    connect(&history, &CaptureHistory::entriesChanged, this, &HistorySidebar::refresh);
    refresh();
}

void HistorySidebar::addHeader()
{
    auto* const title = makeLabel(QStringLiteral("capturesTitle"),
        Theme::font(Metrics::titleSize, QFont::DemiBold), Qt::white, m_header);
    title->setText(tr("Captures"));
    auto* const close =
        new GlyphButton(QStringLiteral("closeListButton"), QStringLiteral("xmark"), m_header);
    close->setFixedSize(Metrics::closeSide, Metrics::closeSide);
    close->setGlyphSide(Metrics::closeGlyphBox);
    setTip(*close, tr("Close the list"));
    connect(close, &QAbstractButton::clicked, this, &HistorySidebar::closeRequested);

    auto* const row = new QHBoxLayout(m_header);
    row->setContentsMargins(Metrics::headerPadding, 0, Metrics::headerPadding, 0);
    row->setSpacing(Metrics::headerSpacing);
    row->addWidget(title);
    row->addWidget(m_count);
    row->addStretch();
    row->addWidget(close);
}

void HistorySidebar::addList(std::function<QDateTime()> now)
{
    m_scroller->setObjectName(QStringLiteral("historyScroller"));
    m_scroller->setFocusPolicy(Qt::NoFocus);
    m_scroller->setFrameShape(QFrame::NoFrame);
    m_scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroller->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_scroller->setVerticalScrollBar(new SlimScrollBar(Metrics::barEndMargin, m_scroller));
    m_list = new HistoryList(m_history, std::move(now), m_scroller);
    m_list->resize(HistoryMeasures::sidebarWidth - SlimScrollBar::thickness, m_list->height());
    m_scroller->setWidget(m_list);
    m_list->setAutoFillBackground(false);
    m_scroller->viewport()->setAutoFillBackground(false);
    connect(m_list, &HistoryList::restoreRequested, this, &HistorySidebar::restoreRequested);
    connect(m_list, &HistoryList::deleteRequested, this, &HistorySidebar::deleteRequested);
    connect(m_list, &HistoryList::rowFocused, this, [this](QWidget* row) {
        m_scroller->ensureWidgetVisible(row, 0, HistoryMeasures::listPadding);
    });
}

QMargins HistorySidebar::shadowMargins()
{
    return shadow().margins();
}

void HistorySidebar::setMaxHeight(int height)
{
    m_maxHeight = height;
    resize(sizeHint());
}

void HistorySidebar::refresh()
{
    m_count->setText(QString::number(m_history.entries().size()));
    resize(sizeHint());
}

QSize HistorySidebar::sizeHint() const
{
    const auto height = std::min(m_maxHeight, HistoryMeasures::contentHeight(m_history.entries()));
    return QSize(HistoryMeasures::sidebarWidth, height).grownBy(shadowMargins());
}

QRect HistorySidebar::surface() const
{
    return rect().marginsRemoved(shadowMargins());
}

void HistorySidebar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const auto inner = surface();
    m_header->setGeometry(inner.x(), inner.y(), inner.width(), HistoryMeasures::headerHeight);
    m_scroller->setGeometry(
        inner.adjusted(0, HistoryMeasures::headerHeight, 0, -HistoryMeasures::lowerEdge));
}

/// Nothing runs to keep the ages right while the list is on show.
void HistorySidebar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_list->refreshAges();
}

void HistorySidebar::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(surface().contains(event->position().toPoint()));
}

void HistorySidebar::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(surface().contains(event->position().toPoint()));
}

void HistorySidebar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = surface();
    shadow().paint(painter, area, Metrics::radius);
    const auto inset = Metrics::outlineWidth / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(surfaceColor);
    painter.drawRoundedRect(area, Metrics::radius, Metrics::radius);
    painter.setPen(QPen(Theme::white(Metrics::outlineOpacity), Metrics::outlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), Metrics::radius - inset,
        Metrics::radius - inset);
    QRectF divider(0, 0, area.width() - 2 * Metrics::outlineWidth, Metrics::outlineWidth);
    divider.moveBottomLeft(
        area.topLeft() + QPointF(Metrics::outlineWidth, HistoryMeasures::headerHeight));
    painter.fillRect(divider, Theme::white(Metrics::dividerOpacity));
}

} // namespace Lumenote
