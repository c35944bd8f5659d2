#include "Windows.h"

#include <array>

namespace Lumenote::Bench {

std::vector<std::unique_ptr<Harness::PaintedWindow>> otherWindows(QSize screenSize)
{
    constexpr std::array colors{0x204080U, 0x802040U, 0x408020U, 0x606060U, 0xa0a020U, 0x20a0a0U};
    std::vector<std::unique_ptr<Harness::PaintedWindow>> windows;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const QPoint corner(
            screenSize.width() * static_cast<int>(i) / 10, static_cast<int>(i) * 70);
        windows.push_back(std::make_unique<Harness::PaintedWindow>(
            QRect(corner, screenSize * 2 / 5), colors.at(i)));
    }
    return windows;
}

} // namespace Lumenote::Bench
