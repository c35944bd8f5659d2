#include "UI/Text/TextMessage.h"

#include "Platform/DesktopWords.h"
#include "UI/Shared/Glyphs.h"
#include "UI/Shared/Spinner.h"
#include "UI/Shared/Theme.h"
#include "UI/Text/AccentButton.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int spacing = 10;
constexpr int margin = 18;
constexpr double spinnerDiameter = 16;
constexpr int iconSide = 28; ///< What the drawing takes; its box is larger.
constexpr double iconBox = 50;
constexpr double iconOpacity = 0.6;
constexpr double fontSize = 12;
constexpr double textOpacity = 0.85;
constexpr int retryPadding = 14;
} // namespace Metrics

QString glyphFor(ExtractedTextState::Content content)
{
    switch (content) {
    case ExtractedTextState::Content::failed:
        return QStringLiteral("exclamationmark.triangle");
    case ExtractedTextState::Content::noText:
        return QStringLiteral("text.viewfinder");
    case ExtractedTextState::Content::reading:
    case ExtractedTextState::Content::text:
    case ExtractedTextState::Content::noMatch:
        break;
    }
    return {};
}

} // namespace

/// One glyph.
class TextMessage::Icon : public QWidget {
public:
    explicit Icon(QWidget* parent)
        : QWidget(parent)
    {
        setFixedSize(Metrics::iconSide, Metrics::iconSide);
    }

    void setGlyph(const QString& glyph)
    {
        m_glyph = glyph;
        setVisible(!glyph.isEmpty());
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        QRectF box(0, 0, Metrics::iconBox, Metrics::iconBox);
        box.moveCenter(QRectF(rect()).center());
        Glyphs::paint(painter, m_glyph, box, Theme::white(Metrics::iconOpacity));
    }

private:
    QString m_glyph;
};

TextMessage::TextMessage(QWidget* parent)
    : QWidget(parent)
    , m_spinner(new Spinner(Metrics::spinnerDiameter, this))
    , m_icon(new Icon(this))
    , m_label(new QLabel(this))
    , m_retry(new AccentButton(
          QStringLiteral("retryButton"), {}, tr("Try Again"), Metrics::retryPadding, this))
{
    setObjectName(QStringLiteral("textMessage"));
    m_label->setObjectName(QStringLiteral("textMessageLabel"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setFont(Theme::font(Metrics::fontSize));
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setWordWrap(true);
    auto palette = m_label->palette();
    palette.setColor(QPalette::WindowText, Theme::white(Metrics::textOpacity));
    m_label->setPalette(palette);
    m_retry->setAccessibleName(m_retry->text());

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metrics::margin, Metrics::margin, Metrics::margin, Metrics::margin);
    column->setSpacing(Metrics::spacing);
    column->addStretch();
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addWidget(m_icon, 0, Qt::AlignHCenter);
    column->addWidget(m_label);
    column->addWidget(m_retry, 0, Qt::AlignHCenter);
    column->addStretch();

    connect(m_retry, &QAbstractButton::clicked, this, &TextMessage::retryRequested);
}

void TextMessage::show(const ExtractedTextState& state)
{
    const auto content = state.content();
    m_spinner->setVisible(content == ExtractedTextState::Content::reading);
    m_icon->setGlyph(glyphFor(content));
    const bool quotesFilter = content == ExtractedTextState::Content::noMatch;
    m_label->setText(quotesFilter ? state.message() : Platform::inDesktopWords(state.message()));
    m_retry->setVisible(content == ExtractedTextState::Content::failed);
}

} // namespace Lumenote
