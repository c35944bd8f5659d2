// What leaves a WorkbenchModel: the finished image and the text, copied, saved or dragged.

#include "Model/WorkbenchModel.h"
#include "Platform/Documents.h"
#include "Platform/Pasteboard.h"
#include "Platform/PngEncoder.h"
#include "Platform/SavePanel.h"
#include "Platform/Tasks.h"
#include "Rendering/LumenoteRenderer.h"

#include <QPointer>

#include <algorithm>

namespace Lumenote {

namespace {

/// One pixel a point: annotations and all, the image is as large as it is.
constexpr double exportDotsPerInch = 72;
constexpr int dragThumbnailLongEdge = 160;

} // namespace

QImage WorkbenchModel::renderFinalImage()
{
    if (m_renderCache.isNull())
        m_renderCache = LumenoteRenderer::render(m_image, pixelSize(), annotations());
    return m_renderCache;
}

void WorkbenchModel::releaseCaches()
{
    m_renderCache = {};
    m_pngCache.reset();
}

std::optional<QByteArray> WorkbenchModel::pngData(const QImage& image)
{
    if (!m_pngCache && !image.isNull())
        if (const auto png = Platform::encodePng(image, exportDotsPerInch))
            m_pngCache = *png;
    return m_pngCache;
}

bool WorkbenchModel::copyImage()
{
    const auto png = pngData(renderFinalImage());
    if (!png) {
        flash(tr("Couldn't prepare the image"));
        return false;
    }
    const bool isCopied = m_services.pasteboard->setPng(*png);
    flash(isCopied ? tr("Image copied") : tr("Couldn't copy the image"));
    return isCopied;
}

std::optional<DraggableImage> WorkbenchModel::draggableImage()
{
    const auto png = pngData(renderFinalImage());
    if (!png) {
        flash(tr("Couldn't prepare the image"));
        return std::nullopt;
    }
    return DraggableImage{
        .png = *png, .name = suggestedName(), .thumbnail = thumbnail(dragThumbnailLongEdge)};
}

bool WorkbenchModel::copyText(bool asCodeBlock)
{
    const auto text = visibleText();
    if (text.isEmpty()) {
        flash(m_textQuery.isEmpty() ? tr("No text to copy") : tr("No lines match the filter"));
        return false;
    }
    const bool isCopied = asCodeBlock ? copy(fenced(text), tr("Copied as code block"))
                                      : copy(text, tr("Text copied"));
    if (isCopied && m_textQuery.isEmpty() && !m_lines.isEmpty())
        setPendingTextReveal(true);
    return isCopied;
}

bool WorkbenchModel::copyRecognizedText()
{
    if (m_displayText.isEmpty() || !copy(m_displayText, tr("Text copied")))
        return false;
    if (!m_lines.isEmpty())
        setPendingTextReveal(true);
    return true;
}

bool WorkbenchModel::copyText(const QStringList& lines)
{
    if (lines.isEmpty())
        return false;
    return copy(lines.join(u'\n'), lines.size() == 1 ? tr("Line copied") : tr("Text copied"));
}

bool WorkbenchModel::copy(const QString& text, const QString& message)
{
    const bool isCopied = m_services.pasteboard->setText(text);
    flash(isCopied ? message : tr("Couldn't copy the text"));
    return isCopied;
}

void WorkbenchModel::saveImage()
{
    m_services.savePanel->ask(suggestedName(),
        [model = QPointer(this)](const std::optional<std::filesystem::path>& path) {
            if (model && path)
                model->write(*path);
        });
}

void WorkbenchModel::write(const std::filesystem::path& path)
{
    const auto image = renderFinalImage();
    if (image.isNull()) {
        flash(tr("Couldn't prepare the image"));
        return;
    }
    const auto png = pngData(image);
    if (!png) {
        flash(tr("Couldn't encode the PNG"));
        return;
    }
    const auto written =
        Platform::startTask<void>([path, png = *png] { return Platform::saveDocument(path, png); });
    Platform::whenFinished(written, this, [this](const Platform::Result<void>& result) {
        flash(result ? tr("Saved") : tr("Couldn't save: ") + result.error().message);
    });
}

QString WorkbenchModel::suggestedName() const
{
    return QStringLiteral("Lumenote %1.png")
        .arg(m_services.now().toLocalTime().toString(u"yyyy-MM-dd 'at' HH.mm.ss"));
}

QString WorkbenchModel::fenced(const QString& text)
{
    constexpr qsizetype shortestFence = 3;
    qsizetype longest = 0;
    qsizetype length = 0;
    for (const auto character : text) {
        length = character == u'`' ? length + 1 : 0;
        longest = std::max(longest, length);
    }
    const QString fence(std::max(longest + 1, shortestFence), u'`');
    return fence + u'\n' + text + u'\n' + fence;
}

void WorkbenchModel::flash(const QString& message)
{
    m_statusMessage = message;
    m_statusTimer.start(m_services.messageDuration);
    emit statusMessageChanged();
}

} // namespace Lumenote
