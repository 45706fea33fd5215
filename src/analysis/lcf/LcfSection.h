#pragma once

#include "analysis/AnalysisSection.h"
#include "analysis/lcf/LcfFit.h"

class History;
class LateDialog;
class LCFReference;
class Ui_LcfSection;
class XafsView;

/// Linear combination fits: the reference rows, the conditions of the fit, its residual, and the
/// curves in the window of the spectrum that is analysed.
class LcfSection : public AnalysisSection
{
    Q_OBJECT
public:
    /// `view` shows the references in use, in the order of their rows, and behind them the fit.
    /// It outlives the section.
    explicit LcfSection(XafsView& view, QWidget* parent = nullptr);
    ~LcfSection() override;

    QString analysisName() const override { return QStringLiteral("LCF"); }
    QVector<ImageButton> imageButtons() const override;
    QVector<MapKey> maps() const override;
    QVector<MapKey> jumpMaps() const override;
    std::optional<MapKey> firstMap() const override;
    QStringList files() const override;
    WhyNot notReady(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const override;
    SectionConditions conditions(const SpectraInfo& spectra) const override;
    void aboutToWalk(const SpectraInfo& spectra) override;
    void show(const ShownResult& result) override;
    void showPosition(const MapBook& book, QPoint position) override;
    void bindCommands(CommandBook& book) override;
    void setHint(const EdgeHint& hint) override;

    const QVector<LCFReference*>& refs() const { return refs_; }
    /// Indices of the rows that take part in fits.
    QVector<int> activeRows() const;
    /// Index of the first row whose use box is checked, else 0.
    int firstUsedRow() const;
    /// Rows that the fits of these spectra take in.
    QVector<int> fittedRows(const SpectraInfo& spectra) const;

    /// Conditions of a fit as the section stands, with copies of all rows.
    LcfRequest request(const SpectraInfo& spectra) const;
    /// Curves whose lines come too close are continued by the step in fits.
    void setHoldGap(bool f) { holdGap_ = f; }
    /// How far a fit reads a spectrum, in words: where its values are continued, or that it can not
    /// be compared. Empty for a sound one.
    QString gapNote(const XafsSpectrum& s) const;
    /// Marks the rows that a fit of the shown spectrum leaves out.
    void markLeftOut(const SpectraInfo& spectra);

    /// Curve of the last single fit.
    const XafsSpectrum& fitResult() const { return fitResult_; }
    void showFitCurve(bool f);

    /// Loads files into the rows without one, from the first on, adding rows as needed. A file that
    /// can not be read leaves its row to the next.
    void loadReferences(const QStringList& files);
    /// Loads files into this row and those that follow.
    void loadReferencesFrom(int row, const QStringList& files);

public Q_SLOTS:
    /// Shows the dialog that chooses many references.
    void chooseReferences();
    void addNewRef();
    void noticedNewZ(double z);
    void setOwnWeights(bool f);
    /// Checks "MLCF" for 1, and for nothing else.
    void setLCFMode(int f);
    /// The form of the fit that fits positions without an edge too.
    void setLcfOld(bool f);
    /// Sets the fitting range [eV].
    void setRange(double from, double to);
    /// Fills row `no` (see LCFReference::setStd), adding rows up to it; at most 100 rows.
    void setLCFStd(int no, bool use, double dE, const QString& fname, const QString& isVic);

Q_SIGNALS:
    /// A reference row was added, the last one.
    void rowAdded();
    /// The window of the spectrum is to be shown.
    void viewAsked();

private:
    Q_DISABLE_COPY(LcfSection)

    void connectForm();
    void bindFields(CommandBook& book);
    void tellHistory(History& history);
    QString referenceLine(int row) const;
    void clearReference(int row);
    void connectRow(LCFReference* row);
    void watchFields();
    void placeCaptions();
    bool makeRow(int no);
    int emptyRow(int from) const;
    void addReferenceCurve();
    void showReference(int row);

    const std::unique_ptr<Ui_LcfSection> ui_;
    XafsView& view_;
    QVector<LCFReference*> refs_; ///< children of the form
    LateDialog* loadDialog_;      ///< of many references
    XafsSpectrum fitResult_;
    EdgeHint hint_; ///< of the rows
    bool holdGap_ = true;
};
