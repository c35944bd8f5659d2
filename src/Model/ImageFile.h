#pragma once

#include <QImage>
#include <QSizeF>

#include <filesystem>
#include <optional>

namespace Lumenote::ImageFile {

/// A picture from a file, ready for the workbench.
struct Loaded {
    QImage image; ///< Upright, in its own colour space, at most 8192 pixels on its long edge.
    QSizeF pointSize; ///< Its display size, from the resolution that the file tells.
    bool wasDownscaled = false; ///< Whether the file has more pixels than @c image.
};

/// Reads the first picture of the file at @p path, of whatever format the decoders know. Nothing
/// where it can't be used, and no word of it: the caller knows what it was for. Any thread; takes
/// as long as the decoding.
std::optional<Loaded> load(const std::filesystem::path& path);

} // namespace Lumenote::ImageFile
