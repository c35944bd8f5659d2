// What it costs to export a marked-up capture, and to edit its marks.

#include "../reading/Scenes.h"
#include "Model/AnnotationEdits.h"
#include "Platform/PngEncoder.h"
#include "Rendering/LumenoteRenderer.h"

#include <QColorSpace>
#include <QGuiApplication>

#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>

using namespace Lumenote;

namespace {

constexpr double dotsPerInch = 72;

constexpr QSize screen(3840, 2160);

/// A screen full of text as it is captured.
QImage drawn(void (*draw)(Bench::Page& page))
{
    Bench::Random random(1);
    Bench::Texts texts({Bench::Language::english}, Bench::Split::tuning, random);
    const auto look = Bench::lookNumber(2, Bench::Split::tuning);
    Bench::Canvas canvas(1, look.rendering);
    Bench::Page page{canvas, look, texts, random};
    draw(page);
    auto capture = canvas.takeImage().convertToFormat(QImage::Format_RGB32);
    capture.setColorSpace(QColorSpace::SRgb);
    return capture;
}

const QImage& editor()
{
    static const auto capture = drawn(Bench::Scenes::denseEditor4k);
    return capture;
}

const QImage& document()
{
    static const auto capture = drawn(Bench::Scenes::denseDocument4k);
    return capture;
}

/// All tools in turn and all over the capture, from a word to half a window, mostly small.
QList<Annotation> annotations(int count)
{
    Bench::Random random(2);
    const auto length = [&](double shortest, double longest) {
        return shortest * std::pow(longest / shortest, random.unit());
    };
    QList<Annotation> result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QPointF start(random.below(screen.width()), random.below(screen.height()));
        const auto width = length(20, 800);
        const auto height = length(12, 300);
        result.append({.tool = AnnotationTools::allCases.at(static_cast<size_t>(i % 5)),
            .start = start,
            .end = start + QPointF(width, height)});
    }
    return result;
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

template <typename Work>
double processorSecondsOf(const Work& work)
{
    const auto start = processorSeconds();
    work();
    return processorSeconds() - start;
}

QImage rendered(const QImage& capture, const QList<Annotation>& marks)
{
    return LumenoteRenderer::render(capture, capture.size(), marks);
}

void encode(const QImage& image)
{
    benchmark::DoNotOptimize(Platform::encodePng(image, dotsPerInch));
}

void render4k(benchmark::State& state)
{
    const auto& capture = editor();
    const auto marks = annotations(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(rendered(capture, marks));
}

/// Both in turn, so that the ratio is of the same moments on a machine that others use too.
void exportAgainstBareEncode(benchmark::State& state, const QImage& (*picture)())
{
    const auto& capture = picture();
    const auto marks = annotations(50);
    double bare = 0;
    double exported = 0;
    for ([[maybe_unused]] auto _ : state) {
        bare += processorSecondsOf([&] { encode(capture); });
        exported += processorSecondsOf([&] { encode(rendered(capture, marks)); });
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["bareMs"] = bare * 1000 / rounds;
    state.counters["exportMs"] = exported * 1000 / rounds;
    state.counters["ratio"] = exported / bare;
}

AnnotationEdits editsOf(const QList<Annotation>& marks)
{
    AnnotationEdits edits;
    for (const auto& mark : marks)
        edits.add(mark);
    return edits;
}

/// With a view that holds what it was last shown, so that every step copies the list.
void dragStepAmong1000(benchmark::State& state)
{
    const auto marks = annotations(1000);
    auto edits = editsOf(marks);
    edits.beginGesture();
    QPointF offset;
    for ([[maybe_unused]] auto _ : state) {
        const auto shown = edits.annotations();
        offset += QPointF(1, 1);
        benchmark::DoNotOptimize(edits.update(marks.last().moved(offset)));
    }
}

void undoAndRedoAmong1000(benchmark::State& state)
{
    auto edits = editsOf(annotations(1000));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(edits.undo());
        benchmark::DoNotOptimize(edits.redo());
    }
}

void topmostHitAmong1000(benchmark::State& state)
{
    const auto marks = annotations(1000);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(topmostHit(marks, {-500, -500}, 9));
}

BENCHMARK(render4k)->Arg(0)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(exportAgainstBareEncode, editor, editor)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(40);
BENCHMARK_CAPTURE(exportAgainstBareEncode, document, document)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(40);
BENCHMARK(dragStepAmong1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(undoAndRedoAmong1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(topmostHitAmong1000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
