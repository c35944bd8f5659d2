#pragma once

#include <QColor>
#include <QWidget>

#include <optional>

namespace Lumenote {

/// A floating glass surface with fully rounded ends and its shadow. The widget is larger than the
/// surface by the margins of the shadow; presses in there go on to the parent.
class Capsule : public QWidget {
    Q_OBJECT

public:
    explicit Capsule(QWidget* parent);

    void setTint(const std::optional<QColor>& tint); ///< Over the glass.

    /// Puts the surface itself at @p rect, in the parent's coordinates.
    void setSurface(const QRect& rect);
    QRect surface() const; ///< In the parent's coordinates.
    QRect innerRect() const; ///< The surface in its own coordinates.

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    virtual void placeContents() { } ///< The surface has another size.

private:
    std::optional<QColor> m_tint;
};

} // namespace Lumenote
