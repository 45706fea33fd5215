#pragma once

#include "analysis/AnalysisSection.h"
#include "analysis/AnalyzeProc.h"
#include "maps/MapBook.h"

#include <memory>

class ArithmeticSection;
class CommandBook;
class DEdgeSection;
class ElementsSection;
class Fold;
class LcfSection;
class NumberFields;
class QButtonGroup;
class ResidualSection;
class SumUpSection;
class Ui_Analyzer;
class XafsView;

/// The analysis panel: a section for each analysis, the scales of their maps and the choice of the
/// map that the image view shows. It calculates nothing and holds no map: it asks for the analysis
/// of a spectrum, and shows here what came of it.
class Analyzer : public QFrame
{
    Q_OBJECT
public:
    /// The maps of elements come and go in the book, which outlives the panel.
    explicit Analyzer(MapBook& book, QWidget* parent = nullptr);
    ~Analyzer() override;

    LcfSection& lcf() const { return *lcf_; }
    ElementsSection& elements() const { return *elements_; }
    ArithmeticSection& arithmetic() const { return *arithmetic_; }
    /// All sections that walk over the map, in the order of their walks.
    const QVector<AnalysisSection*>& sections() const { return sections_; }
    /// Those of a walk, and of them those that are chosen.
    QVector<AnalysisSection*> sectionsOf(AnalysisWalk walk) const;
    QVector<AnalysisSection*> chosenOf(AnalysisWalk walk) const;
    /// The line of a walk.
    RunRow& runRow(AnalysisWalk walk) const;
    /// Maps are to be painted after each row of the walk.
    bool displaysOnTime(AnalysisWalk walk) const;

    /// Kind of map shown for a reference row.
    int mapKindIndex() const;
    /// Shows weights for 0 and jumps for 1, the other way round than mapKindIndex() counts.
    /// Deliberate: it is how the batch command counts.
    void setMapKind(int k);

    /// What the buttons say about the map that the image view is to show.
    MapChoice mapChoice() const;
    /// Chooses a map by the buttons that show it, as by hand.
    void chooseMap(const MapKey& key);
    /// The scales of the result maps as the fields stand.
    MapScales scales() const;

    /// Switches the analysis of number m on and all others off; another number changes nothing.
    void setMode(int m);
    /// Maps of these analyses are those of a walk that ended before its last position.
    void setMapsInterrupted(AnalysisWalk walk, bool f);

    /// Sends a single spectrum for analysis; does nothing during a walk or with no analysis on.
    void analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);

    /// The window of the spectrum that is analysed: with it the references in use, in the order of
    /// their rows, and behind them the fit. It is closed and deleted with the panel.
    XafsView* view() const { return view_.get(); }

    /// Names of the fields that can't be read as a number.
    QStringList unreadable() const;

    /// The commands that set its fields and rows or show it.
    void bindCommands(CommandBook& book);

    /// Hands the suggested edge to all references.
    void setHint(const EdgeHint& hint);

public Q_SLOTS:
    /// Check the boxes of the view.
    void setNormalize(bool f);
    void setEnergyCorrection(bool f);
    /// All maps are to be painted by the fixed scales, or by the range of their values.
    void scalePolicyChanged(bool f);
    /// The scales of the fields are others.
    void scaleChanged();
    void selectedImgChanged(bool f);
    /// On during a walk: single spectra are not analysed, the button of the walk stops it, and
    /// those of others have to wait.
    void setContAccess(bool f, AnalysisWalk walk = AnalysisWalk::Fits);
    /// Keeps the spectrum and analyses it.
    void analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm);
    /// Takes the worker's answer: that of a single spectrum fills the sections.
    void analyzeSpectrumFinished(const AnalysisResult& result);
    /// Analyses the kept spectrum again, for changed conditions.
    void reAnalyzeSpectrum();
    /// What the label of the walk shows. [%]
    void setProgress(AnalysisWalk walk, double perCent);
    /// Chooses the shown map by its number: reference rows that there are at start, and behind them
    /// the fixed buttons. An unknown one changes nothing and is a fault.
    void selectImageById(int id);
    /// Chooses the map of a reference row; an unknown one is a fault.
    void selectRow(int row);
    void setFixedScale(bool f);
    void setDMutScaleMax(double max);
    void setDMutScaleMin(double min);
    void setRatioScaleMax(double max);
    void setRatioScaleMin(double min);

Q_SIGNALS:
    /// The button of the walk was pressed.
    void askAnalyze(AnalysisWalk walk);
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

    static constexpr int rowsAtStart = 4; ///< reference rows, which have the first image numbers

    void placeSections();
    void connectSection(AnalysisSection* section);
    void connectForm();
    void watchFields();
    void addRowButton();
    void pressedImage();
    bool checkImage(QAbstractButton* button);
    QVector<Fold*> foldsByNumber() const;
    void useAnalysis(int number, bool f);
    QStringList imageLines() const;
    void bindFields(CommandBook& book);
    void bindChoiceOfAnalyses(CommandBook& book);
    void bindImageCommands(CommandBook& book);
    void bindScaleCommands(CommandBook& book);

    const std::unique_ptr<Ui_Analyzer> ui_;
    const std::unique_ptr<XafsView> view_; ///< a window of its own
    // The sections are children.
    LcfSection* lcf_;
    DEdgeSection* dEdge_;
    ResidualSection* residual_;
    ElementsSection* elements_;
    SumUpSection* sumUp_;
    ArithmeticSection* arithmetic_;
    QVector<AnalysisSection*> sections_; ///< children
    QButtonGroup* refGroup_; ///< choice of the shown map: rows by number, fixed ones apart
    NumberFields* numbers_;
    XafsSpectrum spectrum_;
    SuggestElm lastSElm_;
    bool contAccess_ = false;
};
