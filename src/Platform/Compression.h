#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <span>

struct inflate_state;

namespace Platform {

using Bytes = std::span<const uchar>;

/// A zlib stream that is written piece by piece: some two gigabytes a second where the content is
/// flat, and small where the same bytes come again soon. Throws std::bad_alloc.
class QuickZlibStream {
public:
    /// Appends to @p output, which is borrowed.
    explicit QuickZlibStream(QByteArray& output);
    ~QuickZlibStream();
    QuickZlibStream(const QuickZlibStream&) = delete;
    QuickZlibStream& operator=(const QuickZlibStream&) = delete;

    void write(Bytes bytes);
    void finish();

private:
    struct State;

    void run();

    QByteArray& m_output;
    std::unique_ptr<State> m_state;
};

/// Appends the zlib stream of @p bytes to @p output. Takes a few times as long as the quick stream,
/// and makes less of smooth pictures, whose bytes are small but never quite the same. Throws
/// std::bad_alloc.
void appendThoroughZlib(QByteArray& output, Bytes bytes);

/// Reads a zlib stream piece by piece. Throws std::bad_alloc.
class ZlibReader {
public:
    /// @p nextInput answers more of the stream, valid until it is asked again; nothing at the end.
    explicit ZlibReader(std::function<Bytes()> nextInput);
    ~ZlibReader();
    ZlibReader(const ZlibReader&) = delete;
    ZlibReader& operator=(const ZlibReader&) = delete;

    /// Fills @p output. False where the stream is damaged or ends before.
    bool read(std::span<uchar> output);

private:
    std::function<Bytes()> m_nextInput;
    std::unique_ptr<inflate_state> m_state;
};

/// The checksum of a PNG chunk.
quint32 crc32(Bytes bytes);

} // namespace Platform
