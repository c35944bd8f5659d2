#include "Model/ImageFile.h"

#include "Model/PointSize.h"
#include "Platform/ImageDecoder.h"

#include <algorithm>
#include <utility>

namespace Lumenote::ImageFile {

std::optional<Loaded> load(const std::filesystem::path& path)
{
    constexpr int longestEdge = 8192;
    const auto decoded = Platform::decodeImageFile(path, {.longEdge = longestEdge});
    if (!decoded)
        return std::nullopt;
    const auto [width, height] = std::pair(decoded->fileSize.width(), decoded->fileSize.height());
    if (width < 1 || height < 1)
        return std::nullopt;
    return Loaded{.image = decoded->image,
        .pointSize = pointSize(decoded->image.size(), decoded->dotsPerInch),
        .wasDownscaled = std::max(width, height) > longestEdge};
}

} // namespace Lumenote::ImageFile
