#include "Harness/Pictures.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace Harness {

namespace {

template <typename Number>
QByteArray bigEndian(Number value)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray littleEndian(quint32 value)
{
    return bigEndian(qbswap(value));
}

quint32 crc32(const QByteArray& bytes)
{
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

/// Numbers of some bits each, the first in the lowest bits of a byte.
class Bits {
public:
    void append(quint32 value, int count)
    {
        m_rest |= quint64{value} << m_count;
        for (m_count += count; m_count >= 8; m_count -= 8) {
            bytes.append(static_cast<char>(m_rest & 0xFF));
            m_rest >>= 8;
        }
    }

    QByteArray bytes;

private:
    quint64 m_rest = 0;
    int m_count = 0;
};

/// A zlib stream of @p count zeros: one of them, and then runs of 258 that copy it.
QByteArray compressedZeros(qint64 count)
{
    constexpr qint64 run = 258;
    constexpr qint64 adlerBase = 65521;
    Bits bits;
    bits.bytes.reserve(count / run * 2);
    bits.append(0x0178, 16);
    bits.append(0b011, 3); // The last block, with the fixed codes.
    const auto literals = 1 + (count - 1) % run;
    for (qint64 index = 0; index < literals; ++index)
        bits.append(0b00001100, 8);
    for (qint64 index = 0; index < (count - 1) / run; ++index)
        bits.append(0b0000010100011, 13);
    bits.append(0, 7 + 7); // The end of the block, and up to a whole byte.
    return bits.bytes + bigEndian(static_cast<quint32>((count % adlerBase) << 16 | 1));
}

QByteArray pngHeader(quint32 width, quint32 height, char depth, PngColour colour)
{
    return bigEndian(width) + bigEndian(height) + depth + static_cast<char>(colour)
        + QByteArray(3, '\0');
}

} // namespace

QByteArray encoded(const QImage& image, const char* format)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    EXPECT_TRUE(writer.write(image)) << format;
    return buffer.data();
}

QByteArray pictureFile(const char* name)
{
    QFile file(QStringLiteral(LUMENOTE_PICTURES "/") + QString::fromUtf8(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

QByteArray pngChunk(const QByteArray& type, const QByteArray& content)
{
    return bigEndian(static_cast<quint32>(content.size())) + type + content
        + bigEndian(crc32(type + content));
}

QByteArray withPngChunk(QByteArray png, const QByteArray& chunk)
{
    return png.insert(33, chunk);
}

QByteArray pngClaiming(QByteArray png, quint32 width, quint32 height)
{
    png.replace(16, 8, bigEndian(width) + bigEndian(height));
    return png.replace(29, 4, bigEndian(crc32(png.mid(12, 17))));
}

QByteArray blackPng(quint32 width, quint32 height, PngColour colour)
{
    const bool isGray = colour == PngColour::grayBits;
    const auto rowBytes = 1 + (isGray ? (qint64{width} + 7) / 8 : qint64{width} * 3);
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", pngHeader(width, height, isGray ? 1 : 8, colour))
        + pngChunk("IDAT", compressedZeros(rowBytes * height)) + pngChunk("IEND", {});
}

QByteArray jpegClaiming(QByteArray jpeg, quint16 width, quint16 height)
{
    const auto baseline = jpeg.indexOf(QByteArray::fromHex("ffc0"));
    const auto frame = baseline > 0 ? baseline : jpeg.indexOf(QByteArray::fromHex("ffc2"));
    EXPECT_GT(frame, 0);
    return jpeg.replace(frame + 5, 4, bigEndian(height) + bigEndian(width));
}

QByteArray withJpegSegment(QByteArray jpeg, quint8 marker, const QByteArray& content)
{
    return jpeg.insert(2,
        QByteArray("\xff") + static_cast<char>(marker)
            + bigEndian(static_cast<quint16>(content.size() + 2)) + content);
}

QByteArray exifOrientation(quint16 orientation)
{
    return QByteArray::fromHex("4d4d002a00000008 0001 0112000300000001") + bigEndian(orientation)
        + QByteArray(6, '\0');
}

QByteArray withWebpExif(const QByteArray& webp, const QSize& size, const QByteArray& exif)
{
    constexpr char hasExif = 0x08;
    const auto edge = [](int length) {
        return littleEndian(static_cast<quint32>(length - 1)).left(3);
    };
    const auto chunk = [](const QByteArray& type, const QByteArray& content) {
        return type + littleEndian(static_cast<quint32>(content.size())) + content;
    };
    const auto content = "WEBP"
        + chunk("VP8X", hasExif + QByteArray(3, '\0') + edge(size.width()) + edge(size.height()))
        + webp.mid(12) + chunk("EXIF", exif);
    return chunk("RIFF", content);
}

QByteArray repeatedGif(const QByteArray& gif, int count)
{
    const auto frame = gif.indexOf(QByteArray::fromHex("21f904"));
    const auto next = gif.indexOf(QByteArray::fromHex("21f904"), frame + 1);
    EXPECT_GT(frame, 0);
    EXPECT_GT(next, frame);
    return gif.left(frame) + gif.mid(frame, next - frame).repeated(count) + ';';
}

qint64 peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

} // namespace Harness
