#include "UI/Workbench/FloatingContent.h"

namespace Lumenote {

QMargins FloatingContent::shadowMargins()
{
    constexpr int margin = 36;
    return {margin, margin, margin, margin};
}

} // namespace Lumenote
