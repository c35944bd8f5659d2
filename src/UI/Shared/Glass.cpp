#include "UI/Shared/Glass.h"

#include "UI/Shared/Theme.h"

#include <QPainter>

namespace Lumenote::Glass {

namespace {

const QColor smoke(28, 28, 31);
const QColor opaqueSmoke(34, 34, 36);
/// Less, and text behind the glass makes what stands on it hard to read.
constexpr double translucentDensity = 0.86;
constexpr double blurredDensity = 0.6;

Backing& currentBacking()
{
    static Backing backing = Backing::opaque;
    return backing;
}

QColor fill()
{
    auto color = smoke;
    switch (backing()) {
    case Backing::opaque:
        return opaqueSmoke;
    case Backing::translucent:
        color.setAlphaF(translucentDensity);
        return color;
    case Backing::blurred:
        color.setAlphaF(blurredDensity);
        return color;
    }
    return color;
}

QPen hairline()
{
    return backing() == Backing::opaque ? QPen(Theme::white(0.22), 1)
                                        : QPen(Theme::white(0.18), 0.5);
}

} // namespace

Backing backing()
{
    return currentBacking();
}

void setBacking(Backing backing)
{
    currentBacking() = backing;
}

const Shadow& shadow()
{
    static const Shadow shadow{.color = Theme::black(0.28), .radius = 7, .offset = {0, 2}};
    return shadow;
}

void paintCapsule(QPainter& painter, const QRectF& rect, const std::optional<QColor>& tint)
{
    const auto pen = hairline();
    const auto inset = pen.widthF() / 2;
    const auto outline = rect.adjusted(inset, inset, -inset, -inset);
    const auto radius = rect.height() / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill());
    painter.drawRoundedRect(rect, radius, radius);
    if (tint) {
        painter.setBrush(*tint);
        painter.drawRoundedRect(rect, radius, radius);
    }
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(outline, radius - inset, radius - inset);
    painter.restore();
}

} // namespace Lumenote::Glass
