#pragma once

#include "UI/Shared/Shadow.h"

#include <QWidget>

namespace Lumenote {

/// Rounds off the card it covers, scrolling children and all: takes the corners away again after
/// everything else has been painted, and leaves the shadow there.
class CornerCutter : public QWidget {
    Q_OBJECT

public:
    CornerCutter(double radius, const Shadow& shadow, QWidget* card);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const double m_radius;
    const Shadow m_shadow;
};

} // namespace Lumenote
