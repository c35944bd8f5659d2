#include "Capture/CaptureTarget.h"

#include "Capture/CapturableWindow.h"

#include <array>
#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

TEST(CaptureTargetTest, targetsAreEqualOnlyWithinTheirKindAndToTheLastBit)
{
    const CaptureTarget region = RegionTarget{.rect = {7, 0, 10, 10}};
    EXPECT_EQ(region, CaptureTarget(RegionTarget{.rect = {7, 0, 10, 10}}));
    EXPECT_NE(region, CaptureTarget(RegionTarget{.rect = {7, 0, 10, std::nextafter(10.0, 11.0)}}));
    EXPECT_EQ(CaptureTarget(WindowTarget{.id = 7}), CaptureTarget(WindowTarget{.id = 7}));
    EXPECT_NE(CaptureTarget(WindowTarget{.id = 7}), CaptureTarget(WindowTarget{.id = 8}));
    EXPECT_NE(CaptureTarget(RegionTarget{}), CaptureTarget(WindowTarget{}));
}

TEST(CaptureTargetTest, aWindowIsLabelledByApplicationAndTitle)
{
    struct Row {
        const char* name;
        QString title;
        QString application;
        QString label;
    };
    const std::array rows{
        Row{"both", QStringLiteral("Zürich — 東京"), QStringLiteral("Maps"),
            QStringLiteral("Maps — Zürich — 東京")},
        Row{"noTitle", QString(), QStringLiteral("Maps"), QStringLiteral("Maps")},
        Row{"noApplication", QStringLiteral("Zürich"), QString(), QStringLiteral(" — Zürich")},
    };
    for (const auto& row : rows) {
        const CapturableWindow window{
            .id = 1, .frame = {}, .title = row.title, .application = row.application};
        EXPECT_EQ(window.label(), row.label) << row.name;
    }
}

} // namespace
