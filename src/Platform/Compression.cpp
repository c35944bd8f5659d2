#include "Platform/Compression.h"

#include <array>
#include <isa-l/igzip_lib.h>
#include <libdeflate.h>
#include <new>
#include <utility>

namespace Platform {

namespace {
constexpr int quickLevel = 2;
constexpr int thoroughLevel = 2;

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const
    {
        libdeflate_free_compressor(compressor);
    }
};
} // namespace

struct QuickZlibStream::State {
    isal_zstream stream{};
    std::array<uchar, ISAL_DEF_LVL2_LARGE> levelBuffer{};
    std::array<uchar, 65536> output{};
};

QuickZlibStream::QuickZlibStream(QByteArray& output)
    : m_output(output)
    , m_state(std::make_unique_for_overwrite<State>())
{
    auto& stream = m_state->stream;
    isal_deflate_init(&stream);
    stream.level = quickLevel;
    stream.level_buf = m_state->levelBuffer.data();
    stream.level_buf_size = static_cast<uint32_t>(m_state->levelBuffer.size());
    stream.gzip_flag = IGZIP_ZLIB;
}

QuickZlibStream::~QuickZlibStream() = default;

void QuickZlibStream::write(Bytes bytes)
{
    auto& stream = m_state->stream;
    stream.next_in = const_cast<uchar*>(bytes.data());
    stream.avail_in = static_cast<uint32_t>(bytes.size());
    run();
}

void QuickZlibStream::finish()
{
    m_state->stream.end_of_stream = 1;
    run();
}

/// Until all that was written is taken.
void QuickZlibStream::run()
{
    auto& stream = m_state->stream;
    auto& output = m_state->output;
    do {
        stream.next_out = output.data();
        stream.avail_out = static_cast<uint32_t>(output.size());
        isal_deflate(&stream); // Can fail for its settings only.
        m_output.append(reinterpret_cast<const char*>(output.data()),
            static_cast<qsizetype>(output.size() - stream.avail_out));
    } while (stream.avail_out == 0);
}

void appendThoroughZlib(QByteArray& output, Bytes bytes)
{
    const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(
        libdeflate_alloc_compressor(thoroughLevel));
    if (!compressor)
        throw std::bad_alloc();
    const auto start = output.size();
    const auto bound = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    output.resize(start + static_cast<qsizetype>(bound));
    const auto size = libdeflate_zlib_compress(
        compressor.get(), bytes.data(), bytes.size(), output.data() + start, bound);
    output.resize(start + static_cast<qsizetype>(size));
}

ZlibReader::ZlibReader(std::function<Bytes()> nextInput)
    : m_nextInput(std::move(nextInput))
    , m_state(std::make_unique<inflate_state>())
{
    isal_inflate_init(m_state.get());
    m_state->crc_flag = ISAL_ZLIB;
}

ZlibReader::~ZlibReader() = default;

bool ZlibReader::read(std::span<uchar> output)
{
    m_state->next_out = output.data();
    m_state->avail_out = static_cast<uint32_t>(output.size());
    while (m_state->avail_out > 0) {
        if (m_state->avail_in == 0) {
            const auto input = m_nextInput();
            m_state->next_in = const_cast<uchar*>(input.data());
            m_state->avail_in = static_cast<uint32_t>(input.size());
        }
        const auto before = std::pair(m_state->avail_in, m_state->avail_out);
        if (isal_inflate(m_state.get()) != ISAL_DECOMP_OK)
            return false;
        if (before == std::pair(m_state->avail_in, m_state->avail_out))
            return false; // At the end of the stream, or of what there is of it.
    }
    return true;
}

quint32 crc32(Bytes bytes)
{
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

} // namespace Platform
