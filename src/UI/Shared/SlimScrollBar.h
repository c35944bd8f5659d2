#pragma once

#include <QScrollBar>

namespace Lumenote {

/// A vertical scroll bar without a track and buttons: a thin handle, and nothing at all where
/// there is nothing to scroll. It always keeps its room, so that nothing moves when it comes.
class SlimScrollBar : public QScrollBar {
    Q_OBJECT

public:
    static constexpr int thickness = 10; ///< In points.

    /// @p endMargin is kept free at both ends, where a rounded corner may be.
    SlimScrollBar(int endMargin, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Lumenote
