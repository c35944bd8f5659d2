#pragma once

#include "Model/FinalImage.h"

#include <QObject>

#include <functional>

namespace Platform {
class Pasteboard;
}

namespace Lumenote {

/// What the models of the program put on the pasteboard, in the order of the commands: an image
/// that is still in the making when something newer has been copied never takes its place. A model
/// may go before its image is there. Main thread.
class ImageCopies : public QObject {
public:
    enum class Outcome {
        copied,
        unmade, ///< There is no image to copy.
        refused, ///< By the pasteboard.
        overtaken, ///< Something newer is there.
    };

    /// Once it is made. Calls @p tell, which must not throw, and then answers whether it is copied.
    QFuture<bool> copy(const FinalImage& image, Platform::Pasteboard& pasteboard,
        std::function<void(Outcome)> tell);

    /// At once. False where the pasteboard refuses.
    bool copy(const QString& text, Platform::Pasteboard& pasteboard);

private:
    Outcome put(const FinalImage::Png& png, Platform::Pasteboard& pasteboard, int command);

    int m_commands = 0;
    int m_newestDone = 0; ///< Of the commands.
};

} // namespace Lumenote
