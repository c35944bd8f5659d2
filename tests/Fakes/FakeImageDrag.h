#pragma once

#include "Platform/ImageDrag.h"

#include <QList>

#include <utility>

namespace Fakes {

/// Holds what was dragged. Every drag ends at once, with the answer that the test sets.
class FakeImageDrag final : public Platform::ImageDrag {
public:
    void begin(const Payload& payload, OnEnd onEnd) override
    {
        dragged.append(payload);
        onEnd(answer);
    }

    QList<Payload> dragged;
    Platform::Result<void> answer;
};

} // namespace Fakes
