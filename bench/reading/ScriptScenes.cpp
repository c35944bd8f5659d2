#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Widgets;

void scriptDialog(Page& page, const QString& family, const QStringList& texts)
{
    const double u = page.unit() + 3;
    const QFont font = page.look.font(family, u, QFont::Normal);
    const QFont large = page.look.font(family, 1.4 * u, QFont::Normal);
    const bool isRightToLeft = texts.first().isRightToLeft();
    const double width = std::max(widest(texts, large) + 6 * u, 24 * u);
    const double row = std::round(2.4 * u);
    page.canvas.begin({width, double(texts.size()) * row + 2 * u}, page.look.theme.surface);
    const Qt::Alignment side = isRightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    for (int i = 0; i < int(texts.size()); ++i) {
        const QRectF rect(1.5 * u, u + i * row, width - 3 * u, row);
        if (i == 2)
            box(page, rect.adjusted(-u, 2, u, -2), page.look.theme.accent, 4);
        page.canvas.writeIn(rect, side, texts[i], i == 0 ? large : font,
            i == 2 ? page.look.theme.onAccent : page.look.theme.text);
    }
}

} // namespace Lumenote::Bench::Scenes
