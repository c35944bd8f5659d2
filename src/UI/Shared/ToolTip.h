#pragma once

class QString;
class QWidget;

namespace Lumenote {

/// Gives @p control the tool tip @p text, shown by its window's ToolTipController, and the same as
/// its accessible name; both in the words of this desktop. May be called again with another text.
void setTip(QWidget& control, const QString& text);

} // namespace Lumenote
