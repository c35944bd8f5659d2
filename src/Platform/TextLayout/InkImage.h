#pragma once

#include <QImage>
#include <QRect>

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <vector>

namespace Platform {

/// How far each pixel of a picture stands out from the surface that it lies on: 0 is background,
/// whatever its colour, and 255 the strongest contrast. One byte a pixel, rows without padding.
class InkImage {
public:
    InkImage() = default;
    InkImage(int width, int height)
        : m_width(width)
        , m_height(height)
        , m_ink(std::size_t(width) * std::size_t(height))
    {
    }

    int width() const { return m_width; }
    int height() const { return m_height; }
    QRect rect() const { return {0, 0, m_width, m_height}; }

    std::uint8_t* row(int y) { return m_ink.data() + std::size_t(y) * std::size_t(m_width); }
    const std::uint8_t* row(int y) const
    {
        return m_ink.data() + std::size_t(y) * std::size_t(m_width);
    }

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<std::uint8_t> m_ink;
};

/// The ink of @p image, which must be of QImage::Format_RGB32. Surfaces are areas of even or slowly
/// changing colour too large to be part of a letter, so polarity, coloured buttons and the rules
/// of tables vanish here. An empty image once @p stop is requested. Any thread.
InkImage inkOf(const QImage& image, const std::stop_token& stop);

} // namespace Platform
