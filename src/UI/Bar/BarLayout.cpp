#include "UI/Bar/BarLayout.h"

#include "UI/Shared/GlyphButton.h"
#include "UI/Shared/Theme.h"

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int spacing = 8; ///< Between surfaces.
constexpr int clusterSpacing = 2;
constexpr int clusterPadding = 4;
constexpr int utilityButtons = 3;
constexpr int height = static_cast<int>(Theme::barHeight);
} // namespace Metrics

} // namespace

QRect BarLayout::row() const
{
    return close.united(tools).united(utility).united(copy);
}

QRect BarLayout::centred(int width, int surfaceWidth, int top)
{
    return {(width - surfaceWidth) / 2, top, surfaceWidth, Metrics::height};
}

BarLayout BarLayout::of(const Input& input, int top)
{
    const auto utilityWidth =
        ClusterLayout::width(QList<int>(Metrics::utilityButtons, GlyphButton::side));
    BarLayout layout;
    int x = 0;
    const auto place = [&](QRect& surface, int width) {
        surface = {x, top, width, Metrics::height};
        x += width + Metrics::spacing;
    };
    place(layout.close, Metrics::height);
    if (input.toolsWidth > 0)
        place(layout.tools, input.toolsWidth);
    place(layout.utility, utilityWidth);
    place(layout.copy, input.copyWidth);
    const auto left = (input.width - (x - Metrics::spacing)) / 2;
    for (auto* const surface : {&layout.close, &layout.tools, &layout.utility, &layout.copy})
        if (!surface->isEmpty())
            surface->translate(left, 0);
    return layout;
}

QList<int> ClusterLayout::positions(const QList<int>& widths)
{
    QList<int> lefts;
    int x = Metrics::clusterPadding;
    for (const auto width : widths) {
        lefts.append(x);
        x += width + Metrics::clusterSpacing;
    }
    return lefts;
}

int ClusterLayout::width(const QList<int>& widths)
{
    return positions(widths).constLast() + widths.constLast() + Metrics::clusterPadding;
}

} // namespace Lumenote
