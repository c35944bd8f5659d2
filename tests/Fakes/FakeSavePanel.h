#pragma once

#include "Platform/SavePanel.h"

#include <utility>

namespace Fakes {

/// Records what was asked, and answers when the test says so.
class FakeSavePanel final : public Platform::SavePanel {
public:
    void ask(const QString& name, Answer newAnswer) override
    {
        suggestedName = name;
        answer = std::move(newAnswer);
    }

    QString suggestedName;
    Answer answer;
};

} // namespace Fakes
