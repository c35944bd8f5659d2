#pragma once

#include "Options.h"

namespace Lumenote::Bench {

/// Prints each piece that the first of the wanted readers misreads: the picture, what is expected
/// and what was read in its stead; then the score of each picture and of all.
void printErrors(const QList<Picture>& pictures, const Options& options);

} // namespace Lumenote::Bench
