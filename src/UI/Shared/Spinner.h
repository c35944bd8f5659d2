#pragma once

#include <QTimer>
#include <QWidget>

namespace Lumenote {

/// Turns while something is under way, and only while it can be seen. Presses go through it.
class Spinner : public QWidget {
    Q_OBJECT

public:
    Spinner(double diameter, QWidget* parent); ///< In points.

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const double m_diameter;
    int m_step = 0;
    QTimer m_clock;
};

} // namespace Lumenote
