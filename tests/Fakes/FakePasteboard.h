#pragma once

#include "Platform/Pasteboard.h"

namespace Fakes {

/// Holds what was put there last, and refuses on order.
class FakePasteboard final : public Platform::Pasteboard {
public:
    bool setPng(const QByteArray& newPng) override
    {
        png = refuses ? QByteArray() : newPng;
        text.clear();
        return !refuses;
    }

    bool setText(const QString& newText) override
    {
        text = refuses ? QString() : newText;
        png.clear();
        return !refuses;
    }

    bool refuses = false;
    QByteArray png;
    QString text;
};

} // namespace Fakes
