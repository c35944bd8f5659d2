#pragma once

#include <QAbstractButton>
#include <QColor>

namespace Lumenote {

/// A round button that shows one glyph. Takes the keyboard by Tab only, and shows that it has it.
class GlyphButton : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr int side = 30;

    /// @p name is the object's name. No @p glyph leaves the button bare.
    GlyphButton(const QString& name, QString glyph, QWidget* parent);

    void setGlyph(const QString& glyph);
    /// What it stands for is in use: the glyph is on a disc of the accent colour.
    void setActive(bool isActive);
    bool isActive() const { return m_isActive; }
    void setOpacity(double opacity);
    void setGlyphSide(double side); ///< Of the drawing's box; that of the button at first.
    void setSurface(const QColor& fill, const QColor& outline); ///< A disc below the glyph.

    QSize sizeHint() const override { return {side, side}; }

signals:
    void focusChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;
    bool event(QEvent* event) override;

private:
    void paintDisc(QPainter& painter, const QColor& fill, const QColor& outline) const;

    QString m_glyph;
    double m_opacity = 1;
    double m_glyphSide = 0;
    bool m_isActive = false;
    QColor m_fill = Qt::transparent;
    QColor m_outline = Qt::transparent;
};

} // namespace Lumenote
