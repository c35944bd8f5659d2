#pragma once

#include "Harness/Waiting.h"
#include "Platform/FloatingWindows.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>

#include <gtest/gtest.h>

/// A window of this program as the workbench is one: without a frame, translucent, and with a
/// shadow that it draws itself. It counts the clicks that it gets.
class FloatingWindow final : public QRasterWindow {
public:
    static constexpr QMargins shadow{36, 36, 36, 36};

    /// @p card is what one sees as the window; in Qt's points.
    FloatingWindow(Platform::FloatingWindows& floating, const QRect& card)
        : m_floating(floating)
    {
        auto format = requestedFormat();
        format.setAlphaBufferSize(8);
        setFormat(format);
        setFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setGeometry(card + shadow);
    }

    void present()
    {
        m_floating.prepare(*this, shadow);
        m_isPainted = false;
        show();
        EXPECT_TRUE(Harness::waitFor([this] { return m_isPainted; }));
    }

    QByteArray id() const { return QByteArray::number(winId()); }
    int clicks = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        const QRect all({}, size());
        painter.fillRect(all, QColor(0, 0, 0, 100));
        painter.fillRect(all - shadow, Qt::magenta);
        m_isPainted = true;
    }

    void mousePressEvent(QMouseEvent* /*event*/) override { ++clicks; }

private:
    Platform::FloatingWindows& m_floating;
    bool m_isPainted = false;
};
