// What the user waits for while looking at a stack of 200 images of 1024x1024 pixels (and as many
// of I0): a mouse move, another image, another colour bar. Each is timed until its windows are
// painted.

#include "ProcessorWaits.h"
#include "SyntheticExperiment.h"
#include "app/Body.h"
#include "app/StepWatch.h"
#include "app/Workbench.h"
#include "conduct/BatchConductor.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"

#include <QApplication>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr int side = 1024;
constexpr int images = 200;

/// A picture of a sample whose edge lies amid the stack: smooth, with counts of a real exposure.
std::unique_ptr<TiffData> viewerImage(int number, bool sample)
{
    auto image = std::make_unique<TiffData>();
    image->allocate(side, side, TiffData::TiffWords);
    image->energy = synthetic::firstEnergy + number * synthetic::energyStep;
    const double mu = sample ? 0.3 + synthetic::referenceMu(0, image->energy) : 0.0;
    for (int y = 0; y < side; ++y) {
        auto* row = image->row<quint16>(y);
        const double beam = 20000.0 * std::exp(-mu * (0.5 + double(y) / side));
        for (int x = 0; x < side; ++x)
            row[x] = quint16(beam + (x * 31 + y * 17 + number * 7) % 199);
        image->noteExtremes(y);
    }
    return image;
}

/// A main window with both stacks and its spectrum view on the screen, made for one benchmark and
/// freed with it: the stacks take more than a gigabyte.
class Viewer
{
public:
    Viewer()
    {
        for (const char* line :
             {"set_band_w 10", "set_band_h 10", "Use_I0 1", "eng_calc_base_i1 8880",
              "eng_calc_delta_i1 1.25", "eng_calc_base_i0 8880", "eng_calc_delta_i0 1.25",
              "eng_calc_even_in_eng_i1 1", "eng_calc_even_in_eng_i0 1"})
            body.batch().execCmdSlot(CmdLine(QLatin1String(line)), false);
        for (int i = 0; i < images; ++i) {
            body.stacks().loadedI1(viewerImage(i, true).release(), i);
            body.stacks().loadedI0(viewerImage(i, false).release(), i);
        }
        body.attend();
        body.resize(1920, 1080);
        body.show();
        QCoreApplication::processEvents();
    }

    Body body;
    ImgDispA& area = *body.findChild<ImgDispA*>(QStringLiteral("dispA"));
};

void mouseMove(benchmark::State& state)
{
    Viewer viewer;
    int step = 0;
    const ProcessorWaits waits(state);
    for (auto _ : state) {
        // Far from the last position each time: nothing of it is in the cache.
        step = (step + 397) % (viewer.area.width() * viewer.area.height());
        const QPoint at(step % viewer.area.width(), step / viewer.area.width());
        QMouseEvent move(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&viewer.area, &move);
        QCoreApplication::processEvents();
    }
}

void showImage(benchmark::State& state)
{
    Viewer viewer;
    int number = 0;
    const ProcessorWaits waits(state);
    for (auto _ : state) {
        number = (number + 67) % images;
        viewer.body.view().seekImage(number);
        QCoreApplication::processEvents();
    }
}

void rebuildAll(benchmark::State& state)
{
    Viewer viewer;
    auto& bar = *viewer.body.findChild<ColorBar*>(QStringLiteral("CBar"));
    const ProcessorWaits waits(state);
    for (auto _ : state) {
        bar.lowHandle = 0.25 - bar.lowHandle;
        viewer.body.view().cBarUpdated();
        QCoreApplication::processEvents();
    }
}

/// What the bar of the steps and the strips cost beside a move of the mouse.
void tellSteps(benchmark::State& state)
{
    Viewer viewer;
    StepFacts facts = viewer.body.steps().facts();
    int energy = 0;
    for (auto _ : state) {
        facts.edge = 8980.0 + ++energy % 10;
        viewer.body.workbench().setStates(stepStates(facts));
    }
}

/// From nothing to a window that has been painted.
void firstWindow(benchmark::State& state)
{
    for (auto _ : state) {
        Body body;
        body.attend();
        body.show();
        QCoreApplication::processEvents();
        body.grab();
    }
}

} // namespace

BENCHMARK(tellSteps)->Name("tell_steps")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(firstWindow)->Name("first_window")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(mouseMove)->Name("mouse_move")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(showImage)->Name("show_image")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(rebuildAll)->Name("rebuild_all")->Unit(benchmark::kMillisecond)->UseRealTime();
