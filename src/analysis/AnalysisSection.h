#pragma once

#include "analysis/AnalysisConditions.h"
#include "display/Fold.h"
#include "maps/MapChoice.h"
#include "spectrum/EdgeDoubt.h"
#include "spectrum/HeldGap.h"
#include "walk/WalkKernel.h"

class QAbstractButton;
class CommandBook;
class MapBook;
class NumberFields;
class RunRow;

/// The walks that there are, one at a time. Analyses of the same walk share the spectra of a
/// position.
enum class AnalysisWalk
{
    Fits, ///< fits and edge positions
    Residual,
    Elements,
    SumUp ///< sums of images, which need no spectra
};
constexpr int analysisWalks = 4;

/// What is known of the spectra that an analysis is to be made of.
struct SpectraInfo
{
    SuggestElm elm;
    ReadRange scan;      ///< energies that they span [eV]
    bool inWalk = false; ///< a walk's positions; else one spectrum that is shown
};

/// What is known of the positions of a walk over a source.
SpectraInfo positionsOf(const WalkSource& source);

/// Why an analysis can't be made; empty when it can.
struct WhyNot
{
    QString log;   ///< for the log, in English
    QString words; ///< for people

    bool isEmpty() const { return log.isEmpty(); }
};

/// A button that shows a map.
struct ImageButton
{
    FixedImage image;
    QAbstractButton* button;
};

/// The part of the panel that an analysis has: its conditions and its last results. It makes the
/// analysis as a kernel and a sink, and calculates nothing itself.
class AnalysisSection : public Fold
{
    Q_OBJECT
public:
    AnalysisSection(AnalysisWalk walk, const QString& boxName, const QString& boxText,
                    QWidget* parent = nullptr, Head head = Box);

    AnalysisWalk walk() const { return walk_; }
    /// Takes part when its walk is started.
    virtual bool joinsWalk() const { return isChosen(); }
    /// In the log and in the origin of its maps: "LCF".
    virtual QString analysisName() const = 0;

    /// Its buttons that show maps, none of them a reference row's.
    virtual QVector<ImageButton> imageButtons() const = 0;
    /// The maps that a walk fills, in the order of their numbers.
    virtual QVector<MapKey> maps() const = 0;
    /// Of them those of jumps, by which positions beside the sample are known.
    virtual QVector<MapKey> jumpMaps() const { return {}; }
    /// The map that a user wants to see first after a walk; none for any.
    virtual std::optional<MapKey> firstMap() const { return std::nullopt; }
    /// Files that take part, for the origin of the maps.
    virtual QStringList files() const { return {}; }

    virtual WhyNot notReady(const SpectraInfo& spectra) const = 0;
    /// The analysis as the fields stand. Only where notReady() is empty.
    virtual std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const = 0;
    /// Records that kernel's results in the maps of the book, which outlives it.
    virtual std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const = 0;
    /// What a walk's kernel goes by.
    virtual SectionConditions conditions(const SpectraInfo& spectra) const = 0;

    /// A walk is about to start: tells the log what it should know of the conditions.
    virtual void aboutToWalk(const SpectraInfo&) {}
    /// The walk has ended, at its last position or before, and its maps get no more values: makes
    /// those that are made of others.
    virtual void finishMaps(MapBook&) {}
    /// Shows what its kernel made of a single spectrum.
    virtual void show(const ShownResult& result) = 0;
    /// Shows the values of a position of a walk that its maps hold.
    virtual void showPosition(const MapBook&, QPoint) {}

    /// The commands that set its fields.
    virtual void bindCommands(CommandBook&) {}
    /// Hands the suggested edge to its reference spectra.
    virtual void setHint(const EdgeHint&) {}
    /// The line of its walk; null for a walk whose line is the panel's.
    virtual RunRow* runRow() const { return nullptr; }
    /// Its number fields.
    NumberFields* numbers() const { return numbers_; }

Q_SIGNALS:
    /// Something that a walk would go by is another.
    void changed();
    /// The shown spectrum is to be analysed again.
    void askReanalyze();
    /// Another of its maps is to be shown, or the shown one looks different.
    void changedSelection();

private:
    const AnalysisWalk walk_;
    NumberFields* numbers_;
};
