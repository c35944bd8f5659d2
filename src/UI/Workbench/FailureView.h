#pragma once

#include "UI/Workbench/FloatingContent.h"

namespace Lumenote {

/// Stands where there is no image to show.
class FailureView : public FloatingContent {
    Q_OBJECT

public:
    explicit FailureView(QWidget* window);

    QRect cardRect() const override;
    QRegion inputRegion() const override { return cardRect(); }
    QRegion visibleRegion() const override;
    void setBlended(bool isBlended) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool m_isBlended = true;
};

} // namespace Lumenote
