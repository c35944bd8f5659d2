#pragma once

#include "Platform/Pasteboard.h"

namespace Platform {

/// The desktop's clipboard. What was put there goes when the program ends, unless a clipboard
/// manager keeps it.
class ClipboardPasteboard final : public Pasteboard {
public:
    bool setPng(const QByteArray& png) override;
    bool setText(const QString& text) override;
};

} // namespace Platform
