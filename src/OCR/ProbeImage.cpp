#include "OCR/ProbeImage.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>

#include <array>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int width = 2000;
constexpr double linePitch = 28.8;
constexpr int padding = 8; // Above, below and at the left.
constexpr int fontSize = 18;
constexpr int proseCharacters = 218;
} // namespace Metrics

constexpr std::array probeCode{
    u"let kCFAllocatorDefault = CFAllocatorGetDefault()",
    u"func recognize(cgImage: CGImage) async -> OCRResult {",
    u"  guard let candidate = observation.topCandidates(1).first",
    u"Error: connection refused (ECONNREFUSED) at 127.0.0.1:8080",
    u"warning: unused variable 'result' in scope of makeRequest()",
};

constexpr auto probeProse =
    u"The quick brown fox jumps over the lazy dog while the sun sets behind distant hills and "
    u"the river runs quietly through the valley carrying leaves toward the sea where boats "
    u"wait for morning light to guide them safely home again across the open water and the "
    u"wind falls still";

QStringList codeLines(int lineCount)
{
    QStringList lines;
    for (int index = 0; index < lineCount; ++index) {
        const auto* const code = probeCode[static_cast<size_t>(index) % probeCode.size()];
        lines.append(QString::number(index) + u' ' + QString::fromUtf16(code));
    }
    return lines;
}

QStringList proseLines(int lineCount)
{
    const auto words = QString::fromUtf16(probeProse).split(u' ', Qt::SkipEmptyParts);
    QStringList lines;
    qsizetype next = 0; // Runs on from line to line.
    for (int index = 0; index < lineCount; ++index) {
        QString line;
        while (line.size() < Metrics::proseCharacters) {
            if (!line.isEmpty())
                line += u' ';
            line += words.at(next++ % words.size());
        }
        lines.append(line);
    }
    return lines;
}

QFont probeFont(ProbeKind kind)
{
    // By family rather than from the desktop's theme, which belongs to the main thread.
    QFont font(
        kind == ProbeKind::code ? QStringLiteral("monospace") : QStringLiteral("sans-serif"));
    font.setStyleHint(kind == ProbeKind::code ? QFont::Monospace : QFont::SansSerif);
    font.setPixelSize(Metrics::fontSize);
    return font;
}

} // namespace

QStringList probeLines(int lineCount, ProbeKind kind)
{
    return kind == ProbeKind::code ? codeLines(lineCount) : proseLines(lineCount);
}

QImage probeImage(int lineCount, ProbeKind kind)
{
    // Without a GUI application looking up a font ends the program.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return {};
    const auto height = static_cast<int>(lineCount * Metrics::linePitch) + 2 * Metrics::padding;
    QImage image(Metrics::width, height, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.fill(Qt::white);
    QPainter painter(&image);
    if (!painter.isActive())
        return {};
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(Qt::black);
    painter.setFont(probeFont(kind));
    const auto descent = QFontMetricsF(painter.font(), &image).descent();
    double bottom = Metrics::padding;
    for (const auto& line : probeLines(lineCount, kind)) {
        bottom += Metrics::linePitch;
        painter.drawText(QPointF(Metrics::padding, bottom - descent), line);
    }
    painter.end();
    return image;
}

} // namespace Lumenote
