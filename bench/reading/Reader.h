#pragma once

#include "CommandRun.h"
#include "Options.h"

namespace Lumenote::Bench::Readers {

/// Our own reader first, then those that it is compared with.
QStringList allNames();

/// Whether data for every language of @p picture is installed.
bool canRead(const Picture& picture);

/// Runs the reader @p name on @p picture as a whole command. A doubled copy that the reader wants
/// is made before the clock starts.
CommandRun read(const QString& name, const Picture& picture, const Options& options);

} // namespace Lumenote::Bench::Readers
