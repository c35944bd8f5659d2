#include "ScreenReading.h"

#include "Baseline.h"
#include "Platform/X11/X11DisplayServer.h"
#include "Stopwatch.h"
#include "reading/Table.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QRasterWindow>

#include <memory>
#include <vector>

namespace Lumenote::Bench {

namespace {

constexpr int rounds = 60;
constexpr int coldRounds = 12; ///< Each keeps its memory to the end.

class OwnWindow final : public QRasterWindow {
protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter(this).fillRect(QRect({}, size()), Qt::magenta);
    }
};

class ScreenReading {
public:
    ScreenReading(Platform::X11DisplayServer& server, QSize size, qint64 serverProcessID)
        : m_server(server)
        , m_size(size)
        , m_serverProcessID(serverProcessID)
        , m_table({QStringLiteral("%1×%2, ms").arg(size.width()).arg(size.height()),
              QStringLiteral("XShmGetImage: wall, server"),
              QStringLiteral("capture: wall, server, own"), QStringLiteral("wall ×"),
              QStringLiteral("server ×")})
    {
    }

    /// One capture after the other, each dropped before the next: both sides use memory that the
    /// server knows already.
    void alternate(const QString& name);

    /// Captures that are all kept: each needs new memory.
    void alternateKeeping();

    QString table() const { return m_table.toMarkdown(); }

private:
    QImage capture() const;
    void addRow(const QString& name, const QList<Cost>& plain, const QList<Cost>& ours);

    Platform::X11DisplayServer& m_server;
    QSize m_size;
    qint64 m_serverProcessID;
    Table m_table;
};

QImage ScreenReading::capture() const
{
    auto future =
        m_server.captureImage(Platform::DisplayFilter{m_server.screens().first().displayNumber},
            {.sourceRect = QRect({}, m_size), .pixelSize = m_size, .colorSpace = {}});
    const auto image = future.result(); // Blocks, so that no turn of the event loop is measured.
    require(image.has_value(), "a capture failed");
    return *image;
}

void ScreenReading::addRow(const QString& name, const QList<Cost>& plain, const QList<Cost>& ours)
{
    const auto baseline = median(plain);
    const auto cost = median(ours);
    const auto list = [](const QList<double>& figures) {
        QStringList texts;
        for (const double figure : figures)
            texts.append(Table::number(figure));
        return texts.join(QStringLiteral(", "));
    };
    m_table.addRow({name, list({baseline.wall, baseline.server}),
        list({cost.wall, cost.server, cost.own}), Table::number(cost.wall / baseline.wall),
        Table::number(cost.server / baseline.server)});
}

void ScreenReading::alternate(const QString& name)
{
    Baseline baseline(m_size);
    baseline.attach();
    require(baseline.getImage() && !capture().isNull(), "the first capture failed");
    QList<Cost> plain;
    QList<Cost> ours;
    for (int round = 0; round < rounds; ++round) {
        plain.append(measure([&] { baseline.getImage(); }, m_serverProcessID));
        ours.append(measure([this] { capture(); }, m_serverProcessID));
    }
    addRow(name, plain, ours);
}

void ScreenReading::alternateKeeping()
{
    QList<Cost> plain;
    QList<Cost> ours;
    std::vector<std::unique_ptr<Baseline>> baselines;
    QList<QImage> images;
    for (int round = 0; round < coldRounds; ++round) {
        baselines.push_back(std::make_unique<Baseline>(m_size));
        const auto getNew = [&baseline = *baselines.back()] {
            baseline.attach();
            baseline.getImage();
        };
        plain.append(measure(getNew, m_serverProcessID));
        ours.append(measure([&] { images.append(capture()); }, m_serverProcessID));
    }
    addRow(QStringLiteral("no window of ours, all captures kept"), plain, ours);
}

} // namespace

void measureScreenReading(
    Platform::X11DisplayServer& server, QSize screenSize, qint64 serverProcessID)
{
    ScreenReading reading(server, screenSize, serverProcessID);
    reading.alternate(QStringLiteral("no window of ours"));
    reading.alternateKeeping();
    OwnWindow window;
    window.setGeometry(
        QRect(QPoint(screenSize.width() / 8, screenSize.height() / 8), screenSize / 2));
    window.show();
    QElapsedTimer timer;
    timer.start();
    while (!window.isExposed() || !timer.hasExpired(300)) // Painted, too.
        QCoreApplication::processEvents();
    reading.alternate(QStringLiteral("a window of ours over a quarter"));
    print(reading.table());
}

} // namespace Lumenote::Bench
