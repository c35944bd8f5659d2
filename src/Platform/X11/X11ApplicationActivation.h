#pragma once

#include "Platform/ApplicationActivation.h"

#include <QObject>

#include <cstdint>

namespace Platform {

/// The input focus of the X server, and the way window managers are asked for it.
class X11ApplicationActivation final : public QObject, public ApplicationActivation {
    Q_OBJECT

public:
    void noteFrontmost() override;
    void activate(QWindow& window) override;
    QFuture<bool> isKey(const QWindow& window) override;
    void giveBack() override;

private:
    std::uint32_t m_frontmost = 0; ///< A window; zero for none.
};

} // namespace Platform
