#pragma once

#include <QString>

namespace Platform {

/// @p text as the people of this desktop are to read it: modifier signs and keys by the names that
/// are printed on the keyboard ("⇧⌘6" is "Ctrl+Shift+6", "⌥-drag" is "Alt-drag"), and instead of
/// what this system doesn't have what it has. To be called where a text is shown, not where it is
/// made.
QString inDesktopWords(const QString& text);

} // namespace Platform
