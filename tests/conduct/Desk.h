#pragma once

#include "analysis/Analyzer.h"
#include "batch/BatchCtrl.h"
#include "batch/CommandBook.h"
#include "batch/CommandTable.h"
#include "calibration/CalibCtrl.h"
#include "calibration/ShiftMap.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/ImageBox.h"
#include "display/XafsView.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "output/SaveBox.h"
#include "selection/DataBox.h"
#include "selection/RowCommands.h"
#include "selection/SpectrumBox.h"
#include "support/SmallExperiment.h"

#include <QtTest>

/// The data, the boxes and panels, and the conductors that all others stand on, without a main
/// window; and a book of their commands.
class Desk
{
public:
    QStringList failures; ///< of the commands run so far, also of those that are let go at the end
    Measurement data;
    ShiftMap shiftMap;
    MapBook maps;
    DataBox dataBox;
    SpectrumBox spectrumBox;
    ImageBox imageBox;
    SaveBox saveBox;
    Analyzer analyzer{maps};
    CalibCtrl calibCtrl;
    BatchCtrl batchCtrl;
    XafsView xafsView;
    XafsView bgView;
    SourceReader reader{{data, shiftMap, dataBox, spectrumBox, imageBox, calibCtrl}};
    StackConductor stacks{data, dataBox, batchCtrl};
    DarkConductor dark{data, reader, dataBox, imageBox, bgView, stacks};
    ViewConductor view{data, maps, reader, imageBox, saveBox, analyzer, stacks};
    CursorConductor cursor{
        {data, reader, spectrumBox, imageBox, analyzer, calibCtrl, xafsView}, stacks, dark, view};
    WalkConductor walks{reader, stacks, 2};
    CommandBook book;

    Desk()
    {
        bindRowCommands(book, *dataBox.i1Row(), *dataBox.i0Row());
        spectrumBox.bindCommands(book);
        calibCtrl.bindCommands(book);
        analyzer.bindCommands(book);
        stacks.bindCommands(book);
        view.bindCommands(book);
    }

    /// Starts a command; `over`, when given, tells from then on whether it has reported its end.
    void run(const QString& line, const std::shared_ptr<bool>& over = nullptr)
    {
        const CmdLine cmd(line);
        book.run(exCmdId(cmd), cmd, CommandEnd([this, over](const QStringList& why) {
                     failures += why;
                     if (over)
                         *over = true;
                 }))
            .done();
    }

    /// Runs lines, each to its end.
    bool runAll(const QStringList& lines)
    {
        return std::all_of(lines.begin(), lines.end(), [this](const QString& line) {
            const auto over = std::make_shared<bool>(false);
            run(line, over);
            return QTest::qWaitFor([&] { return *over; }, 60000);
        });
    }

    /// Energies, stacks and references of the experiment, one pixel a block.
    bool load(const SmallExperiment& e) { return runAll(e.loadingLines()) && failures.isEmpty(); }
};

/// Rows of what may happen to work that a command waits for, and the failures that it reports then.
/// `restart` is the command that starts the work; "image" means that one of I0 comes.
inline void addEndings(const SmallExperiment& e, const QString& restart)
{
    QTest::addColumn<QString>("meanwhile");
    QTest::addColumn<QString>("failure");
    QTest::newRow("to its end") << ""
                                << "";
    QTest::newRow("the button") << "button"
                                << "stopped";
    QTest::newRow("cleared") << "clear_I1_files"
                             << "stopped, the I1 images are gone";
    QTest::newRow("I0 cleared") << "clear_I0_files"
                                << "stopped, the I0 images are gone";
    QTest::newRow("loaded anew") << "load_I1_files new " + e.i1[0]
                                 << "stopped, the I1 images are gone";
    QTest::newRow("added") << "image"
                           << "stopped, I0 images are added";
    QTest::newRow("energies applied") << "eng_apply_i1"
                                      << "";
    QTest::newRow("started anew") << restart << "stopped";
    QTest::newRow("let go") << "end" << CommandEnd::letGo;
}
