#pragma once

#include <QByteArray>
#include <QString>

namespace Platform {

/// The general pasteboard. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Puts the bytes of a PNG file in the place of all that was there; false when the system
    /// refuses, and then the pasteboard may be empty.
    virtual bool setPng(const QByteArray& png) = 0;

    /// The same with plain text.
    virtual bool setText(const QString& text) = 0;
};

} // namespace Platform
