// What leaves a WorkbenchModel: the finished image and the text, copied, saved or dragged.

#include "Model/WorkbenchModel.h"
#include "Platform/SavePanel.h"
#include "Platform/Tasks.h"

#include <QPointer>

#include <algorithm>

namespace Lumenote {

namespace {

constexpr int dragThumbnailLongEdge = 160;

} // namespace

void WorkbenchModel::releaseCaches()
{
    m_finalImage = {};
}

/// Begun anew where it failed, since memory may have become free.
const FinalImage& WorkbenchModel::finalImage()
{
    if (m_finalImage.isNone() || m_finalImage.hasFailed())
        m_finalImage = FinalImage(m_image, annotations());
    return m_finalImage;
}

QFuture<bool> WorkbenchModel::copyImage()
{
    return m_services.copies->copy(
        finalImage(), *m_services.pasteboard, [model = QPointer(this)](auto outcome) {
            if (model)
                model->tellCopied(outcome);
        });
}

void WorkbenchModel::tellCopied(ImageCopies::Outcome outcome)
{
    switch (outcome) {
    case ImageCopies::Outcome::copied:
        flash(tr("Image copied"));
        break;
    case ImageCopies::Outcome::unmade:
        flash(tr("Couldn't prepare the image"));
        break;
    case ImageCopies::Outcome::refused:
        flash(tr("Couldn't copy the image"));
        break;
    case ImageCopies::Outcome::overtaken: // What came later has its own message.
        break;
    }
}

std::optional<DraggableImage> WorkbenchModel::draggableImage()
{
    const auto& image = finalImage();
    if (image.hasFailed()) {
        flash(tr("Couldn't prepare the image"));
        return std::nullopt;
    }
    Platform::whenFinished(image.png(), this, [this](const FinalImage::Png& png) {
        if (!png)
            flash(tr("Couldn't prepare the image"));
    });
    return DraggableImage{
        .png = image.png(), .name = suggestedName(), .thumbnail = thumbnail(dragThumbnailLongEdge)};
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
    const bool isCopied = m_services.copies->copy(text, *m_services.pasteboard);
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
    const auto image = finalImage();
    Platform::whenFinished(m_services.saves->save(image, path), this,
        [this, image](const Platform::Result<void>& saved) { tellSaved(saved, image); });
}

void WorkbenchModel::tellSaved(const Platform::Result<void>& saved, const FinalImage& image)
{
    if (saved)
        flash(tr("Saved"));
    else if (!image.hasFailed())
        flash(tr("Couldn't save: ") + saved.error().message);
    else if (FinalImage::isUnrendered(saved.error()))
        flash(tr("Couldn't prepare the image"));
    else
        flash(tr("Couldn't encode the PNG"));
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
