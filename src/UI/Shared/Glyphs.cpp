#include "UI/Shared/Glyphs.h"

#include <QColor>
#include <QDir>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

/// Resources of a static library have to be asked for, and not from within a namespace.
void initGlyphResources()
{
    Q_INIT_RESOURCE(glyphs);
}

namespace Lumenote::Glyphs {

namespace {

const QString folder = QStringLiteral(":/glyphs/");
const QString suffix = QStringLiteral(".svg");

QPixmap draw(const QString& name, int side, const QColor& color)
{
    static const bool isReady = (initGlyphResources(), true);
    Q_ASSERT(isReady);
    QSvgRenderer drawing(folder + name + suffix);
    Q_ASSERT(drawing.isValid());
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

QPixmap cached(const QString& name, int side, const QColor& color)
{
    const auto key =
        QStringLiteral("lumenote-glyph-%1-%2-%3").arg(name).arg(side).arg(color.rgba());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = draw(name, side, color);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

} // namespace

QStringList names()
{
    initGlyphResources();
    auto files = QDir(folder).entryList({u'*' + suffix});
    for (auto& file : files)
        file.chop(suffix.size());
    return files;
}

void paint(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color)
{
    const auto ratio = painter.device()->devicePixelRatioF();
    auto pixmap = cached(name, qRound(rect.width() * ratio), color);
    pixmap.setDevicePixelRatio(ratio);
    const auto toDevice = painter.deviceTransform();
    const auto corner = toDevice.map(rect.topLeft());
    const QPointF onPixel(std::round(corner.x()), std::round(corner.y()));
    painter.drawPixmap(toDevice.inverted().map(onPixel), pixmap);
}

} // namespace Lumenote::Glyphs
