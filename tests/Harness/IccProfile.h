#pragma once

#include <QByteArray>

namespace Harness {

/// The profile of a display with one channel and gamma 2.2 that says to be of @p colorModel, such
/// as "GRAY", which it is, or "CMYK", which nothing here can use.
QByteArray iccProfile(const char* colorModel);

} // namespace Harness
