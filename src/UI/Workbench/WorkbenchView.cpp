#include "UI/Workbench/WorkbenchView.h"

#include "Platform/ImageDrag.h"
#include "UI/Bar/ControlBar.h"
#include "UI/Bar/DragOutButton.h"
#include "UI/Capture/CaptureFace.h"
#include "UI/History/HistorySidebar.h"
#include "UI/Shared/RoundedRegion.h"
#include "UI/Shared/SnapshotEffect.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"
#include "UI/Shared/ToolTipController.h"
#include "UI/Shared/ToolTipLayer.h"
#include "UI/Shared/Transitions.h"
#include "UI/Text/ExtractedTextView.h"
#include "UI/Workbench/CardShadow.h"
#include "UI/Workbench/CornerButton.h"
#include "UI/Workbench/CornerCutter.h"

#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double entranceScale = 0.94;
constexpr int faceSwapDuration = 160;
constexpr int cornerPadding = 14;
constexpr int sidebarTop = 52;
constexpr int sidebarLeast = 120; ///< Of its height.
constexpr int bandHeight = static_cast<int>(Theme::bottomBand);
constexpr int pillMargin = 8; ///< Around the bar, where it still takes the pointer.
} // namespace Metrics

} // namespace

WorkbenchView::WorkbenchView(
    WorkbenchModel& model, CaptureHistory& history, Platform::ImageDrag& imageDrag, QWidget* window)
    : FloatingContent(window)
    , m_model(model)
    , m_history(history)
    , m_imageDrag(imageDrag)
    , m_state(model, this)
    , m_content(new QWidget(this))
    , m_card(new QWidget(m_content))
    , m_face(new CaptureFace(model, m_card))
    , m_copyAllText(
          new CornerButton(QStringLiteral("copyAllText"), QStringLiteral("doc.on.doc"), m_face))
    , m_historyButton(
          new CornerButton(QStringLiteral("history"), QStringLiteral("line.3.horizontal"), m_face))
    , m_cutter(new CornerCutter(Theme::cardRadius, cardShadow(), m_card))
    , m_bar(new ControlBar(m_state, m_content))
    , m_tips(new ToolTipController(m_content))
    , m_tipLayer(new ToolTipLayer(*m_tips))
    , m_slide(
          Motion::morph(), [this](double progress) { slideSidebar(progress); }, this)
{
    setObjectName(QStringLiteral("workbench"));
    for (auto* const widget : {static_cast<QWidget*>(this), m_content, m_card})
        widget->setMouseTracking(true);
    buildCard();
    connect(m_bar, &ControlBar::closeRequested, this, &WorkbenchView::dismissRequested);
    m_bar->dragOutButton().onDrag = [this] { dragImageOut(); };
    connect(m_bar, &ControlBar::rowChanged, this, &WorkbenchView::shapeChanged);
    connect(m_tipLayer, &ToolTipLayer::bubbleChanged, this, &WorkbenchView::shapeChanged);
    connect(&m_state, &WorkbenchState::layoutChanged, m_tips, &ToolTipController::clear);
    connect(&m_state, &WorkbenchState::showsTextChanged, this, &WorkbenchView::swapFaces);
    connect(&m_state, &WorkbenchState::showsHistoryChanged, this, &WorkbenchView::toggleSidebar);
}

void WorkbenchView::buildCard()
{
    m_face->onExportDrag = [this] { dragImageOut(); };
    connect(m_face, &CaptureFace::hoveringChanged, &m_state, &WorkbenchState::setHoveringCapture);
    connect(m_face, &CaptureFace::pictureSharpened, this, [this] { Transitions::refresh(*this); });

    setTip(m_copyAllText->button(), tr("Copy All Text (⌘C)"));
    connect(&m_copyAllText->button(), &QAbstractButton::clicked, &m_model,
        &WorkbenchModel::copyRecognizedText);
    connect(&m_historyButton->button(), &QAbstractButton::clicked, &m_state,
        [this] { m_state.setShowsHistory(!m_state.showsHistory()); });
    for (auto* const corner : {m_copyAllText, m_historyButton})
        corner->paintGround = [this](QPainter& painter) { m_face->paintPicture(painter); };

    for (const auto change : {&WorkbenchModel::recognitionChanged, &WorkbenchModel::textChanged})
        connect(&m_model, change, this, &WorkbenchView::refreshCornerButtons);
    for (const auto change : {&CaptureHistory::entriesChanged, &CaptureHistory::currentIDChanged})
        connect(&m_history, change, this, &WorkbenchView::refreshCornerButtons);
    connect(&m_state, &WorkbenchState::layoutChanged, this, &WorkbenchView::refreshCornerButtons);
    refreshCornerButtons();
}

bool WorkbenchView::cancelGesture()
{
    const bool wasInGesture = m_face->isInGesture();
    m_face->cancelGesture();
    return wasInGesture;
}

void WorkbenchView::prepare(const QSize& size, double devicePixelRatio)
{
    const auto content = QRect(QPoint(), size).marginsRemoved(shadowMargins()).size();
    m_face->prepare(content - QSize(0, Metrics::bandHeight), devicePixelRatio);
}

QRect WorkbenchView::cardRect() const
{
    return {m_card->mapTo(this, QPoint()), m_card->size()};
}

QRegion WorkbenchView::inputRegion() const
{
    const auto margin = Metrics::pillMargin;
    const auto pill = m_bar->row()
                          .translated(m_bar->mapTo(this, QPoint()))
                          .adjusted(-margin, -margin, margin, margin);
    return QRegion(cardRect()) + pill;
}

QRegion WorkbenchView::visibleRegion() const
{
    auto region = roundedRegion(cardRect(), static_cast<int>(Theme::cardRadius))
        + m_bar->surfaces().translated(m_bar->mapTo(this, QPoint()));
    if (m_tipLayer->isVisible())
        region += QRect(m_tipLayer->mapTo(this, QPoint()), m_tipLayer->size());
    return region;
}

void WorkbenchView::setBlended(bool isBlended)
{
    m_isBlended = isBlended;
    m_cutter->setVisible(isBlended);
    update();
}

void WorkbenchView::playEntrance()
{
    if (m_isBlended && Motion::isEnabled())
        Transitions::enter(*this, Motion::entrance(), Metrics::entranceScale);
}

void WorkbenchView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_isBlended)
        cardShadow().paint(painter, cardRect(), Theme::cardRadius);
}

void WorkbenchView::resizeEvent(QResizeEvent* event)
{
    FloatingContent::resizeEvent(event);
    layOut();
}

void WorkbenchView::layOut()
{
    m_content->setGeometry(rect().marginsRemoved(shadowMargins()));
    const int width = std::max(m_content->width(), 1);
    const int height = std::max(m_content->height() - Metrics::bandHeight, 1);
    m_card->setGeometry(0, 0, width, height);
    m_face->setGeometry(m_card->rect());
    m_cutter->setGeometry(m_card->rect());
    m_bar->setGeometry(0, height, width, Metrics::bandHeight);
    if (m_text != nullptr)
        m_text->setGeometry(m_card->rect());
    const QSize button(CornerButton::side, CornerButton::side);
    const int padding = Metrics::cornerPadding;
    m_historyButton->setSurface({QPoint(padding, padding), button});
    m_copyAllText->setSurface({QPoint(width - padding - button.width(), padding), button});
    layOutSidebar();
    emit shapeChanged();
}

void WorkbenchView::swapFaces()
{
    const auto swap = Motion::easeInOut(Metrics::faceSwapDuration);
    if (m_state.showsText()) {
        Transitions::leave(*m_face, swap, 1);
        m_text = new ExtractedTextView(m_model, m_card);
        m_text->setGeometry(m_card->rect());
        m_text->show();
        m_text->lower();
        m_face->hide();
    } else {
        Transitions::leave(*m_text, swap, 1);
        m_text->deleteLater();
        m_text = nullptr;
        m_face->show();
        m_face->lower();
    }
    m_cutter->raise();
}

void WorkbenchView::toggleSidebar()
{
    m_slideFrom = m_slideAt;
    if (m_state.showsHistory() && m_sidebar == nullptr)
        openSidebar();
    m_sidebar->setGraphicsEffect(new SnapshotEffect);
    m_slide.restart();
}

void WorkbenchView::openSidebar()
{
    m_sidebar = new HistorySidebar(m_history, m_face);
    connect(m_sidebar, &HistorySidebar::closeRequested, &m_state,
        [this] { m_state.setShowsHistory(false); });
    connect(m_sidebar, &HistorySidebar::deleteRequested, &m_history, &CaptureHistory::deleteEntry);
    connect(m_sidebar, &HistorySidebar::restoreRequested, this, [this](const QUuid& id) {
        m_state.setShowsHistory(false);
        if (id != m_history.currentID())
            emit restoreRequested(id);
    });
    layOutSidebar();
    m_sidebar->show();
    m_historyButton->raise();
}

/// Slides it in from the leading edge, or out, and lets it go then.
void WorkbenchView::slideSidebar(double progress)
{
    const double to = m_state.showsHistory() ? 1 : 0;
    m_slideAt = m_slideFrom + (to - m_slideFrom) * progress;
    if (m_sidebar == nullptr)
        return;
    if (auto* const effect = dynamic_cast<SnapshotEffect*>(m_sidebar->graphicsEffect()))
        effect->show(m_slideAt, 1);
    layOutSidebar();
    if (progress < 1 || m_slide.state() == QAbstractAnimation::Running)
        return;
    if (m_state.showsHistory())
        m_sidebar->setGraphicsEffect(nullptr);
    else
        std::exchange(m_sidebar, nullptr)->deleteLater();
}

void WorkbenchView::layOutSidebar()
{
    if (m_sidebar == nullptr)
        return;
    const int most = m_card->height() - Metrics::sidebarTop - Metrics::cornerPadding;
    m_sidebar->setMaxHeight(std::max(most, Metrics::sidebarLeast));
    const auto margins = HistorySidebar::shadowMargins();
    const auto travel = m_sidebar->width() + Metrics::cornerPadding;
    const auto left = Metrics::cornerPadding - (1 - m_slideAt) * travel;
    m_sidebar->move(qRound(left) - margins.left(), Metrics::sidebarTop - margins.top());
}

void WorkbenchView::refreshCornerButtons()
{
    const bool isNear = m_state.hoveringCapture() && !m_state.isDrawingToolActive();
    m_copyAllText->setState(
        !m_state.isDrawingToolActive() && !m_model.isRecognizing() && !m_model.lines().isEmpty(),
        isNear);
    const bool isOpen = m_state.showsHistory();
    m_historyButton->setState(
        m_history.hasHistory() && (isOpen || !m_state.isDrawingToolActive()), isOpen || isNear);
    m_historyButton->button().setActive(isOpen);
    setTip(m_historyButton->button(), isOpen ? tr("Close the list") : tr("Previous captures"));
}

void WorkbenchView::dragImageOut()
{
    const auto image = m_model.draggableImage();
    if (!image)
        return;
    m_imageDrag.begin({.png = image->png, .name = image->name, .thumbnail = image->thumbnail},
        [model = QPointer(&m_model)](const Platform::Result<void>& result) {
            if (model && !result)
                model->flash(tr("Couldn't save: ") + result.error().message);
        });
}

} // namespace Lumenote
