#pragma once

#include "Fakes/FakeClock.h"
#include "Fakes/FakeSystemLog.h"
#include "Fakes/FakeTextRecognizer.h"
#include "Harness/Waiting.h"
#include "OCR/OCRService.h"

#include <gtest/gtest.h>
#include <optional>

/// A service on a scripted recogniser, with a clock that stands still and a log that collects. At
/// the end it waits until no thread holds the recogniser any more.
class OCRServiceFixture : public testing::Test {
protected:
    void SetUp() override { startService({}); }

    void TearDown() override
    {
        service.reset();
        recognizer->releaseHangs();
        EXPECT_TRUE(Harness::waitFor([this] { return recognizer.use_count() == 1; }));
    }

    void startService(Lumenote::OCRService::Settings settings)
    {
        settings.now = [clock = clock] { return clock->now(); };
        service.emplace(recognizer, settings);
    }

    /// Queues an answer of one line for which the recogniser takes @p duration.
    void queueSlow(std::chrono::nanoseconds duration)
    {
        recognizer->queue([clock = clock, duration](const std::stop_token&) {
            clock->advance(duration);
            return Fakes::observations({u"slow"_qs});
        });
    }

    Lumenote::OCRResult recognized(const std::stop_token& stop = {})
    {
        const auto future = service->recognize(image, stop);
        if (!Harness::waitForFinished(future) || future.resultCount() != 1) {
            ADD_FAILURE() << "no answer, or more than one";
            return {};
        }
        return future.result();
    }

    bool waitForMessage(const QString& message) const
    {
        return Harness::waitFor([&] { return systemLog->messages().contains(message); });
    }

public:
    const QImage image{QSize(200, 100), QImage::Format_RGB32};
    const std::shared_ptr<Fakes::FakeClock> clock = std::make_shared<Fakes::FakeClock>();
    const Fakes::CollectedLog systemLog;
    const std::shared_ptr<Fakes::FakeTextRecognizer> recognizer =
        std::make_shared<Fakes::FakeTextRecognizer>();
    std::optional<Lumenote::OCRService> service;
};
