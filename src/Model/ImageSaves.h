#pragma once

#include "Model/FinalImage.h"

#include <chrono>
#include <filesystem>
#include <memory>

namespace Lumenote {

/// The files of the user's own that the models of the program are writing, each on a thread of its
/// own, since such a file may lie on a disk that hangs. Main thread.
class ImageSaves {
public:
    ImageSaves();

    /// Once the image is made, and behind all that is still being written to the same file. A
    /// failure is in the log in any case. The error of an image that can't be made is its own.
    QFuture<Platform::Result<void>> save(
        const FinalImage& image, const std::filesystem::path& file);

    /// Comes back once all that was to be saved is, or when @p limit has passed; the log says then
    /// that something isn't.
    void finish(std::chrono::milliseconds limit);

private:
    class Running;
    class Turn;

    std::shared_ptr<Running> m_running;
};

} // namespace Lumenote
