#pragma once

#include "analysis/AnalyzeProc.h"
#include "maps/Analyzed2DRes.h"
#include "spectrum/EdgeDoubt.h"

#include <QFrame>
#include <QThread>

#include <memory>

class LCFReference;
class QButtonGroup;
class Ui_Analyzer;
class XafsView;

/// The analysis panel: the reference rows, the conditions of the analyses, the choice of the map
/// that the image view shows, and the analysis worker with its thread.
///
/// A single spectrum is sent with analyzeSpectrum() and its results come into the rows; a walk is
/// the main window's, which sends its spectra with analyzeInWalk() and records what finished()
/// brings.
class Analyzer : public QFrame
{
    Q_OBJECT
public:
    explicit Analyzer(QWidget* parent = nullptr);
    /// Stops the worker within a position and waits for its thread.
    ~Analyzer() override;

    const QVector<LCFReference*>& refs() const { return refs_; }
    /// Indices of the rows that take part in fits.
    QVector<int> activeRows() const;
    /// Index of the first row whose use box is checked, else 0.
    int firstUsedRow() const;

    /// Kind of map shown for a row.
    int mapKindIndex() const;
    /// Shows weights for 0 and jumps for 1, the other way round than mapKindIndex() counts.
    /// Deliberate: it is how the batch command counts.
    void setMapKind(int k);

    Analyzed2DRes* zansaMap() { return &zansaMap_; }
    Analyzed2DRes* dEdgeMap() { return &dEdgeMap_; }
    /// The map that the image view is to show; null when none is chosen.
    Analyzed2DRes* selectedMap();

    /// Switches the analysis of number m on and all others off; another number changes nothing.
    void setMode(int m);
    /// An analysis that walks over the map is switched on.
    bool walkAnalysisSelected() const;
    /// Marks the maps as those of an analysis that ended before its last position.
    void setMapsInterrupted(bool f);
    /// Maps are to be painted after each row of a walk.
    bool displaysOnTime() const;

    /// Curves whose lines come too close are continued by the step in fits.
    void setHoldGap(bool f);
    /// How far a fit reads a spectrum, in words: where its values are continued, or that it can not
    /// be compared. Empty for a sound one.
    QString gapNote(const XafsSpectrum& s) const;

    /// Conditions of a fit of spectra over the scan's energies as the panel stands, with copies of
    /// all rows.
    LcfRequest lcfRequest(const SuggestElm& sElm, const ReadRange& scan) const;
    /// There is a reference that takes part in fits over the scan's energies.
    bool canFit(const SuggestElm& sElm, const ReadRange& scan) const;
    /// Sends a single spectrum for analysis; does nothing during a walk or with no analysis on.
    void analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);
    /// Before a walk over spectra of these energies: takes in every single fit under way, so that
    /// the rows' weights do not depend on which of the two threads is faster, and tells of
    /// references that are left out or continued, a log line each. Gives the conditions of the
    /// walk.
    LcfRequest beginWalk(const SuggestElm& sElm, const ReadRange& scan);
    /// Sends a request of a walk.
    void analyzeInWalk(const AnalysisRequest& request);

    /// The window of the spectrum that is analysed: with it the references in use, in the order of
    /// their rows, and behind them the fit. It is closed and deleted with the panel.
    XafsView* view() const { return view_.get(); }
    /// Curve of the last single fit.
    const XafsSpectrum& fitResult() const { return fitResult_; }

    /// Hands the suggested edge to all rows; see LCFReference::setHint().
    void setHint(const EdgeHint& hint);

public Q_SLOTS:
    /// Shows the panel and the view.
    void show();
    /// Check the boxes of the view.
    void setNormalize(bool f);
    void setEnergyCorrection(bool f);
    void addNewRef();
    void selectedNewRef(int i);
    /// Paints all maps by the fixed scales (f) or by the range of their values.
    void scalePolicyChanged(bool f);
    /// Gives all maps the scales of the fields and paints them.
    void scaleChanged();
    void selectedImgChanged(bool f);
    void noticedNewZ(double z);
    void setOwnWeights(bool f);
    /// On during a walk.
    void setContAccess(bool f);
    /// Keeps the spectrum and analyses it.
    void analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);
    /// Analyses the kept spectrum again, for changed references.
    void reAnalyzeSpectrum();
    void setProgress(double perCent);
    /// Fills row `no` (see LCFReference::setStd), adding rows up to it; at most 100 rows.
    void setLCFStd(int no, bool use, double dE, const QString& fname, const QString& isVic);
    /// Chooses the shown map by its id in the image group; an unknown id is a fault.
    void selectImageById(int id);
    void setFixedScale(bool f);
    void setDMutScaleMax(double max);
    void setDMutScaleMin(double min);
    void setRatioScaleMax(double max);
    void setRatioScaleMin(double min);

Q_SIGNALS:
    void askAnalyze();
    /// A reference row was added, the last one.
    void rowAdded();
    void analyzeSpectrum0(const AnalysisRequest& request);
    void contAccessChanged(bool f);
    void progressChanged(double perCent);
    /// A request was answered.
    void finished(const AnalysisResult& result);
    /// Another map is to be shown, or the shown one looks different.
    void changedSelection();
    /// Scale of the shown map, for the colour bar.
    void scaleShown(double min, double max);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    Q_DISABLE_COPY(Analyzer)

    void connectForm();
    void startWorker();
    void analyzeSpectrumFinished(const AnalysisResult& result);
    void showFit(const LcfResult& result);
    void showFitCurve(bool f);
    void showReference(int row);
    void markLeftOut(const LcfRequest& request);
    void takeInSingleFits();
    void addReferenceCurve();
    void tellScaleOfSelected();
    /// The scale that the fields give to maps of a kind.
    Analyzed2DRes::Scale scaleOfKind(int kind) const;
    template<typename Action>
    void forEachMap(Action action);

    const std::unique_ptr<Ui_Analyzer> ui_;
    const std::unique_ptr<XafsView> view_; ///< a window of its own
    Analyzed2DRes zansaMap_;
    Analyzed2DRes dEdgeMap_;
    QVector<LCFReference*> refs_; ///< children of the form
    QButtonGroup* refGroup_;      ///< choice of the shown map
    QThread thread_;
    std::unique_ptr<AnalyzeProc> proc_; ///< lives in thread_
    XafsSpectrum spectrum_;
    XafsSpectrum fitResult_;
    SuggestElm lastSElm_;
    EdgeHint hint_; ///< of the rows
    bool contAccess_ = false;
    bool holdGap_ = true;
};
