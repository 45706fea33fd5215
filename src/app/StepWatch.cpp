#include "app/StepWatch.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "app/Panels.h"
#include "calibration/CalibCtrl.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/CalibConductor.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/SaveConductor.h"
#include "conduct/StackConductor.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "image/Measurement.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/EnergyPreview.h"
#include "selection/SpectrumBox.h"

#include <QFileInfo>

#include <algorithm>

namespace {

QVector<double> energiesOf(const ImageStack& stack)
{
    QVector<double> energies;
    energies.reserve(stack.images.size());
    for (const SharedImage& image : stack.images)
        energies.append(image->energy);
    return energies;
}

/// What is wrong with a stack's energies, with the files that it is wrong of.
QString energyDoubt(const ImageStack& stack, const EnergyPreview& preview)
{
    if (preview.isSound())
        return {};
    if (preview.first < 0)
        return QStringLiteral("%1: %2").arg(preview.text, preview.doubt);
    const auto file = [&stack](int no) {
        return QFileInfo(stack.images.at(no)->fileName).fileName();
    };
    return QStringLiteral("%1 (%2, %3)")
        .arg(preview.doubt, file(preview.first), file(preview.second));
}

} // namespace

StepWatch::StepWatch(const Parts& parts)
    : parts_(parts)
{
    reading_.setSingleShot(true);
    reading_.setInterval(0); // at the end of the act that changes something
    connect(&reading_, &QTimer::timeout, this, &StepWatch::readAll);
    connectData();
    connectWalks();
    connectForms();
    readAll();
}

void StepWatch::connectData()
{
    const auto read = [this] { readAll(); };
    connect(&parts_.stacks, &StackConductor::cleared, this, read);
    connect(&parts_.stacks, &StackConductor::loaded, this, read);
    connect(&parts_.stacks, &StackConductor::energiesApplied, this, read);
    connect(&parts_.stacks, &StackConductor::moved, this, read);
    connect(&parts_.stacks, &StackConductor::progressed, this, &StepWatch::readLoad);
    connect(&parts_.dark, &DarkConductor::conditionsChanged, this, read);
    connect(&parts_.cursor, &CursorConductor::spectrumFormed, this, &StepWatch::readSpectrum);
}

void StepWatch::connectWalks()
{
    const auto read = [this] { readAll(); };
    connect(&parts_.calibration, &CalibConductor::runningChanged, this, [this](bool running) {
        if (running)
            calibrationLeft_.start();
        readAll();
    });
    connect(&parts_.calibration, &CalibConductor::calibProgress, this, [this] {
        readCalibration();
        tell();
    });
    connect(&parts_.calibration, &CalibConductor::shiftMapChanged, this, read);
    connect(&parts_.analysis, &AnalysisConductor::runningChanged, this, [this](bool running) {
        if (running)
            analysisLeft_.start();
        readAll();
    });
    connect(parts_.panels.analyzer.get(), &Analyzer::progressChanged, this, [this] {
        if (!facts_.analysis)
            return;
        readAnalysis();
        tell();
    });
    connect(&parts_.saving, &SaveConductor::savedChanged, &reading_, qOverload<>(&QTimer::start));
}

/// Many fields may change in one act, such as an element that brings its edge.
void StepWatch::connectForms()
{
    const auto later = qOverload<>(&QTimer::start);
    const Panels& p = parts_.panels;
    connect(p.analyzer.get(), &Analyzer::conditionsChanged, &reading_, later);
    connect(p.analyzer.get(), &Analyzer::fieldsChanged, &reading_, later);
    connect(p.calibCtrl.get(), &CalibCtrl::fieldsChanged, &reading_, later);
    connect(p.calibCtrl.get(), &CalibCtrl::newStdFileLoaded, &reading_, later);
    connect(p.calibCtrl.get(), &CalibCtrl::standardChanged, &reading_, later);
    connect(p.calibCtrl.get(), &CalibCtrl::targetBackgroundChanged, &reading_, later);
    connect(p.spectrumBox.get(), &SpectrumBox::changed, &reading_, later);
    connect(p.spectrumBox.get(), &SpectrumBox::useI0Changed, &reading_, later);
    connect(p.spectrumBox.get(), &SpectrumBox::fieldsChanged, &reading_, later);
    connect(p.imageBox->area(), &ImgDispA::selectionChanged, &reading_, later);
    connect(p.dataBox.get(), &DataBox::fieldsChanged, &reading_, later);
    connect(p.saveDataCfg.get(), &SaveDataCfg::fieldsChanged, &reading_, later);
}

void StepWatch::readStack(StackFacts& facts, const ImageStack& stack) const
{
    facts = StackFacts();
    facts.images = stack.images.size();
    facts.failedFiles = parts_.stacks.failedFiles(stack);
    if (stack.images.isEmpty())
        return;
    const TiffData& first = *stack.images.first();
    facts.size = {first.width, first.height};
    facts.evenExposure = stack.hasUniformExposure();
    const QVector<double> energies = energiesOf(stack);
    const auto ends = std::minmax_element(energies.begin(), energies.end());
    facts.first = *ends.first;
    facts.last = *ends.second;
    facts.energyDoubt = energyDoubt(stack, previewOf(energies));
}

void StepWatch::readData()
{
    readStack(facts_.i1, parts_.data.i1);
    readStack(facts_.i0, parts_.data.i0);
    const SpectrumSettings settings = parts_.panels.spectrumBox->settings();
    facts_.usesI0 = settings.useI0;
    facts_.i0Replaced = !parts_.data.totalI0ofI1.isEmpty();
    facts_.block = {2 * std::abs(settings.halfX) + 1, 2 * std::abs(settings.halfY) + 1};
}

/// A stack that has not all of its images yet is not looked into.
void StepWatch::readLoad(const ImageStack* stack, int done, int total)
{
    loading_[stack == &parts_.data.i0 ? 1 : 0] = {done, total};
    const int allDone = loading_[0].done + loading_[1].done;
    const int all = loading_[0].total + loading_[1].total;
    if (all == 0) {
        facts_.load.reset();
    } else {
        if (!facts_.load)
            loadLeft_.start();
        const double share = double(allDone) / all;
        facts_.load = RunFacts{share, loadLeft_.secondsAt(share)};
    }
    tell();
}

void StepWatch::readSpectrum(const XafsSpectrum& spectrum)
{
    facts_.hasSpectrum = !spectrum.isEmpty();
    facts_.edge.reset();
    if (facts_.hasSpectrum && spectrum.outcome == Outcome::Fitted)
        facts_.edge = spectrum.midx;
    tell();
}

void StepWatch::readCalibration()
{
    const CalibConductor& calibration = parts_.calibration;
    facts_.hasStandard = !parts_.panels.calibCtrl->standard().isEmpty();
    facts_.shiftMap = calibration.mapWhole()     ? MapFacts::Whole
                      : calibration.mapStopped() ? MapFacts::InPart
                                                 : MapFacts::None;
    const auto spread = calibration.medianAndSpread();
    facts_.shiftMedian = spread ? spread->median : 0.0;
    facts_.shiftSpread = spread ? spread->spread : 0.0;
    facts_.standardChanged = calibration.standardChangedSince();
    facts_.calibration.reset();
    if (calibration.isRunning()) {
        const double share = calibration.percent() / 100.0;
        facts_.calibration = RunFacts{share, calibrationLeft_.secondsAt(share)};
    }
}

void StepWatch::readAnalysis()
{
    const AnalysisConductor& analysis = parts_.analysis;
    facts_.analysis.reset();
    facts_.fits = analysis.fitsReferences();
    if (analysis.isWalking()) {
        const double share = analysis.percent() / 100.0;
        facts_.analysis = RunFacts{share, analysisLeft_.secondsAt(share)};
        return;
    }
    facts_.references = parts_.panels.analyzer->lcf().activeRows().size();
    facts_.notReady = analysis.whyNotReady(analysis.walkToStart());
    facts_.maps = analysis.mapsWhole()     ? MapFacts::Whole
                  : analysis.mapsStopped() ? MapFacts::InPart
                                           : MapFacts::None;
    facts_.mapReferences = analysis.rowsOfMaps();
    facts_.mapsOutOfDate = facts_.maps == MapFacts::Whole && analysis.conditionsDiffer();
}

void StepWatch::readSaving()
{
    facts_.mapsToSave = parts_.saving.mapsToSave();
    facts_.savedMaps = parts_.saving.savedMaps();
    facts_.saveFault = parts_.saving.lastFault();
    const bool image = facts_.i1.images > 0 || facts_.i0.images > 0;
    parts_.panels.saveBox->setReasons(
        image || facts_.mapsToSave > 0 ? QString() : tr("No image to save: load some in step 1"),
        facts_.mapsToSave > 0 || facts_.maps == MapFacts::InPart
            ? QString()
            : tr("No map to save: run an analysis in step 4"));
}

void StepWatch::readFields()
{
    const Panels& p = parts_.panels;
    facts_.unreadable = {p.dataBox->unreadable(), p.spectrumBox->unreadable(),
                         p.calibCtrl->unreadable(), p.analyzer->unreadable(),
                         p.saveDataCfg->unreadable()};
}

void StepWatch::readAll()
{
    reading_.stop();
    if (!facts_.load)
        readData();
    readCalibration();
    readAnalysis();
    readSaving();
    readFields();
    parts_.analysis.tellReadiness();
    parts_.calibration.tellReadiness();
    tell();
}

void StepWatch::tell()
{
    states_ = stepStates(facts_);
    Q_EMIT changed(states_);
}
