#pragma once

#include "UI/Shared/Capsule.h"
#include "UI/Shared/GlyphButton.h"
#include "UI/Shared/Motion.h"

#include <functional>

class QPainter;

namespace Lumenote {

/// A glass button over the card. It fades in while the pointer is on the card or the keyboard is on
/// it. Its glass is what lies below it, blurred, and as dark as the glyph needs.
class CornerButton : public Capsule {
    Q_OBJECT

public:
    CornerButton(const QString& name, const QString& glyph, QWidget* card);

    static constexpr int side = GlyphButton::side; ///< Of the surface.

    GlyphButton& button() { return *m_button; }

    /// Paints the card, in its coordinates, without what stands on it.
    std::function<void(QPainter&)> paintGround;

    /// Whether there is anything to press, and whether the pointer is near.
    void setState(bool isAvailable, bool isNear);

protected:
    void paintEvent(QPaintEvent* event) override;
    void placeContents() override;

private:
    void refresh();
    void paintGlass(QPainter& painter) const;

    GlyphButton* m_button;
    bool m_isAvailable = false;
    bool m_isNear = false;
    bool m_isShown = false;
    double m_opacity = 0;
    double m_fromOpacity = 0;
    Motion::Run m_fade;
};

} // namespace Lumenote
