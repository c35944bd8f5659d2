#include "UI/Text/ExtractedTextView.h"

#include "Model/WorkbenchModel.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"
#include "UI/Text/AccentButton.h"
#include "UI/Text/ExtractedTextState.h"
#include "UI/Text/FilterField.h"
#include "UI/Text/SelectableTextArea.h"
#include "UI/Text/TextMessage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double blurRadius = 18;
constexpr double darkness = 0.72;
constexpr int headerPadding = 18;
constexpr int headerVerticalPadding = 12;
constexpr int headerSpacing = 12;
constexpr double titleSize = 13;
constexpr double summarySize = 11;
constexpr double summaryOpacity = 0.6;
constexpr int copyPadding = 12;
constexpr int dividerHeight = 1;
constexpr double dividerOpacity = 0.1;
} // namespace Metrics

QLabel* makeLabel(const QString& name, const QFont& font, const QColor& color, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    auto palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
    return label;
}

} // namespace

ExtractedTextView::ExtractedTextView(WorkbenchModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_backdrop(Metrics::blurRadius, Metrics::darkness)
    , m_header(new QWidget(this))
    , m_summary(makeLabel(QStringLiteral("textSummary"), Theme::font(Metrics::summarySize),
          Theme::white(Metrics::summaryOpacity), this))
    , m_filter(new FilterField(this))
    , m_copy(new AccentButton(QStringLiteral("copyRowsButton"), QStringLiteral("doc.on.clipboard"),
          tr("Copy"), Metrics::copyPadding, this))
    , m_message(new TextMessage(this))
    , m_text(new SelectableTextArea(this))
{
    setObjectName(QStringLiteral("ExtractedTextView"));
    setAccessibleName(tr("Extracted Text"));

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    fillHeader();
    column->addWidget(m_header);
    column->addSpacing(Metrics::dividerHeight);
    column->addWidget(m_message, 1);
    column->addWidget(m_text, 1);

    connect(m_filter, &QLineEdit::textChanged, &m_model, &WorkbenchModel::setTextQuery);
    connect(m_copy, &QAbstractButton::clicked, this, &ExtractedTextView::copyRows);
    connect(m_message, &TextMessage::retryRequested, &m_model, &WorkbenchModel::startRecognition);
    connect(&m_model, &WorkbenchModel::textChanged, this, &ExtractedTextView::refresh);
    connect(&m_model, &WorkbenchModel::textQueryChanged, this, &ExtractedTextView::refresh);
    connect(&m_model, &WorkbenchModel::recognitionChanged, this, &ExtractedTextView::refresh);
    connect(&m_model, &WorkbenchModel::displayChanged, this, &ExtractedTextView::refreshBackdrop);
    refresh();
    refreshBackdrop();
}

void ExtractedTextView::fillHeader()
{
    m_header->setObjectName(QStringLiteral("textHeader"));
    auto* const title = makeLabel(QStringLiteral("textTitle"),
        Theme::font(Metrics::titleSize, QFont::DemiBold), Qt::white, m_header);
    title->setText(tr("Extracted Text"));

    auto* const titles = new QVBoxLayout;
    titles->setSpacing(1);
    titles->addWidget(title);
    titles->addWidget(m_summary);
    auto* const row = new QHBoxLayout(m_header);
    row->setContentsMargins(Metrics::headerPadding, Metrics::headerVerticalPadding,
        Metrics::headerPadding, Metrics::headerVerticalPadding);
    row->setSpacing(Metrics::headerSpacing);
    row->addLayout(titles, 1);
    row->addWidget(m_filter);
    row->addWidget(m_copy);
}

void ExtractedTextView::refresh()
{
    const auto state = ExtractedTextState::of(m_model);
    const bool hasLines = state.lineCount > 0;
    const bool showsText = state.content() == ExtractedTextState::Content::text;
    m_summary->setText(state.summary());
    m_filter->setVisible(hasLines);
    if (m_filter->text() != state.query) // Which would forget what can be undone.
        m_filter->setText(state.query);
    m_copy->setVisible(hasLines);
    m_copy->setEnabled(state.matchCount > 0);
    setTip(
        *m_copy, state.query.isEmpty() ? tr("Copy all text (⌘C)") : tr("Copy the matching lines"));
    if (showsText)
        refreshText();
    m_message->show(state);
    m_message->setVisible(!showsText);
    m_text->setVisible(showsText);
}

void ExtractedTextView::refreshText()
{
    SelectableTextArea::Marks marks;
    marks.reserve(m_model.matches().size());
    for (const auto& match : m_model.matches())
        marks.append(match.ranges);
    m_text->setText(rows().join(u'\n'), marks);
}

void ExtractedTextView::refreshBackdrop()
{
    m_backdrop.setImage(m_model.backdropImage());
    update();
}

QStringList ExtractedTextView::rows() const
{
    QStringList rows;
    rows.reserve(m_model.matches().size());
    for (const auto& match : m_model.matches())
        rows.append(m_model.visibleLines().at(match.row));
    return rows;
}

void ExtractedTextView::copyRows()
{
    m_model.copyText(rows());
}

void ExtractedTextView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    m_backdrop.paint(painter, size());
    painter.fillRect(0, m_header->height(), width(), Metrics::dividerHeight,
        Theme::white(Metrics::dividerOpacity));
}

} // namespace Lumenote
