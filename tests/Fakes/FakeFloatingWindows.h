#pragma once

#include "Platform/FloatingWindows.h"

#include <QHash>

#include <utility>

namespace Fakes {

/// Records what each window was given.
class FakeFloatingWindows final : public Platform::FloatingWindows {
public:
    struct Window {
        int preparations = 0;
        QMargins shadow;
        QRegion inputShape;
        QRegion blurRegion;
    };

    void prepare(QWindow& window, const QMargins& shadow) override
    {
        ++windows[&window].preparations;
        windows[&window].shadow = shadow;
    }
    void setInputShape(QWindow& window, const QRegion& region) override
    {
        windows[&window].inputShape = region;
    }
    void setBlurRegion(QWindow& window, const QRegion& region) override
    {
        windows[&window].blurRegion = region;
    }
    bool blursBehind() const override { return m_blursBehind; }

    void setBlursBehind(bool blursBehind)
    {
        if (std::exchange(m_blursBehind, blursBehind) != blursBehind)
            emit blursBehindChanged();
    }

    QHash<const QWindow*, Window> windows;

private:
    bool m_blursBehind = false;
};

} // namespace Fakes
