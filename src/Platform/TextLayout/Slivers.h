#pragma once

#include "Platform/TextLayout/Components.h"

#include <QImage>

namespace Platform {

/// Takes out of @p components, and of @p ink, what is no mark but the rim of a small surface: the
/// sides of a disc or of a pill with text on it. There the ink ends where the colour goes on.
void dropSlivers(const QImage& image, Components& components, InkImage& ink);

} // namespace Platform
