#include "analysis/lcf/LcfSection.h"

#include "analysis/lcf/LCFReference.h"
#include "common/Fault.h"
#include "display/XafsView.h"

#include <QFileInfo>

// The reference rows, and the single fits that fill them.

namespace {

constexpr int maxRows = 100;
constexpr QRgb fitColour = qRgb(255, 0, 255);

/// Energies that a spectrum with points spans.
ReadRange energiesOf(const Spectrum& s)
{
    return {s.xMin - s.shift(), s.xMax - s.shift()};
}

} // namespace

void LcfSection::connectRow(LCFReference* row)
{
    connect(row, &LCFReference::newFileSelected, this, &LcfSection::askReanalyze);
    connect(row, &LCFReference::newDeltaE, this, &LcfSection::askReanalyze);
    connect(row, &LCFReference::changed, this, &LcfSection::changed);
    connect(row, &LCFReference::filesDropped, this,
            [this, no = refs_.indexOf(row)](const QStringList& files) {
                loadReferencesFrom(no, files);
            });
}

/// Adds rows up to this one; false, with a fault, for one beyond the limit.
bool LcfSection::makeRow(int no)
{
    if (no < 0 || no >= maxRows) {
        fault(QStringLiteral("No reference row %1: rows go from 0 to %2").arg(no).arg(maxRows - 1));
        return false;
    }
    while (refs_.size() <= no)
        addNewRef();
    return true;
}

/// The first row without a file; behind the last for none.
int LcfSection::emptyRow(int from) const
{
    int row = from;
    while (row < refs_.size() && !refs_.at(row)->spectrum().isEmpty())
        ++row;
    return row;
}

void LcfSection::loadReferences(const QStringList& files)
{
    int row = 0;
    for (const QString& file : files) {
        row = emptyRow(row);
        if (!makeRow(row))
            return;
        refs_.at(row)->load(file);
    }
}

void LcfSection::loadReferencesFrom(int row, const QStringList& files)
{
    for (const QString& file : files) {
        if (!makeRow(row))
            return;
        refs_.at(row)->load(file);
        if (!refs_.at(row)->spectrum().isEmpty())
            ++row;
    }
}

void LcfSection::setLCFStd(int no, bool use, double dE, const QString& fname, const QString& isVic)
{
    if (makeRow(no))
        refs_.at(no)->setStd(use, dE, fname, isVic);
}

void LcfSection::setHint(const EdgeHint& hint)
{
    if (hint.isLike(hint_))
        return;
    hint_ = hint;
    for (LCFReference* row : qAsConst(refs_))
        row->setHint(hint);
}

/// Gives the last row its place in the view, in front of the fit.
void LcfSection::addReferenceCurve()
{
    const int row = refs_.size() - 1;
    QVector<ViewCurve> curves = view_.others();
    if (curves.isEmpty())
        curves.append(ViewCurve());
    curves.insert(row, ViewCurve());
    view_.setOthers(curves);
    showFitCurve(false);
    showReference(row);
    connect(refs_.at(row), &LCFReference::changed, this, [this, row] { showReference(row); });
}

void LcfSection::showReference(int row)
{
    view_.setOther(row, {refs_.at(row)->spectrum(),
                         refs_.at(row)->isUsed(),
                         {},
                         QFileInfo(refs_.at(row)->fileName()).fileName()});
}

void LcfSection::showFitCurve(bool f)
{
    view_.setOther(refs_.size(), {fitResult_, f, QPen(QColor(fitColour), 2), tr("fit")});
}

QVector<int> LcfSection::activeRows() const
{
    QVector<int> rows;
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isActive())
            rows.append(i);
    }
    return rows;
}

int LcfSection::firstUsedRow() const
{
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isUsed())
            return i;
    }
    return 0;
}

QString LcfSection::gapNote(const XafsSpectrum& s) const
{
    if (!holdGap_ || !s.linesClose)
        return {};
    return HeldGap(s, request({s.sElm, energiesOf(s)}).commonRange()).words();
}

void LcfSection::markLeftOut(const SpectraInfo& spectra)
{
    const QVector<int> left = request(spectra).leftOutRows();
    for (int i = 0; i < refs_.size(); ++i) {
        refs_.at(i)->setLeftOut(left.contains(i) ? tr("No point inside the fitting range: left out")
                                                 : QString());
    }
}

/// A result is jump and weight of each row in use, and last the residual. Rows that were left out
/// of the fit keep what they show.
void LcfSection::show(const ShownResult& result)
{
    // The curve of an earlier spectrum must not stay with one that could not be fitted.
    if (!result.curve || result.rows.isEmpty()) {
        showFitCurve(false);
        return;
    }
    for (int k = 0; k < result.rows.size(); ++k) {
        LCFReference* const row = refs_.at(result.rows.at(k));
        row->setWeight(result.values.at(2 * k + 1));
        row->setResult(result.values.at(2 * k));
    }
    noticedNewZ(result.values.last());
    fitResult_ = *result.curve;
    showFitCurve(true);
}
