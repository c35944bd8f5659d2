#pragma once

#include <QByteArrayList>
#include <QColor>
#include <QImage>
#include <QProcess>
#include <QRect>

#include <cstdint>

namespace Harness {

/// A pixel of a picture that looks different when it is moved: of @p color, with the lowest bits of
/// red and green counting columns and rows.
constexpr std::uint32_t patternPixel(std::uint32_t color, int x, int y)
{
    const auto column = static_cast<std::uint32_t>(x) & 0x1f;
    const auto row = static_cast<std::uint32_t>(y) & 0x1f;
    return color ^ (column << 16) ^ (row << 8);
}

/// A window of another program, which shows a pattern. It is there until it goes out of scope.
class PaintedWindow {
public:
    /// @p rect in pixels of the root. For @p options see PaintedWindowProgram.cpp.
    PaintedWindow(const QRect& rect, std::uint32_t color, const QByteArrayList& options = {});
    ~PaintedWindow();
    PaintedWindow(const PaintedWindow&) = delete;
    PaintedWindow& operator=(const PaintedWindow&) = delete;

    quint32 id() const { return m_id; } ///< Zero where it was never shown.
    qint64 processID() const { return m_process.processId(); }
    std::uint32_t color() const { return m_color; }
    /// What the part of it at @p rect of its content shows.
    QImage pattern(const QRect& rect) const;
    void close();
    void goOn() const;
    void stop() const; ///< The program does nothing any more, but its window stays.

private:
    QProcess m_process;
    quint32 m_id = 0;
    std::uint32_t m_color;
};

} // namespace Harness
