#include "Model/FinalImage.h"

#include "Platform/PngEncoder.h"
#include "Platform/Threads.h"
#include "Rendering/LumenoteRenderer.h"

#include <QPromise>

#include <memory>
#include <new>

namespace Lumenote {

namespace {

/// One pixel a point: annotations and all, the image is as large as it is.
constexpr double exportDotsPerInch = 72;

Platform::Error unrendered()
{
    return {.message = QStringLiteral("no memory for the finished image")};
}

FinalImage::Png pngOf(const QImage& capture, const QList<Annotation>& annotations)
try {
    const auto image = LumenoteRenderer::render(capture, capture.size(), annotations);
    if (image.isNull())
        return tl::make_unexpected(unrendered());
    return Platform::encodePng(image, exportDotsPerInch);
} catch (const std::bad_alloc&) {
    return tl::make_unexpected(unrendered());
}

} // namespace

FinalImage::FinalImage(const QImage& capture, const QList<Annotation>& annotations)
{
    const auto png = std::make_shared<QPromise<Png>>();
    const auto bytes = std::make_shared<std::promise<Png>>();
    m_png = png->future();
    m_bytes = bytes->get_future().share();
    png->start();
    const auto answer = [png, bytes](const Png& result) {
        png->addResult(result);
        png->finish();
        bytes->set_value(result);
    };
    const bool isStarted = Platform::startDetachedThread(
        [answer, capture, annotations] { answer(pngOf(capture, annotations)); });
    if (!isStarted)
        answer(tl::make_unexpected(unrendered()));
}

bool FinalImage::isUnrendered(const Platform::Error& error)
{
    return error == unrendered();
}

} // namespace Lumenote
