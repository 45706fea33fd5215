#include "analysis/elements/ElementsSection.h"

#include "analysis/elements/ElemCtrl.h"
#include "analysis/elements/ElementResults.h"
#include "analysis/elements/ElementsWalk.h"
#include "common/Fault.h"
#include "display/PanelDock.h"
#include "display/RunRow.h"
#include "maps/MapBook.h"

// The maps of the rows, and what analyses put into them and into the rows.

namespace {

/// In the order of a kernel's values.
constexpr MapKind rowKinds[elementMaps] = {
    MapKind::ElemJump, MapKind::ElemJumpRatio, MapKind::ElemMutPlus, MapKind::ElemMutMinus,
    MapKind::ElemDE,   MapKind::ElemRoi,       MapKind::ElemRoiRatio};

} // namespace

QVector<MapKey> ElementsSection::maps() const
{
    QVector<MapKey> keys;
    for (const MapKind kind : rowKinds) {
        for (int row = 0; row < elems_.size(); ++row)
            keys.append({kind, row});
    }
    keys.append({MapKind::ElemsCor});
    keys.append({MapKind::ElemsCorTh});
    return keys;
}

QVector<EdgeMark> ElementsSection::edgeMarks() const
{
    QVector<EdgeMark> marks;
    if (!isChosen())
        return marks;
    for (const ElemCtrl* row : elems_)
        marks.append({row->name(), row->energy()});
    return marks;
}

/// For other rows: those of the earlier ones are gone.
void ElementsSection::renewMaps()
{
    for (const MapKind kind : rowKinds)
        book_.dropRows(kind);
    QStringList names;
    for (const ElemCtrl* row : qAsConst(elems_))
        names.append(row->name());
    book_.setElementNames(names);
    for (const MapKey& key : maps())
        book_.at(key);
}

std::unique_ptr<WalkSink> ElementsSection::sink(const SpectraInfo&, MapBook& book) const
{
    ElementsSink::Maps filled{{}, &book.at({MapKind::ElemsCor}), &book.at({MapKind::ElemsCorTh})};
    for (const MapKind kind : rowKinds) {
        for (int row = 0; row < elems_.size(); ++row)
            filled.elements.append(&book.at({kind, row}));
    }
    return std::make_unique<ElementsSink>(elementConditions(), filled, correlation_);
}

/// What only the correlation maps depend on.
QVector<double> ElementsSection::pattern() const
{
    QVector<double> numbers{corTh_};
    for (const ElemCtrl* elem : elems_) {
        const ElementRow row = elem->data();
        numbers << double(row.use) << row.stdRatio;
    }
    return numbers;
}

/// The correlation that stands before the first position is left out: it changes with each single
/// analysis, and hardly ever counts.
SectionConditions ElementsSection::conditions(const SpectraInfo&) const
{
    const ElementConditions c = elementConditions();
    SectionConditions all{analysisName(), {double(c.target), c.bgJump, c.bgDE, c.bgRoi}, {}};
    for (const ElementRow& row : c.rows)
        all.numbers << row.energy << row.dE << row.threshold << row.roiFrom << row.roiTo
                    << double(row.noNeg);
    // Maps that were correlated anew are as a walk would make them.
    const QVector<double> now = pattern();
    all.numbers += now == correlatedWith_ ? walkedPattern_ : now;
    return all;
}

void ElementsSection::aboutToWalk(const SpectraInfo&)
{
    walkedPattern_ = correlatedWith_ = pattern();
}

void ElementsSection::show(const ShownResult& result)
{
    // None, or one of other rows that waited for the worker.
    const ElementPlaces places{elems_.size()};
    if (elems_.isEmpty() || result.values.size() != places.count())
        return;
    for (int row = 0; row < places.rows; ++row) {
        const double* const v = result.values.constData() + places.value(row, 0);
        elems_.at(row)->setResult(
            {v[0], v[1], v[2], v[3], v[4], v[5], v[6], result.values.at(places.rawJump(row))});
    }
    calcCorrelation();
    fillResults();
}

void ElementsSection::showPosition(const MapBook& book, QPoint position)
{
    const auto valueOf = [&](const MapKey& key) {
        const Analyzed2DRes* const map = book.find(key);
        return map ? map->valueAt(position.x(), position.y()) : 0.0;
    };
    for (int row = 0; row < elems_.size(); ++row) {
        double v[elementMaps];
        for (int map = 0; map < elementMaps; ++map)
            v[map] = valueOf({rowKinds[map], row});
        elems_.at(row)->setResult({v[0], v[1], v[2], v[3], v[4], v[5], v[6], 0.0});
    }
    setCorrelation(valueOf({MapKind::ElemsCor}));
    fillResults();
}

void ElementsSection::setElemsStd()
{
    for (ElemCtrl* row : qAsConst(elems_))
        row->setStdRatio(row->result().jumpRatio);
}

void ElementsSection::calcCorrelation()
{
    QVector<ElementRow> rows;
    QVector<ElementValues> values;
    for (const ElemCtrl* row : qAsConst(elems_)) {
        rows.append(row->data());
        values.append(row->result());
    }
    if (const std::optional<double> found = ::correlation(rows, values))
        setCorrelation(*found);
}

/// Why there is nothing to correlate, for the log; empty when there is.
QString ElementsSection::whyNotRecalculated() const
{
    if (isWalking())
        return QStringLiteral("the element analysis runs");
    const Analyzed2DRes* const map = book_.find({MapKind::ElemsCor});
    bool walked = map && map->data() && !elems_.isEmpty();
    for (int row = 0; row < elems_.size(); ++row) {
        const Analyzed2DRes* const ratios = book_.find({MapKind::ElemJumpRatio, row});
        walked = walked && ratios && ratios->data();
    }
    return walked ? QString() : QStringLiteral("the rows have no maps of an element analysis");
}

void ElementsSection::askedRecalc()
{
    const QString why = whyNotRecalculated();
    if (!why.isEmpty())
        fault(QStringLiteral("The correlation is not recalculated: ") + why);
    recalcCorMap();
}

void ElementsSection::recalcCorMap()
{
    if (!whyNotRecalculated().isEmpty())
        return;
    QVector<const Analyzed2DRes*> ratios;
    for (int row = 0; row < elems_.size(); ++row)
        ratios.append(book_.find({MapKind::ElemJumpRatio, row}));
    Analyzed2DRes& correlation = book_.at({MapKind::ElemsCor});
    Analyzed2DRes& threshold = book_.at({MapKind::ElemsCorTh});
    correlateMaps(elementConditions(), ratios, correlation, threshold);
    correlatedWith_ = pattern();
    correlation.genImg();
    threshold.genImg();
    runRow()->setProgress(100.0);
    Q_EMIT changed();
    Q_EMIT changedSelection();
}

void ElementsSection::showResults()
{
    if (!results_)
        results_ = new ElementResults(this);
    fillResults();
    raisePanel(results_);
}

void ElementsSection::fillResults()
{
    if (!results_)
        return;
    QStringList names;
    QVector<ElementValues> values;
    for (const ElemCtrl* row : qAsConst(elems_)) {
        names.append(row->name());
        values.append(row->result());
    }
    results_->setRows(names, values);
}
