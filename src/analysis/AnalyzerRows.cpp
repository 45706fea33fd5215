#include "analysis/Analyzer.h"
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

void Analyzer::connectRow(LCFReference* row)
{
    connect(row, &LCFReference::newFileSelected, this, &Analyzer::reAnalyzeSpectrum);
    connect(row, &LCFReference::newDeltaE, this, &Analyzer::reAnalyzeSpectrum);
    connect(row, &LCFReference::changed, this, &Analyzer::conditionsChanged);
    connect(row, &LCFReference::filesDropped, this,
            [this, no = refs_.indexOf(row)](const QStringList& files) {
                loadReferencesFrom(no, files);
            });
}

/// Adds rows up to this one; false, with a fault, for one beyond the limit.
bool Analyzer::makeRow(int no)
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
int Analyzer::emptyRow(int from) const
{
    int row = from;
    while (row < refs_.size() && !refs_.at(row)->spectrum().isEmpty())
        ++row;
    return row;
}

void Analyzer::loadReferences(const QStringList& files)
{
    int row = 0;
    for (const QString& file : files) {
        row = emptyRow(row);
        if (!makeRow(row))
            return;
        refs_.at(row)->load(file);
    }
}

void Analyzer::loadReferencesFrom(int row, const QStringList& files)
{
    for (const QString& file : files) {
        if (!makeRow(row))
            return;
        refs_.at(row)->load(file);
        if (!refs_.at(row)->spectrum().isEmpty())
            ++row;
    }
}

void Analyzer::setHint(const EdgeHint& hint)
{
    if (hint.isLike(hint_))
        return;
    hint_ = hint;
    for (LCFReference* row : qAsConst(refs_))
        row->setHint(hint);
}

/// Gives the last row its place in the view, in front of the fit.
void Analyzer::addReferenceCurve()
{
    const int row = refs_.size() - 1;
    QVector<ViewCurve> curves = view_->others();
    curves.insert(row, ViewCurve());
    view_->setOthers(curves);
    showReference(row);
    connect(refs_.at(row), &LCFReference::changed, this, [this, row] { showReference(row); });
}

void Analyzer::showReference(int row)
{
    view_->setOther(row, {refs_.at(row)->spectrum(),
                          refs_.at(row)->isUsed(),
                          {},
                          QFileInfo(refs_.at(row)->fileName()).fileName()});
}

void Analyzer::showFitCurve(bool f)
{
    view_->setOther(refs_.size(), {fitResult_, f, QPen(QColor(fitColour), 2), tr("fit")});
}

QVector<int> Analyzer::activeRows() const
{
    QVector<int> rows;
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isActive())
            rows.append(i);
    }
    return rows;
}

int Analyzer::firstUsedRow() const
{
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isUsed())
            return i;
    }
    return 0;
}

QString Analyzer::gapNote(const XafsSpectrum& s) const
{
    if (!holdGap_ || !s.linesClose)
        return {};
    return HeldGap(s, lcfRequest(s.sElm, energiesOf(s)).commonRange()).words();
}

bool Analyzer::canFit(const SuggestElm& sElm, const ReadRange& scan) const
{
    return !lcfRequest(sElm, scan).fittedRows().isEmpty();
}

void Analyzer::markLeftOut(const LcfRequest& request)
{
    const QVector<int> left = request.leftOutRows();
    for (int i = 0; i < refs_.size(); ++i) {
        refs_.at(i)->setLeftOut(left.contains(i) ? tr("No point inside the fitting range: left out")
                                                 : QString());
    }
}

void Analyzer::analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    lastSElm_ = sElm;
    if (contAccess_ || !walkAnalysisSelected())
        return;
    AnalysisRequest request;
    request.spectra = {s};
    request.lcf = true;
    request.lcfConditions = lcfRequest(sElm, energiesOf(s));
    if (!s.isEmpty())
        markLeftOut(request.lcfConditions);
    Q_EMIT analyzeSpectrum0(request);
}

void Analyzer::analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    spectrum_ = s;
    view_->setSpectrum(spectrum_, gapNote(spectrum_));
    if (!walkAnalysisSelected())
        showFitCurve(false);
    analyzeSpectrum(spectrum_, sElm);
}

void Analyzer::reAnalyzeSpectrum()
{
    if (!spectrum_.isEmpty())
        analyzeSpectrum(spectrum_, lastSElm_);
}

void Analyzer::analyzeSpectrumFinished(const AnalysisResult& result)
{
    // The rows keep their weights during a walk. Answers come in the order of the requests, and
    // each is taken: which of them the rows show must not depend on when a newer was asked for.
    if (!contAccess_ && !result.lcf.isEmpty())
        showFit(result.lcf.first());
    Q_EMIT finished(result);
}

void Analyzer::showFit(const LcfResult& result)
{
    // The curve of an earlier spectrum must not stay with one that could not be fitted.
    if (!result.fitted || result.activeRows.isEmpty()) {
        showFitCurve(false);
        return;
    }
    for (int k = 0; k < result.activeRows.size(); ++k) {
        LCFReference* const row = refs_.at(result.activeRows.at(k));
        row->setWeight(result.ratios.at(k));
        row->setResult(result.dMuts.at(k));
    }
    if (result.fit)
        fitResult_ = *result.fit;
    showFitCurve(true);
}

void Analyzer::setLCFStd(int no, bool use, double dE, const QString& fname, const QString& isVic)
{
    if (!makeRow(no))
        return;
    refs_.at(no)->setStd(use, dE, fname, isVic);
}
