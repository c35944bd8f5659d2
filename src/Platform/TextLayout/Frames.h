#pragma once

#include "Platform/TextLayout/Components.h"

#include <vector>

namespace Platform {

/// Which of @p components are no letters but the frame of a key cap, a check box or a button, or
/// one of its sides. @p letters are the numbers of those that may be a frame in one piece, @p marks
/// of those that may be a side or stand inside.
std::vector<bool> findFrames(
    const Components& components, const std::vector<int>& letters, const std::vector<int>& marks);

} // namespace Platform
