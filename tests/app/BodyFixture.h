#pragma once

#include "analysis/Analyzer.h"
#include "app/Body.h"
#include "batch/BatchCtrl.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/BatchConductor.h"
#include "conduct/CalibConductor.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "image/Measurement.h"
#include "maps/MapChoice.h"
#include "support/SmallExperiment.h"

#include <QSignalSpy>
#include <QtTest>

/// The font of a common desktop, which the offscreen platform does not have; `scale` times as large.
inline void useScreenFont(double scale = 1.0)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(9.0 * scale);
    QApplication::setFont(font);
}

/// A main window driven as a batch does: commands by text, each waited for by its ticket.
class DrivenBody : public Body
{
public:
    /// Runs one command and waits for its report; false when none comes in time.
    bool run(const QString& text)
    {
        CmdLine line(text);
        const int ticket = line.ticket = ++ticket_;
        execCmdSlot(line, false);
        return QTest::qWaitFor(
            [=] { return !ends_.isEmpty() && ends_.last()[1].toInt() == ticket; }, 60000);
    }

    bool runAll(const QStringList& lines)
    {
        return std::all_of(lines.begin(), lines.end(), [this](const QString& l) { return run(l); });
    }

    // What a test asks for most, without the name of who answers.
    const TiffStack& i1Stack() const { return data().i1.images; }
    const TiffStack& i0Stack() const { return data().i0.images; }
    Spectrum rawXafsAt(int x, int y, int halfX, int halfY) const
    {
        return reader().rawXafsAt(x, y, halfX, halfY);
    }
    BlockConditions blockConditions(int halfX, int halfY) const
    {
        return reader().blockConditions(halfX, halfY);
    }
    double energyShiftAt(int x, int y) const { return reader().energyShiftAt(x, y); }
    SuggestElm suggestElm() const { return reader().suggestElm(); }
    Spectrum hCrossAt(int y, int hw, int vw, bool useI1)
    {
        return cursor().hCrossAt(y, hw, vw, useI1);
    }
    Spectrum vCrossAt(int x, int hw, int vw, bool useI1)
    {
        return cursor().vCrossAt(x, hw, vw, useI1);
    }
    Analyzed2DRes* map(MapKind kind, int row = 0) { return maps().find({kind, row}); }
    Analyzed2DRes* selectedMap()
    {
        const auto key = view().chosenResult();
        return key ? maps().find(*key) : nullptr;
    }
    void execCmdSlot(const CmdLine& cmd, bool inRem) { batch().execCmdSlot(cmd, inRem); }
    void readI1Files(const QStringList& files, bool fresh) { stacks().readI1Files(files, fresh); }
    void clearI1Files() { stacks().clearI1Files(); }
    void loadedI1(TiffData* image, int fNo) { stacks().loadedI1(image, fNo); }
    void selectedDark(const QString& fname) { dark().selectedDark(fname); }
    void clearDark() { dark().clearDark(); }
    void selectedBG(const QString& fname) { dark().selectedBG(fname); }
    void newTotalI0ofI1File(const QString& fname) { dark().newTotalI0ofI1File(fname); }
    void cBarUpdating() { view().cBarUpdating(); }
    void cBarUpdated() { view().cBarUpdated(); }
    void showXafsSpectrum(double x, double y) { cursor().showXafsSpectrum(x, y); }
    void execCalibration() { calibration().execCalibration(); }
    void start2DAnalysis() { analysis().start2DAnalysis(); }
    void stop2DAnalysis() { analysis().stop2DAnalysis(); }
    void setMaxPositionsPerRequest(int count) { walks().setTileLanes(count); }

    /// Energies, stacks and references of the experiment.
    bool load(const SmallExperiment& e) { return runAll(e.loadingLines()); }

private:
    QSignalSpy ends_{&batch(), &BatchConductor::finishBatchExec};
    int ticket_ = 0;
};
