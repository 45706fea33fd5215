#include "app/StepStates.h"

#include "common/TimeLeft.h"
#include "selection/EnergyPreview.h"

#include <QCoreApplication>

namespace {

/// The translations of these texts.
struct Words
{
    Q_DECLARE_TR_FUNCTIONS(StepStates)
};

QString pixels(const QSize& size)
{
    return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

QString references(int count)
{
    return count == 1 ? Words::tr("1 reference") : Words::tr("%1 references").arg(count);
}

QString eV(double energy, int decimals)
{
    return QString::number(energy, 'f', decimals);
}

StepState running(const RunFacts& run, const QString& sentence)
{
    StepState state;
    state.mark = Mark::Running;
    state.share = run.share;
    state.line = run.secondsLeft ? TimeLeft::text(*run.secondsLeft)
                                 : Words::tr("running, %1 %").arg(int(100.0 * run.share));
    state.sentence = sentence;
    return state;
}

/// A field that counts as 0 without anybody meaning it goes before all that merely waits.
std::optional<StepState> unreadableState(const StepFacts& facts, Step step)
{
    const QStringList& fields = facts.unreadable[std::size_t(step)];
    if (fields.isEmpty())
        return {};
    return StepState{
        Mark::LookHere, Words::tr("%1 is no number").arg(fields.first()),
        Words::tr("No number, and counts as 0: %1").arg(fields.join(QLatin1String(", "))),
        Mend::None};
}

QString countsText(const StepFacts& f)
{
    const QString i1 = QString::number(f.i1.images);
    return f.i0.images == 0 ? i1 : QStringLiteral("%1 + %2").arg(f.i1.images).arg(f.i0.images);
}

/// What is wrong with the images, the worst first.
std::optional<StepState> dataFault(const StepFacts& f)
{
    const bool pair = f.i1.images > 0 && f.i0.images > 0;
    if (pair && f.i1.size != f.i0.size)
        return StepState{Mark::Blocked, Words::tr("sizes differ"),
                         Words::tr("I1 has %1 pixels, I0 has %2: they do not belong together")
                             .arg(pixels(f.i1.size), pixels(f.i0.size))};
    for (const auto& [name, stack] : {std::pair{"I1", &f.i1}, std::pair{"I0", &f.i0}}) {
        if (stack->images > 0 && !stack->energyDoubt.isEmpty())
            return StepState{Mark::LookHere, Words::tr("energies not set"),
                             QStringLiteral("%1: %2").arg(QLatin1String(name), stack->energyDoubt),
                             Mend::SetEnergies};
    }
    for (const auto& [name, stack] : {std::pair{"I1", &f.i1}, std::pair{"I0", &f.i0}}) {
        if (stack->failedFiles > 0)
            return StepState{Mark::LookHere, Words::tr("files failed: %1").arg(stack->failedFiles),
                             Words::tr("%1: %2 files could not be read, see Messages")
                                 .arg(QLatin1String(name))
                                 .arg(stack->failedFiles)};
    }
    if (pair && !f.usesI0 && !f.i0Replaced)
        return StepState{Mark::LookHere, Words::tr("I0 not used"),
                         Words::tr("I0 is loaded and not used"), Mend::UseI0};
    return {};
}

/// What looks odd, and may be meant.
std::optional<StepState> dataDoubt(const StepFacts& f)
{
    const bool pair = f.i1.images > 0 && f.i0.images > 0;
    if (pair && f.i1.images != f.i0.images)
        return StepState{Mark::LookHere, Words::tr("%1 images").arg(countsText(f)),
                         Words::tr("I1 has %1 images, I0 has %2: I0 is interpolated in energy")
                             .arg(f.i1.images)
                             .arg(f.i0.images)};
    for (const auto& [name, stack] : {std::pair{"I1", &f.i1}, std::pair{"I0", &f.i0}}) {
        if (stack->images > 0 && !stack->evenExposure)
            return StepState{
                Mark::LookHere, Words::tr("exposures differ"),
                Words::tr("%1: the exposures of its images differ").arg(QLatin1String(name))};
    }
    return {};
}

StepState dataState(const StepFacts& f)
{
    if (f.load)
        return running(*f.load, Words::tr("Loading images"));
    if (f.i1.images == 0 && f.i0.images == 0)
        return {Mark::ToDo, Words::tr("no images"),
                Words::tr("Drop a folder or files anywhere, or open them here")};
    if (const auto fault = dataFault(f))
        return *fault;
    if (const auto field = unreadableState(f, Step::Data))
        return *field;
    if (f.i1.images == 0)
        return {Mark::ToDo, Words::tr("%1 I0 images, no I1").arg(f.i0.images),
                Words::tr("Load the images through the sample, I1")};
    if (const auto doubt = dataDoubt(f))
        return *doubt;
    return {Mark::Done,
            Words::tr("%1, %2 - %3 eV")
                .arg(countsText(f), shownEnergy(f.i1.first), shownEnergy(f.i1.last)),
            f.i0.images > 0 ? Words::tr("Images are loaded, and I0 is used")
                            : Words::tr("Images are loaded, without I0")};
}

StepState spectrumState(const StepFacts& f, bool dataDone)
{
    if (const auto field = unreadableState(f, Step::Spectrum))
        return *field;
    const QString block = Words::tr("block %1").arg(pixels(f.block));
    if (!f.hasSpectrum)
        return {Mark::ToDo, block, Words::tr("Block, ranges and element of all spectra")};
    if (!f.edge)
        return {Mark::Optional, Words::tr("%1, no edge here").arg(block),
                Words::tr("No edge at the cursor")};
    return {dataDone ? Mark::Done : Mark::ToDo,
            Words::tr("%1, edge %2 eV").arg(block, eV(*f.edge, 1)),
            Words::tr("The spectrum at the cursor has an edge at %1 eV").arg(eV(*f.edge, 2))};
}

StepState calibrationState(const StepFacts& f, bool dataDone)
{
    if (f.calibration)
        return running(*f.calibration, Words::tr("Comparing each block with the standard"));
    if (const auto field = unreadableState(f, Step::Calibration))
        return *field;
    if (f.shiftMap == MapFacts::InPart)
        return {Mark::LookHere, Words::tr("stopped: map in part"),
                Words::tr("The calibration was stopped: positions not reached have no shift")};
    if (f.shiftMap == MapFacts::None)
        return {Mark::Optional,
                f.hasStandard ? Words::tr("optional: standard loaded")
                              : Words::tr("optional: no map"),
                f.hasStandard
                    ? Words::tr("Compare each block with the standard, or load a map")
                    : Words::tr("Needed where the energy shifts across the detector: select a "
                                "standard, or load a map")};
    if (f.standardChanged)
        return {Mark::LookHere, Words::tr("standard changed since"),
                Words::tr("The map in force was made with another standard")};
    const QString line =
        Words::tr("median %1, spread %2 eV").arg(eV(f.shiftMedian, 2), eV(f.shiftSpread, 2));
    return {dataDone ? Mark::Done : Mark::Optional, line,
            Words::tr("The shift map is in force for all spectra")};
}

StepState analysisState(const StepFacts& f, bool dataDone)
{
    if (f.analysis)
        return running(*f.analysis, f.fits ? Words::tr("Fitting the references to each block")
                                           : Words::tr("Analyzing each block"));
    if (const auto field = unreadableState(f, Step::Analysis))
        return *field;
    if (f.maps == MapFacts::InPart)
        return {Mark::LookHere, Words::tr("stopped: map in part"),
                Words::tr("The analysis was stopped: positions not reached are 0"), Mend::Analyze};
    if (f.maps == MapFacts::Whole && f.mapsOutOfDate)
        return {Mark::LookHere, Words::tr("map is out of date"),
                Words::tr("The maps were made under other conditions than those of now"),
                Mend::Analyze};
    if (f.maps == MapFacts::Whole)
        return {dataDone ? Mark::Done : Mark::ToDo,
                f.mapReferences > 0 ? Words::tr("maps of %1").arg(references(f.mapReferences))
                                    : Words::tr("maps ready"),
                Words::tr("Maps are ready: choose one above the image")};
    if (f.fits && f.references == 0)
        return {Mark::ToDo, Words::tr("no references"),
                Words::tr("Load the spectra that the blocks are fitted with"),
                Mend::LoadReferences};
    if (!f.notReady.isEmpty())
        return {Mark::ToDo, f.fits ? references(f.references) : Words::tr("not ready"), f.notReady};
    if (!f.fits)
        return {Mark::ToDo, Words::tr("ready"), Words::tr("Press Analyze to analyze each block"),
                Mend::Analyze};
    return {Mark::ToDo, Words::tr("%1, ready").arg(references(f.references)),
            Words::tr("Press Analyze to fit each block"), Mend::Analyze};
}

StepState saveState(const StepFacts& f, bool dataDone)
{
    if (!f.saveFault.isEmpty())
        return {Mark::LookHere, Words::tr("writing failed"), f.saveFault};
    if (f.mapsToSave == 0)
        return {Mark::ToDo, Words::tr("no maps yet"),
                Words::tr("Pictures can be saved at once, maps after an analysis")};
    if (f.savedMaps == 0)
        return {Mark::ToDo, Words::tr("maps not saved"), Words::tr("The maps are not saved"),
                Mend::SaveData};
    if (f.savedMaps < f.mapsToSave)
        return {dataDone ? Mark::Done : Mark::ToDo,
                Words::tr("saved: %1 of %2 maps").arg(f.savedMaps).arg(f.mapsToSave),
                Words::tr("Some of the maps are saved")};
    return {dataDone ? Mark::Done : Mark::ToDo, Words::tr("saved"),
            Words::tr("All maps are saved")};
}

} // namespace

QString mendText(Mend mend)
{
    switch (mend) {
    case Mend::SetEnergies:
        return Words::tr("Set Energies");
    case Mend::UseI0:
        return Words::tr("Use I0");
    case Mend::LoadReferences:
        return Words::tr("Load...");
    case Mend::Analyze:
        return Words::tr("Analyze");
    case Mend::SaveData:
        return Words::tr("Save Data");
    case Mend::None:
        break;
    }
    return {};
}

StepStates stepStates(const StepFacts& facts)
{
    const StepState data = dataState(facts);
    return {data, spectrumState(facts, data.isDone()), calibrationState(facts, data.isDone()),
            analysisState(facts, data.isDone()), saveState(facts, data.isDone())};
}
