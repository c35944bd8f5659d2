#include "Platform/Desktop/ClipboardPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

namespace Platform {

namespace {

bool setOnly(std::unique_ptr<QMimeData> data)
{
    auto* const clipboard = QGuiApplication::clipboard();
    clipboard->setMimeData(data.release());
    return clipboard->ownsClipboard();
}

} // namespace

bool ClipboardPasteboard::setPng(const QByteArray& png)
{
    auto data = std::make_unique<QMimeData>();
    // As bytes, not as an image, which Qt would encode anew and offer in every format it writes.
    data->setData(QStringLiteral("image/png"), png);
    return setOnly(std::move(data));
}

bool ClipboardPasteboard::setText(const QString& text)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return setOnly(std::move(data));
}

} // namespace Platform
