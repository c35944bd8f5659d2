// What is shown of a WorkbenchModel's capture, and how it gets there.

#include "Model/DisplayImage.h"
#include "Model/WorkbenchModel.h"
#include "Platform/Tasks.h"

#include <algorithm>

namespace Lumenote {

namespace {

constexpr int backdropLongEdge = 64;

QImage reduced(const QImage& image, const QSize& size)
{
    return image.isNull() || image.size() == size
        ? image
        : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

/// What is made of the pixels, whatever their number, in the background.
struct WorkbenchModel::Display {
    QImage image;
    QImage preview;
    QImage backdrop;
};

void WorkbenchModel::prepareDisplay()
{
    if (DisplayImage::isPaintable(m_image))
        m_displayImage = m_image;
    const auto prepared =
        Platform::startTask<Display>([capture = m_image]() -> Platform::Result<Display> {
            const auto size = capture.size();
            Display display;
            display.image = DisplayImage::from(capture);
            display.preview =
                reduced(display.image, DisplayImage::reducedSize(size, longestThumbnail));
            display.backdrop =
                reduced(display.preview, DisplayImage::reducedSize(size, backdropLongEdge));
            return display;
        });
    Platform::whenFinished(
        prepared, this, [this](const Platform::Result<Display>& display) { takeDisplay(display); });
}

/// Where there was no memory, the capture is shown as it is: better wrong colours than none.
void WorkbenchModel::takeDisplay(const Platform::Result<Display>& display)
{
    m_displayImage = display && !display->image.isNull() ? display->image : m_image;
    if (display) {
        m_preview = display->preview;
        m_backdropImage = display->backdrop;
    }
    emit displayChanged();
}

QImage WorkbenchModel::thumbnail(int longEdge) const
{
    return reduced(
        m_preview, DisplayImage::reducedSize(pixelSize(), std::min(longEdge, longestThumbnail)));
}

} // namespace Lumenote
