#pragma once

#include "analysis/AnalysisSection.h"
#include "analysis/elements/ElementAnalysis.h"
#include "display/XafsPlot.h"

#include <functional>

class AElemsConds;
class ElemCtrl;
class ElementResults;
class History;
class QButtonGroup;
class Ui_ElementsSection;

/// The element analysis: the list of elements, a row for each, background values, which of their
/// maps is shown, and how like a standard their ratios are.
class ElementsSection : public AnalysisSection
{
    Q_OBJECT
public:
    /// The maps of the rows come and go in the book, which outlives the section.
    explicit ElementsSection(MapBook& book, QWidget* parent = nullptr);
    ~ElementsSection() override;

    QString analysisName() const override { return QStringLiteral("Elements"); }
    QVector<ImageButton> imageButtons() const override;
    QVector<MapKey> maps() const override;
    QVector<MapKey> jumpMaps() const override;
    std::optional<MapKey> firstMap() const override;
    WhyNot notReady(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const override;
    SectionConditions conditions(const SpectraInfo& spectra) const override;
    void aboutToWalk(const SpectraInfo& spectra) override;
    void show(const ShownResult& result) override;
    void showPosition(const MapBook& book, QPoint position) override;
    void bindCommands(CommandBook& book) override;
    RunRow* runRow() const override;

    const QVector<ElemCtrl*>& elems() const { return elems_; }
    /// The edges of the rows, to be marked in plots while the analysis is chosen; else none.
    /// changed() tells of others.
    QVector<EdgeMark> edgeMarks() const;
    int elementRows() const { return elems_.size(); }
    /// The row whose maps are shown; -1 without rows.
    int elementRow() const;
    /// Shows the maps of a row from now on; an unknown row changes nothing.
    void showRow(int row);
    /// Maps are to be painted after each row of the walk.
    bool displaysOnTime() const;
    /// The analysis as the fields stand.
    ElementConditions elementConditions() const;
    double correlation() const { return correlation_; }
    AElemsConds& backgrounds() const;
    /// While its walk runs the list of elements can not be changed: maps must not vanish under it.
    void setRunning(bool f);

public Q_SLOTS:
    /// Makes the rows anew from the list; the maps of the earlier ones are gone. Words that name no
    /// element are faults, and left out.
    void newElems();
    void setTargetElements(const QString& elements);
    /// Rows that are made from now on are in the order of atomic numbers.
    void setSortByANo(bool f);
    /// Takes the last ratios as standard ones.
    void setElemsStd();
    /// Correlates the last ratios of the rows in use with the standard ones.
    void calcCorrelation();
    void setCorrelation(double cor);
    /// Makes both correlation maps anew from the ratios in the maps of the last walk.
    void recalcCorMap();
    /// Takes the threshold of the correlation over, also in the maps.
    void newCorTh();
    void setCorTh(double threshold);
    /// Shows a kind of map by its number: jump, ratio, correlation, the same over its threshold,
    /// absorption above and below the edge, shift of the edge, region of interest and its ratio.
    /// An unknown one is a fault.
    void selectImage(int id);

Q_SIGNALS:
    /// There are other rows, with other maps.
    void rowsChanged();

private:
    Q_DISABLE_COPY(ElementsSection)

    void connectForm();
    void makeGroups();
    void placeCaptions();
    void editedNames();
    QString listText() const;
    void addRow(ElemCtrl* row);
    void removeRows();
    void renewMaps();
    bool isWalking() const;
    QString whyNotRecalculated() const;
    QVector<double> pattern() const;
    void withRow(const QString& word, const std::function<void(ElemCtrl&)>& act) const;
    void bindFields(CommandBook& book);
    void tellHistory(History& history);
    void askedRecalc();
    void bindRowCommands(CommandBook& book);
    void bindBackgroundCommands(CommandBook& book);
    void showResults();
    void fillResults();

    const std::unique_ptr<Ui_ElementsSection> ui_;
    MapBook& book_;
    QVector<ElemCtrl*> elems_;            ///< children of the form
    QButtonGroup* targetGroup_ = nullptr; ///< by row
    QButtonGroup* showGroup_ = nullptr;
    ElementResults* results_ = nullptr; ///< a child, once it was asked for
    QString listed_;                    ///< the list that the rows were made of
    double correlation_ = 0.0;
    double corTh_ = 0.999;
    bool isOverTh_ = false;          ///< the field shows a correlation above the threshold
    QVector<double> walkedPattern_;  ///< pattern() when the last walk began
    QVector<double> correlatedWith_; ///< pattern() that the correlation maps were made with
};
