// Walks over maps through the main window's real signals, of which items are positions; and the
// dark check of the same images, of which items are pixels.

#include "ProcessorWaits.h"
#include "SyntheticExperiment.h"
#include "analysis/Analyzer.h"
#include "analysis/diagnostics/DarkCheck.h"
#include "app/Body.h"
#include "calibration/ShiftMapFile.h"
#include "conduct/BatchConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/WalkConductor.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void command(Body& body, const QString& text, int ticket = 0)
{
    CmdLine line(text);
    line.ticket = ticket;
    body.batch().execCmdSlot(line, false);
}

/// A main window with both stacks and three references, made once.
Body& preparedBody()
{
    static QTemporaryDir folder;
    static std::unique_ptr<Body> body;
    if (body)
        return *body;
    body = std::make_unique<Body>();
    // The window must go before the application does.
    qAddPostRoutine([] { body.reset(); });
    for (const QString& stack : {QStringLiteral("i1"), QStringLiteral("i0")}) {
        command(*body,
                QStringLiteral("eng_calc_base_%1 %2").arg(stack).arg(synthetic::firstEnergy));
        command(*body,
                QStringLiteral("eng_calc_delta_%1 %2").arg(stack).arg(synthetic::energyStep));
        command(*body, QStringLiteral("eng_calc_even_in_eng_%1 1").arg(stack));
    }
    for (int i = 0; i < synthetic::energies; ++i) {
        body->stacks().loadedI1(synthetic::i1Image(i).release(), i);
        body->stacks().loadedI0(synthetic::i0Image(i).release(), i);
    }
    command(*body, QStringLiteral("Use_I0 1"));
    for (int r = 0; r < synthetic::references; ++r) {
        command(*body, QStringLiteral("analyzer_set_LCF_std %1 0 0 %2")
                           .arg(r)
                           .arg(synthetic::writeReference(folder.path(), r)));
    }
    return *body;
}

/// Shares of the stages in the workers' time and the sinks' [%], and of the positions that went
/// through the plain form, of the last walk.
void countShares(benchmark::State& state, const WalkShares& shares)
{
    const double worked =
        double(shares.formNs + shares.edgesNs + shares.kernelNs + shares.plainNs + shares.recordNs);
    const auto share = [worked](qint64 ns) { return 100.0 * double(ns) / worked; };
    state.counters["form_%"] = share(shares.formNs);
    state.counters["edges_%"] = share(shares.edgesNs);
    state.counters["kernel_%"] = share(shares.kernelNs);
    state.counters["plain_%"] = share(shares.plainNs);
    state.counters["record_%"] = share(shares.recordNs);
    state.counters["plain_positions_%"] =
        100.0 * double(shares.plainPositions) / double(shares.positions);
}

/// A map with another shift at every position, as a file.
QString writeShifts(const QString& folder)
{
    ShiftMapRecord record;
    record.recorded = recordDate();
    record.header.width = record.header.height = synthetic::side;
    record.header.areaX1 = record.header.areaY1 = synthetic::side;
    record.header.stdEdgeE = 8984.36;
    record.header.spacing = 3.13551;
    record.mapWidth = record.mapHeight = synthetic::side;
    record.imageWidth = record.imageHeight = synthetic::side;
    return saveShiftMap(folder + QStringLiteral("/shifts"), record, [](int x, int y) {
        return 0.004 * (x - synthetic::side / 2) + 0.0003 * y;
    });
}

enum class Under
{
    Plain,
    Shift,
    Victoreen,
    Mlcf,
    OldLcf,
    Display,
    DEdge,
    DEdgeCompared,
    LcfAndDEdge,
    Residual,
    Elements,
    SumUp
};

void check(Body& body, const QString& button, bool on)
{
    body.analyzer()->findChild<QAbstractButton*>(button)->setChecked(on);
}

/// The shift of the edge alone, against the standard or its mid point, or beside the fit.
void setDEdge(Body& body, Under under, bool on)
{
    static const QTemporaryDir folder;
    check(body, QStringLiteral("SelMLCFAnal"), !on || under == Under::LcfAndDEdge);
    check(body, QStringLiteral("SelDEdgeAnal"), on);
    const bool compared = on && under == Under::DEdgeCompared;
    if (compared)
        command(body, QStringLiteral("analyzer_dedge_file ") +
                          synthetic::writeReference(folder.path(), 0));
    command(body, QStringLiteral("analyzer_dedge_mode %1").arg(compared ? 1 : 0));
}

/// Three rows over the scan's edge: what they cost does not depend on what they find.
void setElements(Body& body, bool on)
{
    check(body, QStringLiteral("SelElemA"), on);
    if (on)
        command(body, QStringLiteral("analyzer_target_elements Co Ni Cu"));
}

/// All images; the picture that each sum saves goes with the folder.
void setSumUp(Body& body, bool on)
{
    static const QTemporaryDir folder;
    static const QString start = QDir::currentPath();
    QDir::setCurrent(on ? folder.path() : start);
    command(body, on ? QStringLiteral("analyzer_sum_up_add 0 %1").arg(synthetic::energies)
                     : QStringLiteral("analyzer_sum_up_clear"));
}

/// The command that walks under the condition.
QPair<QString, EX_CMD_ID> execOf(Under under)
{
    if (under == Under::Residual)
        return {QStringLiteral("analyzer_exec_ra"), ExCmdAnalyzerExecRa};
    if (under == Under::Elements)
        return {QStringLiteral("analyzer_exec_elems"), ExCmdAnalyzerExecElems};
    if (under == Under::SumUp)
        return {QStringLiteral("analyzer_sum_up"), ExCmdAnalyzerSumUp};
    return {QStringLiteral("analyzer_exec_LCF"), ExCmdAnalyzerExecLCF};
}

/// Brings the condition about, or takes it away.
void setUnder(Body& body, Under under, bool on)
{
    switch (under) {
    case Under::Plain:
        break;
    case Under::Shift: {
        const QTemporaryDir folder;
        command(body, on ? QStringLiteral("calib_load_map ") + writeShifts(folder.path())
                         : QStringLiteral("calib_clear_map"));
        break;
    }
    case Under::Victoreen:
        command(body, QStringLiteral("calib_target_background %1").arg(on ? 0 : 1));
        break;
    case Under::Mlcf:
        check(body, QStringLiteral("MLCF"), on);
        break;
    case Under::OldLcf:
        check(body, QStringLiteral("AsOldLCF"), on);
        break;
    case Under::Display:
        check(body, QStringLiteral("DispOnTime"), on);
        break;
    case Under::DEdge:
    case Under::DEdgeCompared:
    case Under::LcfAndDEdge:
        setDEdge(body, under, on);
        break;
    case Under::Residual:
        check(body, QStringLiteral("SelRAA"), on);
        break;
    case Under::Elements:
        setElements(body, on);
        break;
    case Under::SumUp:
        setSumUp(body, on);
        break;
    }
}

void walkUnder(benchmark::State& state, Under under)
{
    Body& body = preparedBody();
    command(body, QStringLiteral("set_band_w %1").arg(state.range(0)));
    command(body, QStringLiteral("set_band_h %1").arg(state.range(0)));
    setUnder(body, under, true);
    QEventLoop loop;
    const QPair<QString, EX_CMD_ID> exec = execOf(under);
    QObject::connect(&body.batch(), &BatchConductor::finishBatchExec, &loop,
                     [&loop, wanted = int(exec.second)](int id, int) {
                         if (id == wanted)
                             loop.quit();
                     });
    {
        const ProcessorWaits waits(state);
        for (auto _ : state) {
            command(body, exec.first, 1);
            loop.exec();
        }
    }
    countShares(state, body.walks().shares(WalkConductor::Analysis));
    AnalyzeCond walk;
    body.reader().askAnalyzeCond(walk);
    state.SetItemsProcessed(state.iterations() * walk.columns() * walk.rows());
    setUnder(body, under, false);
}

void darkCheck(benchmark::State& state)
{
    const TiffStack& images = preparedBody().data().i1.images;
    const std::atomic<bool> stop = false;
    const ProcessorWaits waits(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            checkDark(images, {}, QThread::idealThreadCount(), stop, [](double) {}));
    state.SetItemsProcessed(state.iterations() * images.size() * synthetic::side * synthetic::side);
}

/// 128x128 positions of one pixel against a standard, through the window.
void calibrateChain(benchmark::State& state)
{
    Body& body = preparedBody();
    const QTemporaryDir folder;
    for (const QString& line :
         {QStringLiteral("set_band_w 0"), QStringLiteral("set_band_h 0"),
          QStringLiteral("select_region 0 0 128 128"), QStringLiteral("calib_type 1"),
          QStringLiteral("calib_inner_range 20 1 0.1"),
          QStringLiteral("calib_load_std ") + synthetic::writeReference(folder.path(), 0)})
        command(body, line);
    QEventLoop loop;
    QObject::connect(&body.batch(), &BatchConductor::finishBatchExec, &loop, [&loop](int id, int) {
        if (id == ExCmdCalibWait)
            loop.quit();
    });
    const ProcessorWaits waits(state);
    for (auto _ : state) {
        command(body, QStringLiteral("calib_exec"));
        command(body, QStringLiteral("calib_wait"), 1);
        loop.exec();
    }
    AnalyzeCond walk;
    body.reader().askAnalyzeCond(walk);
    state.SetItemsProcessed(state.iterations() * walk.columns() * walk.rows());
    command(body, QStringLiteral("calib_clear_map"));
    command(body, QStringLiteral("select_region 0 0 %1 %1").arg(synthetic::side));
}

/// The window works beside the pool: the clock counts, and the time of all threads.
void asWalk(benchmark::internal::Benchmark* walk)
{
    walk->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}

} // namespace

BENCHMARK(calibrateChain)->Name("calibrate_chain_128x128")->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, plain, Under::Plain)->Name("walk_lcf")->Arg(0)->Arg(2)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, shift, Under::Shift)->Name("walk_lcf_shift")->Arg(0)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, victoreen, Under::Victoreen)
    ->Name("walk_lcf_victoreen")
    ->Arg(0)
    ->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, mlcf, Under::Mlcf)->Name("walk_mlcf")->Arg(0)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, old, Under::OldLcf)->Name("walk_lcf_old")->Arg(0)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, display, Under::Display)->Name("walk_lcf_disp")->Arg(0)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, dedge, Under::DEdge)->Name("walk_dedge")->Arg(0)->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, dedge_compared, Under::DEdgeCompared)
    ->Name("walk_dedge_compared")
    ->Arg(0)
    ->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, lcf_dedge, Under::LcfAndDEdge)
    ->Name("walk_lcf_and_dedge")
    ->Arg(0)
    ->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, residual, Under::Residual)
    ->Name("walk_residual")
    ->Arg(0)
    ->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, elements, Under::Elements)
    ->Name("walk_elements")
    ->Arg(0)
    ->Apply(asWalk);
BENCHMARK_CAPTURE(walkUnder, sum_up, Under::SumUp)
    ->Name("walk_sum_up")
    ->Arg(0)
    ->Arg(2)
    ->Apply(asWalk);
BENCHMARK(darkCheck)->Name("dark_check")->Apply(asWalk);
