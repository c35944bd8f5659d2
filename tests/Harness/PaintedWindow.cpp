#include "Harness/PaintedWindow.h"

#include "Harness/Waiting.h"
#include "Harness/XServer.h"

#include <csignal>

namespace Harness {

PaintedWindow::PaintedWindow(const QRect& rect, std::uint32_t color, const QByteArrayList& options)
    : m_color(color)
{
    QByteArrayList arguments;
    for (const int number : {rect.x(), rect.y(), rect.width(), rect.height()})
        arguments.append(QByteArray::number(number));
    arguments.append(QByteArray::number(color, 16));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(LUMENOTE_PAINTED_WINDOW), toStrings(arguments + options));
    waitFor(
        [this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; });
    m_id = m_process.readLine().trimmed().toUInt();
}

PaintedWindow::~PaintedWindow()
{
    close();
}

QImage PaintedWindow::pattern(const QRect& rect) const
{
    QImage image(rect.size(), QImage::Format_RGB32);
    for (int y = 0; y < rect.height(); ++y)
        for (int x = 0; x < rect.width(); ++x)
            image.setPixel(x, y, patternPixel(m_color, rect.x() + x, rect.y() + y));
    return image;
}

void PaintedWindow::close()
{
    m_process.kill();
    m_process.waitForFinished(patience);
}

void PaintedWindow::goOn() const
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

void PaintedWindow::stop() const
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

} // namespace Harness
