#pragma once

#include "Harness/Waiting.h"

#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>

#include <gtest/gtest.h>

/// A window of this program, of one striking colour.
class OwnWindow final : public QRasterWindow {
public:
    enum class Look { opaque, translucent, shaped };

    static constexpr QRgb color = 0xffff00ff;

    /// Shows it; @p rect in Qt's points.
    explicit OwnWindow(const QRect& rect, Look look = Look::opaque)
        : m_color(color)
    {
        if (look == Look::translucent) {
            auto format = requestedFormat();
            format.setAlphaBufferSize(8);
            setFormat(format);
            m_color.setAlphaF(0.5);
        }
        setGeometry(rect);
        if (look == Look::shaped)
            setMask(QRegion({{}, rect.size()}, QRegion::Ellipse));
        show();
        EXPECT_TRUE(Harness::waitFor([this] { return m_isPainted; }));
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect({}, size()), m_color);
        m_isPainted = true;
    }

private:
    QColor m_color;
    bool m_isPainted = false;
};
