#pragma once

#include "UI/Shared/Shadow.h"
#include "UI/Shared/Theme.h"

namespace Lumenote {

/// Of whatever floats over the desktop as a whole.
inline Shadow cardShadow()
{
    return {.color = Theme::black(0.5), .radius = 24, .offset = {0, 8}};
}

} // namespace Lumenote
