#pragma once

#include <QList>
#include <QRect>

namespace Lumenote {

/// Where the pieces of the control bar go: rectangles of their surfaces.
struct BarLayout {
    QRect close;
    QRect tools; ///< Empty while the text is shown.
    QRect utility;
    QRect copy;

    /// All of the row, with its gaps.
    QRect row() const;

    struct Input {
        int width = 0; ///< Of the bar.
        int toolsWidth = 0; ///< Zero for no tools.
        int copyWidth = 0;
    };

    /// In the middle of a bar whose surfaces begin at @p top.
    static BarLayout of(const Input& input, int top);

    /// The middle of @p width at @p top, @p surfaceWidth wide.
    static QRect centred(int width, int surfaceWidth, int top);
};

/// Where the buttons and dividers of a cluster go, one beside the other.
namespace ClusterLayout {

inline constexpr int divider = 1; ///< The width of one.

/// The left edge of each of @p widths in a cluster.
QList<int> positions(const QList<int>& widths);
int width(const QList<int>& widths);

} // namespace ClusterLayout

} // namespace Lumenote
