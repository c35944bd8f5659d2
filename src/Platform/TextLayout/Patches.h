#pragma once

#include "Platform/TextLayout/TextLines.h"

#include <QImage>

namespace Platform {

/// Finds the components that are small surfaces themselves (a badge, the round end of a button, a
/// key cap) rather than letters of @p lines, and replaces their ink in @p ink by that of what
/// stands on them. @p image is the picture that the ink is of. Answers whether there was any, so
/// that the components have to be found anew.
bool flattenPatches(const QImage& image, const Components& components,
    const std::vector<TextLine>& lines, InkImage& ink);

} // namespace Platform
