#pragma once

#include <QImage>
#include <QStringList>

/// Pictures of text for the recogniser to prove itself on, drawn the same each time.
namespace Lumenote {

enum class ProbeKind { code, prose };

/// The text of a probe, line by line.
QStringList probeLines(int lineCount, ProbeKind kind);

/// That text drawn black on white; a null image where it can't be made, as without an application
/// that has fonts. Any thread.
QImage probeImage(int lineCount, ProbeKind kind);

} // namespace Lumenote
