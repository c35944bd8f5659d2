#pragma once

#include "Fakes/FakePasteboard.h"
#include "Fakes/FakeSavePanel.h"
#include "Fakes/FakeTextRecognizer.h"
#include "Harness/Waiting.h"
#include "Model/WorkbenchModel.h"
#include "OCR/OCRService.h"

#include <gtest/gtest.h>

/// What workbench models need, all of it scripted. At the end it waits until no thread holds the
/// recogniser any more.
class WorkbenchFixture : public testing::Test {
protected:
    void TearDown() override
    {
        recognizer->releaseHangs();
        EXPECT_TRUE(Harness::waitFor([this] { return recognizer.use_count() == 2; }));
    }

    static QImage picture(const QSize& size = {700, 400})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        return image;
    }

    std::shared_ptr<Lumenote::WorkbenchModel> makeModel(
        const std::optional<Lumenote::StoredText>& text = {}, const QImage& image = picture()) const
    {
        return Lumenote::WorkbenchModel::create(image, {}, text, services);
    }

    /// A model whose recognition has ended with these lines.
    std::shared_ptr<Lumenote::WorkbenchModel> makeReadModel(const QStringList& lines)
    {
        recognizer->queueLines(lines);
        auto model = makeModel();
        EXPECT_TRUE(waitUntilRead(*model));
        return model;
    }

    static bool waitUntilDisplayed(const Lumenote::WorkbenchModel& model)
    {
        return Harness::waitFor([&model] { return !model.backdropImage().isNull(); });
    }

    static bool waitUntilRead(const Lumenote::WorkbenchModel& model)
    {
        return Harness::waitFor([&model] { return !model.isRecognizing(); });
    }

    static Lumenote::StoredText storedText(const QStringList& lines)
    {
        Lumenote::StoredText text;
        for (const auto& line : lines)
            text.lines.append({.text = line, .x = 1, .y = 2, .width = 30, .height = 4});
        return text;
    }

public:
    const std::shared_ptr<Fakes::FakeTextRecognizer> recognizer =
        std::make_shared<Fakes::FakeTextRecognizer>();
    Lumenote::OCRService ocr{recognizer};
    Fakes::FakePasteboard pasteboard;
    Fakes::FakeSavePanel savePanel;
    QDateTime now{QDate(2026, 1, 16), QTime(17, 30, 5, 123), Qt::UTC};
    Lumenote::WorkbenchModel::Services services{
        .ocr = &ocr, .pasteboard = &pasteboard, .savePanel = &savePanel, .now = [this] {
            return now;
        }};
};
