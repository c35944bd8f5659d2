#include "Harness/Desktop.h"
#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/PngEncoder.h"

#include <QImage>

#include <gtest/gtest.h>

namespace {

/// The program with the pasteboard, and another program that reads it, on a display of their own.
class ClipboardPasteboard : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_server.isRunning()) << qPrintable(m_server.failure()); }

    bool put(const char* kind, const QByteArray& bytes)
    {
        m_owner = m_desktop.start(LUMENOTE_PASTEBOARD_OWNER, {kind});
        m_owner->write(bytes);
        m_owner->closeWriteChannel();
        return Harness::waitFor([this] { return m_owner->canReadLine(); })
            && m_owner->readLine() == "set\n";
    }

    QByteArray read(const char* target) const
    {
        return m_desktop.output("xclip", {"-selection", "clipboard", "-out", "-target", target});
    }

    const Harness::XServer m_server;
    const Harness::Desktop m_desktop{m_server.environment()};
    Harness::Desktop::Program m_owner{nullptr, nullptr};
};

TEST_F(ClipboardPasteboard, otherProgramsReadTheSamePngByteForByte)
{
    QImage noise(1600, 1000, QImage::Format_RGB32); // Too much for one message of the X protocol.
    quint32 state = 1;
    for (int y = 0; y < noise.height(); ++y)
        for (int x = 0; x < noise.width(); ++x)
            noise.setPixel(x, y, state = state * 1664525 + 1013904223);
    const auto png = Platform::encodePng(noise, 72);
    ASSERT_TRUE(png);
    ASSERT_TRUE(put("png", *png));
    EXPECT_TRUE(read("image/png") == *png);
    EXPECT_FALSE(read("TARGETS").contains("image/bmp"));
}

TEST_F(ClipboardPasteboard, otherProgramsReadTheSameTextByteForByte)
{
    const QByteArray text = "Zeile 1\n\tCaf\xc3\xa9 \xf0\x9f\x93\xb8 100 %\n";
    ASSERT_TRUE(put("text", text));
    EXPECT_EQ(read("UTF8_STRING"), text);
}

} // namespace
