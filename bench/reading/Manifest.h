#pragma once

#include "Picture.h"

namespace Lumenote::Bench::Manifest {

/// Writes what is known of @p picture to "NAME.json" in @p folder.
void write(const QString& folder, const Picture& picture);

/// Every picture of @p folder, by name. Fails loudly on a file that it cannot understand.
QList<Picture> readAll(const QString& folder);

} // namespace Lumenote::Bench::Manifest
