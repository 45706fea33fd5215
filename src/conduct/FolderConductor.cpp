#include "conduct/FolderConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "image/Measurement.h"
#include "selection/DataBox.h"
#include "selection/EnergyOfFile.h"
#include "selection/FolderQuestion.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

FolderConductor::FolderConductor(const Parts& parts, StackConductor& stacks, DarkConductor& dark,
                                 ViewConductor& view, CursorConductor& cursor, QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , stacks_(stacks)
    , dark_(dark)
    , view_(view)
    , cursor_(cursor)
    , dialog_(new LateDialog([&question = parts.question] { return new FolderDialog(&question); },
                             &parts.question))
{
    connect(dialog_, &LateDialog::fileSelected, this, &FolderConductor::open);
    connect(&parts_.question, &FolderQuestion::accepted, this, &FolderConductor::carryOut);
    connect(&parts_.question, &FolderQuestion::cancelled, this, &FolderConductor::closeQuestion);
    for (const SelectDataFiles* row : {parts_.dataBox.i1Row(), parts_.dataBox.i0Row()})
        connect(row, &SelectDataFiles::folderDropped, this, &FolderConductor::open);
    connect(&stacks_, &StackConductor::loaded, this, &FolderConductor::stackLoaded);
    // Somebody has gone on to other images: what is on show is theirs to choose.
    connect(&stacks_, &StackConductor::cleared, this, [this] { waits_ = false; });
}

void FolderConductor::chooseFolder()
{
    dialog_->show();
}

void FolderConductor::open(const QString& folder)
{
    const FolderContents contents = readFolder(folder);
    if (!contents.fault.isEmpty()) {
        Q_EMIT notice(contents.fault);
        return;
    }
    if (contents.series.isEmpty()) {
        const QString reason = tr("No images in %1 and its folders").arg(contents.name());
        Q_EMIT notice((QStringList(reason) + contents.remarks).join(QLatin1String(". ")));
        return;
    }
    const bool wasOpen = parts_.question.isVisible();
    parts_.question.ask(contents);
    if (!wasOpen)
        Q_EMIT questionOpened();
}

void FolderConductor::closeQuestion()
{
    parts_.question.hide();
    Q_EMIT questionClosed();
}

void FolderConductor::carryOut(const FolderChoice& choice)
{
    closeQuestion();
    fillRow(*parts_.dataBox.i1Row(), choice, choice.i1.size());
    fillRow(*parts_.dataBox.i0Row(), choice, choice.i0.size());
    loadStacks(choice);
    parts_.spectrumBox.setUseI0(!choice.i0.isEmpty());
    if (!choice.dark.isEmpty())
        dark_.selectedDark(choice.dark);
    loadReferences(choice);
    Q_EMIT folderOpened(parts_.question.contents().path);
}

void FolderConductor::fillRow(SelectDataFiles& row, const FolderChoice& choice, int files)
{
    // What was promised is all files of the series.
    row.setSkip(1);
    row.setCutF(0);
    row.setCutL(0);
    setEnergies(row, choice, files);
    // A list that was chosen for another reason stays where the folder has none.
    if (!choice.badPixels.isEmpty() || !parts_.question.contents().badPixels.isEmpty())
        row.useErrPoints(choice.badPixels);
}

void FolderConductor::setEnergies(SelectDataFiles& row, const FolderChoice& choice, int files)
{
    if (choice.byNames) {
        row.setEngByName(true);
        row.setEngByNameRegExp(choice.pattern); // which guesses a factor
        row.setEngByNameFactor(choice.factor);
        return;
    }
    row.setEngByCalc(true);
    row.setDispUnit(EnergyRule::eV);
    row.setEvenInEng(true);
    row.setEngCalcStart(choice.start);
    row.setEngCalcDelta(choice.step);
    row.setEngCalcNum(qMax(1, files - 1)); // steps from the first image to the last
}

void FolderConductor::loadStacks(const FolderChoice& choice)
{
    stacks_.readI1Files(choice.i1, true);
    if (choice.i0.isEmpty())
        stacks_.clearI0Files(); // of another measurement
    else
        stacks_.readI0Files(choice.i0, true);
    waits_ = true;
}

/// Straight lines, as in a row that nobody has touched.
void FolderConductor::loadReferences(const FolderChoice& choice)
{
    for (int i = 0; i < choice.references.size(); ++i)
        parts_.analyzer.lcf().setLCFStd(i, true, 0.0, choice.references.at(i), QStringLiteral("0"));
}

void FolderConductor::stackLoaded()
{
    if (!waits_ || stacks_.isLoading(parts_.data.i1) || stacks_.isLoading(parts_.data.i0))
        return;
    waits_ = false;
    if (parts_.data.i1.images.isEmpty()) {
        Q_EMIT notice(tr("No image of I1 could be read"));
        return;
    }
    showMiddle();
    Q_EMIT loaded();
}

void FolderConductor::showMiddle()
{
    parts_.imageBox.setChoice(ShowDataId);
    view_.seekImage(parts_.data.i1.images.size() / 2);
    const QSize size = parts_.data.size;
    cursor_.moveCursor(size.width() / 2, size.height() / 2);
}
