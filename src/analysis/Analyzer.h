#pragma once

#include "analysis/AnalyzeProc.h"
#include "maps/MapBook.h"
#include "maps/MapChoice.h"
#include "spectrum/EdgeDoubt.h"

#include <QFrame>

#include <memory>

class CommandBook;
class LateDialog;
class LCFReference;
class NumberFields;
class QButtonGroup;
class Ui_Analyzer;
class XafsView;

/// The analysis panel: the reference rows, the conditions of the analyses and the choice of the map
/// that the image view shows. It calculates nothing and holds no map: it asks for the analysis of a
/// spectrum, and shows here what came of it.
class Analyzer : public QFrame
{
    Q_OBJECT
public:
    explicit Analyzer(QWidget* parent = nullptr);
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

    /// What the buttons say about the map that the image view is to show.
    MapChoice mapChoice() const;
    /// The scales of the result maps as the fields stand.
    MapScales scales() const;

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
    /// The same for a walk.
    LcfRequest walkRequest(const SuggestElm& sElm, const ReadRange& scan) const;
    /// There is a reference that takes part in fits over the scan's energies.
    bool canFit(const SuggestElm& sElm, const ReadRange& scan) const;
    /// Sends a single spectrum for analysis; does nothing during a walk or with no analysis on.
    void analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);
    /// Before a walk over spectra of these energies: tells of references that are left out or
    /// continued, a log line each. Gives the conditions of the walk.
    LcfRequest beginWalk(const SuggestElm& sElm, const ReadRange& scan);

    /// The window of the spectrum that is analysed: with it the references in use, in the order of
    /// their rows, and behind them the fit. It is closed and deleted with the panel.
    XafsView* view() const { return view_.get(); }
    /// Curve of the last single fit.
    const XafsSpectrum& fitResult() const { return fitResult_; }

    /// Why the button can't start a walk, in people's words: it is disabled then, with the reason
    /// as tool tip and in the line below it. Without a reason that line tells of the walk it would
    /// start. While a walk runs the button stops it, whatever the reason.
    void setReadiness(const QString& reason, const QString& walkText);
    /// The walk was stopped at its progress, which the panel keeps showing.
    void setStoppedAt(double perCent);
    /// Some row's map or that of the residuals is chosen.
    bool isMapShown() const;
    /// Chooses the map of weights of a row.
    void showRatioOf(int row);
    /// Loads files into the rows without one, from the first on, adding rows as needed. A file that
    /// can not be read leaves its row to the next.
    void loadReferences(const QStringList& files);
    /// Loads files into this row and those that follow.
    void loadReferencesFrom(int row, const QStringList& files);
    /// Names of the fields that can't be read as a number.
    QStringList unreadable() const;

    /// The commands that set its fields and rows or show it.
    void bindCommands(CommandBook& book);

    /// Hands the suggested edge to all rows; see LCFReference::setHint().
    void setHint(const EdgeHint& hint);

public Q_SLOTS:
    /// Shows the dialog that chooses many references.
    void chooseReferences();
    /// Check the boxes of the view.
    void setNormalize(bool f);
    void setEnergyCorrection(bool f);
    void addNewRef();
    void selectedNewRef(int i);
    /// All maps are to be painted by the fixed scales, or by the range of their values.
    void scalePolicyChanged(bool f);
    /// The scales of the fields are others.
    void scaleChanged();
    void selectedImgChanged(bool f);
    void noticedNewZ(double z);
    void setOwnWeights(bool f);
    /// On during a walk: single spectra are not analysed, and the button stops it.
    void setContAccess(bool f);
    /// Keeps the spectrum and analyses it.
    void analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);
    /// Takes the worker's answer: that of a single spectrum fills the rows.
    void analyzeSpectrumFinished(const AnalysisResult& result);
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
    /// A field can or can't be read as a number any more.
    void fieldsChanged();
    /// Something that a walk would go by is another.
    void conditionsChanged();
    /// A reference row was added, the last one.
    void rowAdded();
    /// A single spectrum is to be analysed.
    void analyzeSpectrum0(const AnalysisRequest& request);
    void contAccessChanged(bool f);
    void progressChanged(double perCent);
    /// A request was answered.
    void finished(const AnalysisResult& result);
    /// Another map is to be shown, or the shown one looks different.
    void changedSelection();
    /// The scales of the result maps are others.
    void scalesChanged();
    /// The colour bar is to tell the scale of the chosen map.
    void scaleAsked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    Q_DISABLE_COPY(Analyzer)

    void connectForm();
    void connectConditions();
    void connectRow(LCFReference* row);
    void watchFields();
    void placeCaptions();
    void showReadiness();
    bool makeRow(int no);
    int emptyRow(int from) const;
    void bindScaleCommands(CommandBook& book);
    void showFit(const LcfResult& result);
    void showFitCurve(bool f);
    void showReference(int row);
    void markLeftOut(const LcfRequest& request);
    void addReferenceCurve();

    const std::unique_ptr<Ui_Analyzer> ui_;
    const std::unique_ptr<XafsView> view_; ///< a window of its own
    QVector<LCFReference*> refs_;          ///< children of the form
    QButtonGroup* refGroup_;               ///< choice of the shown map
    NumberFields* numbers_;
    LateDialog* loadDialog_; ///< of many references
    QString notReady_;       ///< why no walk can start
    QString walkText_;       ///< the walk that the button would start
    XafsSpectrum spectrum_;
    XafsSpectrum fitResult_;
    SuggestElm lastSElm_;
    EdgeHint hint_; ///< of the rows
    bool contAccess_ = false;
    bool holdGap_ = true;
};
