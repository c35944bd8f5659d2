#include "Model/ImageCopies.h"

#include "Platform/Pasteboard.h"
#include "Platform/Tasks.h"

#include <QPromise>

#include <memory>
#include <utility>

namespace Lumenote {

QFuture<bool> ImageCopies::copy(
    const FinalImage& image, Platform::Pasteboard& pasteboard, std::function<void(Outcome)> tell)
{
    const auto copied = std::make_shared<QPromise<bool>>();
    copied->start();
    Platform::whenFinished(image.png(), this,
        [this, copied, command = ++m_commands, &pasteboard, tell = std::move(tell)](
            const FinalImage::Png& png) {
            const auto outcome = put(png, pasteboard, command);
            tell(outcome);
            copied->addResult(outcome == Outcome::copied);
            copied->finish();
        });
    return copied->future();
}

bool ImageCopies::copy(const QString& text, Platform::Pasteboard& pasteboard)
{
    m_newestDone = ++m_commands;
    return pasteboard.setText(text);
}

ImageCopies::Outcome ImageCopies::put(
    const FinalImage::Png& png, Platform::Pasteboard& pasteboard, int command)
{
    if (!png)
        return Outcome::unmade;
    if (command < m_newestDone)
        return Outcome::overtaken;
    m_newestDone = command;
    return pasteboard.setPng(*png) ? Outcome::copied : Outcome::refused;
}

} // namespace Lumenote
