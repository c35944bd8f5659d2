#include "Platform/PngThumbnail.h"

#include "Platform/ByteSource.h"
#include "Platform/Compression.h"
#include "Platform/PngFilter.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Platform {

namespace {

constexpr size_t channels = 3;
constexpr int chunkHead = 8; ///< Length and name; the checksum follows the content.
constexpr int chunkOverhead = 12;

Bytes asBytes(const QByteArray& array)
{
    return {reinterpret_cast<const uchar*>(array.constData()), static_cast<size_t>(array.size())};
}

struct Chunk {
    QByteArray name;
    qint64 content = 0;
    qint64 size = 0;
    qint64 next = 0;
};

Chunk chunkAt(const ByteSource& source, qint64 place)
{
    const qint64 size = source.bigEndian<quint32>(place).value_or(0);
    return {.name = source.bytes(place + 4, 4),
        .content = place + chunkHead,
        .size = size,
        .next = place + chunkOverhead + size};
}

/// Of the chunk "IHDR"; invalid where the pixels aren't plain.
QSize plainSize(const ByteSource& source)
{
    constexpr int formPlace = 24;
    constexpr int checksumPlace = 29;
    const QByteArrayView eightBitsOfColourRowByRow("\x08\x02\0\0\0", 5);
    if (source.bytes(0, 16) != QByteArrayView("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16)
        || source.bytes(formPlace, 5) != eightBitsOfColourRowByRow
        || source.bigEndian<quint32>(checksumPlace) != crc32(asBytes(source.bytes(12, 17))))
        return {};
    const auto side = [&](qint64 place) {
        const auto value = source.bigEndian<quint32>(place).value_or(0);
        return value > 0 && value <= 0x7fffffff ? static_cast<int>(value) : -1;
    };
    return {side(16), side(20)};
}

/// The inflated content of the chunk "iCCP", behind the name of the profile.
QColorSpace profileIn(const QByteArray& content)
{
    constexpr size_t largestProfile = 4UL << 20;
    const auto endOfName = content.indexOf('\0');
    if (endOfName < 0)
        return {};
    auto compressed = Bytes(
        reinterpret_cast<const uchar*>(content.constData()), static_cast<size_t>(content.size()))
                          .subspan(std::min(content.size(), endOfName + 2));
    ZlibReader reader([&] { return std::exchange(compressed, {}); });
    std::array<uchar, 4> length{};
    if (!reader.read(length))
        return {};
    const auto size = qFromBigEndian<quint32>(length.data());
    if (size < length.size() || size > largestProfile)
        return {};
    QByteArray profile(static_cast<qsizetype>(size), Qt::Uninitialized);
    auto* data = reinterpret_cast<uchar*>(profile.data());
    std::ranges::copy(length, data);
    if (!reader.read({data + length.size(), size - length.size()}))
        return {};
    return QColorSpace::fromIccProfile(profile);
}

/// The rows of a file, one after the other.
class RowReader {
public:
    RowReader(const ByteSource& source, const PlainPng& png)
        : m_source(source)
        , m_chunk(chunkAt(source, png.pixelsPlace))
        , m_place(m_chunk.content)
        , m_stream([this] { return nextInput(); })
        , m_rowBytes(1 + static_cast<size_t>(png.size.width()) * channels)
        , m_above(m_rowBytes - 1)
    {
        constexpr size_t bytesAtOnce = 256UL * 1024;
        m_rowsAtOnce = static_cast<int>(std::max(size_t{1}, bytesAtOnce / m_rowBytes));
        m_rowsLeft = png.size.height();
    }

    /// Nothing where the file is damaged or at its end.
    Bytes next()
    {
        if (m_row == m_rowsRead && !readMore())
            return {};
        const auto row =
            std::span(m_rows).subspan(static_cast<size_t>(m_row) * m_rowBytes, m_rowBytes);
        const auto* above = m_row > 0 ? row.data() - m_rowBytes + 1 : m_above.data();
        ++m_row;
        const auto pixels = row.subspan(1);
        if (!unfilterPngRow(pixels, above, static_cast<PngFilter>(row.front())))
            return {};
        return pixels;
    }

private:
    bool readMore()
    {
        if (m_rowsRead > 0)
            std::copy_n(m_rows.end() - static_cast<ptrdiff_t>(m_above.size()), m_above.size(),
                m_above.begin());
        m_rowsRead = std::min(m_rowsAtOnce, m_rowsLeft);
        m_rowsLeft -= m_rowsRead;
        m_row = 0;
        m_rows.resize(static_cast<size_t>(m_rowsRead) * m_rowBytes);
        return m_rowsRead > 0 && m_stream.read(m_rows);
    }

    Bytes nextInput()
    {
        constexpr qint64 bytesAtOnce = 64LL * 1024;
        while (m_place == m_chunk.content + m_chunk.size) {
            m_chunk = chunkAt(m_source, m_chunk.next);
            m_place = m_chunk.content;
            if (m_chunk.name != "IDAT")
                return {};
        }
        const auto left = m_chunk.content + m_chunk.size - m_place;
        m_input = m_source.bytes(m_place, std::min(bytesAtOnce, left));
        m_place += m_input.size();
        return asBytes(m_input);
    }

    ByteSource m_source;
    Chunk m_chunk;
    qint64 m_place; ///< Of the next input.
    QByteArray m_input;
    ZlibReader m_stream;
    size_t m_rowBytes;
    std::vector<uchar> m_above;
    std::vector<uchar> m_rows;
    int m_rowsAtOnce = 1;
    int m_rowsLeft = 0;
    int m_rowsRead = 0;
    int m_row = 0; ///< Of those read, the next.
};

/// The sums of some rows, column by column.
class ColumnSums {
public:
    explicit ColumnSums(size_t size)
        : m_sums(size)
    {
    }

    void add(Bytes row)
    {
        auto* sums = m_sums.data();
        for (size_t i = 0; i < row.size(); ++i)
            sums[i] = static_cast<quint16>(sums[i] + row[i]);
        ++m_rows;
    }

    /// Writes the means of the columns that fall on each of @p width pixels, and begins anew.
    void takeMeans(QRgb* pixels, int width)
    {
        const auto columns = static_cast<int>(m_sums.size() / channels);
        for (int x = 0; x < width; ++x)
            pixels[x] = mean(boundary(x, columns, width), boundary(x + 1, columns, width));
        std::ranges::fill(m_sums, quint16{0});
        m_rows = 0;
    }

    /// Where the part @p index of @p parts begins of @p whole.
    static int boundary(int index, int whole, int parts)
    {
        return static_cast<int>(qint64{index} * whole / parts);
    }

private:
    QRgb mean(int first, int end) const
    {
        std::array<quint32, channels> sums{};
        for (auto i = static_cast<size_t>(first) * channels;
             i < static_cast<size_t>(end) * channels; i += channels)
            for (size_t channel = 0; channel < channels; ++channel)
                sums[channel] += m_sums[i + channel];
        const auto count = std::max(1U, static_cast<quint32>(end - first) * m_rows);
        const auto rounded = [&](size_t channel) {
            return static_cast<int>((sums[channel] + count / 2) / count);
        };
        return qRgb(rounded(0), rounded(1), rounded(2));
    }

    std::vector<quint16> m_sums;
    quint32 m_rows = 0;
};

} // namespace

std::optional<PlainPng> readPlainPng(QIODevice& file)
{
    constexpr qint64 firstChunkBehindHeader = 33;
    constexpr int mostChunks = 8;
    constexpr qint64 largestProfileChunk = 4LL << 20;
    const ByteSource source(file);
    PlainPng png;
    png.size = plainSize(source);
    if (!png.size.isValid())
        return std::nullopt;
    qint64 place = firstChunkBehindHeader;
    for (int count = 0; count < mostChunks; ++count) {
        const auto chunk = chunkAt(source, place);
        if (chunk.name == "IDAT") {
            png.pixelsPlace = place;
            return png;
        }
        if (chunk.name == "sRGB")
            png.colourSpace = QColorSpace::SRgb;
        else if (chunk.name == "iCCP" && chunk.size <= largestProfileChunk)
            png.colourSpace = profileIn(source.bytes(chunk.content, chunk.size));
        else if (chunk.name != "pHYs")
            return std::nullopt;
        place = chunk.next;
    }
    return std::nullopt;
}

QImage shrunkPng(QIODevice& file, const PlainPng& png, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.setColorSpace(png.colourSpace);
    RowReader rows(ByteSource(file), png);
    ColumnSums sums(static_cast<size_t>(png.size.width()) * channels);
    for (int y = 0; y < size.height(); ++y) {
        const auto end = ColumnSums::boundary(y + 1, png.size.height(), size.height());
        for (int row = ColumnSums::boundary(y, png.size.height(), size.height()); row < end;
             ++row) {
            const auto pixels = rows.next();
            if (pixels.empty())
                return {};
            sums.add(pixels);
        }
        sums.takeMeans(reinterpret_cast<QRgb*>(image.scanLine(y)), size.width());
    }
    return image;
}

} // namespace Platform
