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

/// The pieces of @p picture for which our recogniser finds no line at their place, as the program
/// `reading-boxes` beside this one prints them; nothing where that isn't built.
std::optional<QList<Piece>> missedBoxes(const Picture& picture, const Options& options);

} // namespace Lumenote::Bench::Readers
