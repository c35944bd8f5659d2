#pragma once

#include <QByteArray>

namespace Platform {

/// Puts something harmless in the place of a standard stream that is closed, lest the next file
/// opened take its place: reading finds an end, and writing to what was standard output still
/// fails. A reader that goes away becomes an error of the write, not a signal. Call it first.
void guardStandardStreams();

/// Drops what foreign libraries print on the C library's standard error, as libpng and libtiff do
/// of bad pictures. Writes to the descriptor itself still get out.
void silenceLibraries();

/// Writes all of @p bytes; false when some did not get out.
bool writeAll(int descriptor, const QByteArray& bytes);

} // namespace Platform
