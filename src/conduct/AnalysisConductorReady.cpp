// What a walk needs to start, and whether the maps are those of another.
#include "conduct/AnalysisConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "conduct/SourceReader.h"
#include "display/RunRow.h"
#include "maps/MapBook.h"

#include <cstdlib>

/// Fills area with the walk over the selected area; why there is nothing to analyse, or an empty
/// text.
QString AnalysisConductor::walkFault(AnalysisWalk walk, AnalyzeCond& area) const
{
    QString why = parts_.reader.areaFault(area);
    if (!why.isEmpty())
        return why;
    if (parts_.panel.chosenOf(walk).isEmpty())
        return QStringLiteral("no analysis selected");
    const SpectraInfo spectra = positionsOf(*sourceOf(walk));
    if (!readySections(walk, spectra).isEmpty())
        return {};
    QStringList reasons;
    for (const WhyNot& reason : reasonsOf(walk, spectra))
        reasons.append(reason.log);
    return reasons.join(QStringLiteral("; "));
}

/// What a walk reads, frozen as it stands now.
SharedSource AnalysisConductor::sourceOf(AnalysisWalk walk) const
{
    return walk == AnalysisWalk::SumUp ? parts_.reader.frozenForCounts() : parts_.reader.frozen();
}

QVector<AnalysisSection*> AnalysisConductor::readySections(AnalysisWalk walk,
                                                           const SpectraInfo& spectra) const
{
    QVector<AnalysisSection*> ready;
    for (AnalysisSection* section : parts_.panel.chosenOf(walk)) {
        if (section->notReady(spectra).isEmpty())
            ready.append(section);
    }
    return ready;
}

/// Why the chosen analyses that can not be made can not.
QVector<WhyNot> AnalysisConductor::reasonsOf(AnalysisWalk walk, const SpectraInfo& spectra) const
{
    QVector<WhyNot> reasons;
    for (const AnalysisSection* section : parts_.panel.chosenOf(walk)) {
        const WhyNot why = section->notReady(spectra);
        if (!why.isEmpty())
            reasons.append(why);
    }
    return reasons;
}

QVector<SectionConditions>
AnalysisConductor::conditionsOf(const QVector<AnalysisSection*>& sections,
                                const SpectraInfo& spectra) const
{
    QVector<SectionConditions> conditions;
    for (const AnalysisSection* section : sections)
        conditions.append(section->conditions(spectra));
    return conditions;
}

QString AnalysisConductor::whyNotReady(AnalysisWalk walk) const
{
    const WalkSource source = parts_.reader.source();
    if (source.i1.isEmpty())
        return tr("No images: load them in step 1");
    if (parts_.panel.chosenOf(walk).isEmpty())
        return tr("No analysis is chosen: check the box above");
    const SpectraInfo spectra = positionsOf(source);
    const bool anyReady = !readySections(walk, spectra).isEmpty();
    const QVector<WhyNot> reasons = reasonsOf(walk, spectra);
    AnalyzeCond area;
    if (!parts_.reader.askAnalyzeCond(area))
        return tr("The selected area lies outside the image");
    return anyReady || reasons.isEmpty() ? QString() : reasons.first().words;
}

AnalysisWalk AnalysisConductor::walkToStart() const
{
    if (walk_.running || !walk_.keys.isEmpty())
        return walk_.walk;
    // A sum of images, which can always start, is nothing to propose.
    for (const AnalysisWalk walk :
         {AnalysisWalk::Fits, AnalysisWalk::Residual, AnalysisWalk::Elements}) {
        if (whyNotReady(walk).isEmpty())
            return walk;
    }
    return AnalysisWalk::Fits;
}

bool AnalysisConductor::fitsReferences() const
{
    const AnalysisWalk walk = walkToStart();
    const QVector<AnalysisSection*> chosen = parts_.panel.chosenOf(walk);
    return walk == AnalysisWalk::Fits && (chosen.isEmpty() || chosen.contains(&parts_.panel.lcf()));
}

QString AnalysisConductor::walkText() const
{
    AnalyzeCond area;
    if (!parts_.reader.askAnalyzeCond(area))
        return {};
    const QString text = parts_.reader.isAreaSelected()
                             ? tr("%1 blocks of %2 x %3 pixels, selected area")
                             : tr("%1 blocks of %2 x %3 pixels, whole image");
    return text.arg(qint64(area.columns()) * area.rows())
        .arg(2 * std::abs(qint64(area.halfX)) + 1)
        .arg(2 * std::abs(qint64(area.halfY)) + 1);
}

void AnalysisConductor::tellReadiness()
{
    const QString text = walkText();
    for (int i = 0; i < analysisWalks; ++i) {
        const auto walk = AnalysisWalk(i);
        parts_.panel.runRow(walk).setReadiness(whyNotReady(walk), text);
    }
}

bool AnalysisConductor::mapsWhole() const
{
    return !walk_.keys.isEmpty() && parts_.book.stateOf(walk_.keys.last()) == MapState::Whole;
}

bool AnalysisConductor::mapsStopped() const
{
    return !walk_.keys.isEmpty() && parts_.book.stateOf(walk_.keys.last()) == MapState::Stopped;
}

bool AnalysisConductor::conditionsDiffer() const
{
    // With no analysis of the walk chosen there would be none.
    if (walk_.keys.isEmpty() || parts_.panel.chosenOf(walk_.walk).isEmpty())
        return false;
    AnalyzeCond area;
    if (!parts_.reader.askAnalyzeCond(area))
        return true;
    const SharedSource source = sourceOf(walk_.walk);
    const SpectraInfo spectra = positionsOf(*source);
    return AnalysisConditions(*source, area,
                              conditionsOf(readySections(walk_.walk, spectra), spectra)) !=
           walk_.conditions;
}
