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
/// window; and a book of commands, whose ends are counted.
class Desk
{
public:
    Measurement data;
    ShiftMap shiftMap;
    MapBook maps;
    DataBox dataBox;
    SpectrumBox spectrumBox;
    ImageBox imageBox;
    SaveBox saveBox;
    Analyzer analyzer;
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
    CommandBook book;
    int ends = 0; ///< reports of the commands run so far
    QStringList failures;

    Desk()
    {
        bindRowCommands(book, *dataBox.i1Row(), *dataBox.i0Row());
        spectrumBox.bindCommands(book);
        calibCtrl.bindCommands(book);
        analyzer.bindCommands(book);
        stacks.bindCommands(book);
        view.bindCommands(book);
    }

    void run(const QString& line)
    {
        const CmdLine cmd(line);
        book.run(exCmdId(cmd), cmd, CommandEnd([this](const QStringList& why) {
                     ++ends;
                     failures += why;
                 }))
            .done();
    }

    /// Runs lines, each to its end.
    bool runAll(const QStringList& lines)
    {
        return std::all_of(lines.begin(), lines.end(), [this](const QString& line) {
            const int before = ends;
            run(line);
            return QTest::qWaitFor([&] { return ends > before; }, 60000);
        });
    }

    /// Energies, stacks and references of the experiment, one pixel a block.
    bool load(const SmallExperiment& e)
    {
        QStringList lines{"Use_I0 1", "set_band_w 0", "set_band_h 0"};
        for (const QString& stack : {QStringLiteral("i1"), QStringLiteral("i0")})
            lines << "eng_calc_base_" + stack + " 8920"
                  << "eng_calc_delta_" + stack + " 2"
                  << "eng_calc_even_in_eng_" + stack + " 1"
                  << QStringLiteral("load_%1_files_of_pattern new %2/ %1_*.img")
                         .arg(stack, e.dir.path());
        for (int r = 0; r < e.references.size(); ++r)
            lines << QStringLiteral("analyzer_set_LCF_std %1 0 0 %2").arg(r).arg(e.references[r]);
        const bool loaded = runAll(lines);
        ends = 0;
        return loaded && failures.isEmpty();
    }
};
