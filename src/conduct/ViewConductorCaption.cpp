// What the box says of what is on show, and its list of maps.
#include "conduct/ViewConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "conduct/StackConductor.h"
#include "display/ImageBox.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "maps/MapWords.h"
#include "maps/OutcomeColours.h"

#include <QFileInfo>

namespace {

constexpr int energyDigits = 7;

} // namespace

void ViewConductor::tellCaption()
{
    tellMaps();
    tellClasses();
    box_.showCaption(isMapChosen() ? mapCaption() : imageCaption());
}

/// The legend of an outcome map: what there is, and how much of it once it is finished.
void ViewConductor::tellClasses()
{
    const Analyzed2DRes* const map = isMapFilled() ? shownMap() : nullptr;
    if (!map || map->classColours().empty()) {
        box_.showClasses({}, {});
        return;
    }
    // Not counted anew for each picture of a walk that runs.
    const bool counted = book_.stateOf(*map_) != MapState::Filling;
    const OutcomeCounts counts = counted ? outcomesOf(*map) : OutcomeCounts();
    QVector<LegendEntry> legend;
    for (int i = 0; i < outcomeKinds; ++i) {
        const QString label = outcomeLabel(i);
        const int count = counts.of(Outcome(i));
        if (!counted)
            legend.append({outcomeColours()[std::size_t(i)], label});
        else if (count > 0)
            legend.append(
                {outcomeColours()[std::size_t(i)], QStringLiteral("%1: %2").arg(label).arg(count)});
    }
    box_.showClasses(outcomeColours(), legend);
}

QString ViewConductor::imageCaption() const
{
    const ImageStack& stack = shownStack();
    const int no = currentNumber(stack);
    const TiffData* const image = currentImage(stack);
    if (!image)
        return {};
    const QString text = tr("%1 - image %2 of %3 - %4 eV - counts")
                             .arg(stack.name)
                             .arg(no)
                             .arg(stack.images.size())
                             .arg(QString::number(image->energy, 'g', energyDigits));
    if (image->shiftX == 0 && image->shiftY == 0)
        return text;
    return text + tr(" - moved by %1, %2").arg(image->shiftX).arg(image->shiftY);
}

QString ViewConductor::mapCaption() const
{
    const Analyzed2DRes* const map = shownMap();
    if (!map || !map->imgValid || !map->whyNotSaved(true).isEmpty())
        return {};
    const AnalyzeCond& walk = map->stepper;
    QString text = tr("%1 blocks of %2 x %3 pixels")
                       .arg(qint64(walk.columns()) * walk.rows())
                       .arg(2 * qAbs(walk.halfX) + 1)
                       .arg(2 * qAbs(walk.halfY) + 1);
    // Not counted anew for each picture of a walk that runs.
    const bool filling = book_.stateOf(*map_) == MapState::Filling;
    const int without = filling ? 0 : map->positionsWithoutEdge();
    if (without > 0)
        text += unattended_ ? tr("; %1 without an edge").arg(without)
                            : tr("; grey: %1 without an edge").arg(without);
    if (map_->kind != MapKind::ShiftMap || filling)
        return text;
    if (const std::optional<Middle> middle = map->middle())
        text += tr("; median %1, spread %2 eV")
                    .arg(middle->median, 0, 'f', 2)
                    .arg(middle->spread, 0, 'f', 2);
    return text;
}

QString ViewConductor::nameOf(const MapKey& key) const
{
    QString row;
    if (traitsOf(key.kind).rows == RowsOf::References) {
        const LCFReference* const reference = panel_.lcf().refs().value(key.row);
        const QString file = reference ? QFileInfo(reference->fileName()).fileName() : QString();
        row = file.isEmpty() ? tr("row %1").arg(key.row) : file;
    } else {
        row = book_.elementName(key.row);
    }
    return mapTitle(key.kind, row);
}

/// The result maps that hold values, and the one that the panel has chosen.
void ViewConductor::tellMaps()
{
    listed_.clear();
    QStringList names;
    if (box_.choice() == ShowResAnalysisId) {
        for (const MapKey& key : book_.resultKeys()) {
            if (!book_.find(key)->whyNotSaved(false).isEmpty())
                continue;
            listed_.append(key);
            names.append(nameOf(key));
        }
    }
    box_.showMaps(names, map_ ? listed_.indexOf(*map_) : -1);
}

/// By the panel's buttons, as by hand.
void ViewConductor::chooseMap(int no)
{
    if (no < 0 || no >= listed_.size())
        return;
    panel_.chooseMap(listed_.at(no));
}
