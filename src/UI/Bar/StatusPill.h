#pragma once

#include "UI/Shared/Capsule.h"

namespace Lumenote {

/// What the user is told in passing, in the place of the control bar.
class StatusPill : public Capsule {
    Q_OBJECT

public:
    explicit StatusPill(QWidget* parent);

    void setMessage(const QString& message); ///< Also tells those who listen rather than look.
    int wantedWidth() const; ///< Of the surface.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_message;
};

} // namespace Lumenote
