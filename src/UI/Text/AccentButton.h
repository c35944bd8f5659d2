#pragma once

#include <QAbstractButton>

namespace Lumenote {

/// A small capsule of the accent colour with a label. Takes the keyboard by Tab only.
class AccentButton : public QAbstractButton {
    Q_OBJECT

public:
    /// @p name is the object's name, @p padding what is free beside the label; there may be no
    /// @p glyph before it.
    AccentButton(
        const QString& name, QString glyph, const QString& label, int padding, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString m_glyph;
    int m_padding;
};

} // namespace Lumenote
