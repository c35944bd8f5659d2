#pragma once

#include "Platform/ApplicationActivation.h"

#include <QList>

namespace Fakes {

/// Gives the focus to a window when it has been asked for it often enough, unless the test sets it
/// itself.
class FakeApplicationActivation final : public Platform::ApplicationActivation {
public:
    void noteFrontmost() override { ++notes; }

    void activate(QWindow& window) override
    {
        requests.append(&window);
        if (requests.size() > refusals)
            keyWindow = &window;
    }

    QFuture<bool> isKey(const QWindow& window) override
    {
        ++questions;
        return QtFuture::makeReadyFuture(keyWindow == &window);
    }

    void giveBack() override
    {
        ++givenBack;
        keyWindow = nullptr;
    }

    qsizetype refusals = 0; ///< Of the first requests.
    const QWindow* keyWindow = nullptr; ///< Null while another program has the focus.
    QList<const QWindow*> requests;
    int notes = 0;
    int questions = 0;
    int givenBack = 0;
};

} // namespace Fakes
