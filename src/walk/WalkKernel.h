#pragma once

#include "maps/WalkRuns.h"
#include "spectrum/Outcome.h"
#include "walk/Tile.h"
#include "walk/WalkSource.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

/// A position of a walk with its spectrum, worked out up to the kernel's stage.
struct PlainPosition
{
    const WalkSource& source;
    int x;
    int y;
    const XafsSpectrum& spectrum;
};

/// What a kernel makes of a run of positions; `lane` is a position's place in the run.
struct TileResult
{
    TileResult(int valueCount, int lanes);

    double value(int number, int lane) const { return values[at(number, lane)]; }
    void set(int number, int lane, double v) { values[at(number, lane)] = v; }

    int lanes;
    std::vector<double> values;    ///< [value][lane], 0 until set
    std::vector<Outcome> outcomes; ///< [lane]
    std::vector<uchar> gapHeld;    ///< [lane]
    std::vector<QByteArray> texts; ///< [lane], of kernels that give text; else empty

private:
    std::size_t at(int number, int lane) const
    {
        return std::size_t(number) * std::size_t(lanes) + std::size_t(lane);
    }
};

/// What a kernel makes of a single spectrum that is shown.
struct ShownResult
{
    Outcome outcome = Outcome::NoPoints;
    bool gapHeld = false;
    QVector<double> values; ///< as WalkKernel::values() counts them
    QVector<int> rows;      ///< rows of the panel that the values are of, where they are of rows
    std::shared_ptr<const XafsSpectrum> curve; ///< fit curve, normalised; null without one
};

/// An analysis of single positions. Knows neither threads nor widgets: each worker of a walk has a
/// kernel of its own, and what a position gives does not depend on the others.
class WalkKernel
{
public:
    virtual ~WalkKernel() = default;

    /// How far it needs the spectrum.
    virtual Stage stage() const = 0;
    /// Doubles that it gives for a position.
    virtual int values() const = 0;
    /// A kernel for one worker, prepared for many positions.
    virtual std::unique_ptr<WalkKernel> forWorker() const = 0;
    /// The truth about a position. A kernel is complete with it alone.
    virtual void plain(const PlainPosition& at, int lane, TileResult& out) = 0;
    /// The fast form of many positions, which has the same bits; the lanes that it has done. All
    /// others go through plain().
    /// A tile of a walk whose kernels stop at Stage::Mu has no edges, at Stage::Counts no mu.
    virtual Lanes lanes(const Tile&, TileResult&) { return {}; }
    /// The same as plain() for a spectrum that no walk formed, worked out for the eye, with what
    /// only the eye wants: by itself plain() without a position.
    virtual ShownResult shown(const XafsSpectrum& spectrum);
    /// What each of the values is, with its unit: "jump of row 0", "shift of the edge [eV]".
    virtual QStringList valueNames() const { return {}; }
};

/// Takes a kernel's results, run by run in walking order, one call at a time.
class WalkSink
{
public:
    enum Where
    {
        Owner, ///< on the thread of the walk's owner
        Worker ///< on that of some worker, beside the owner's: what waits for a disk
    };

    virtual ~WalkSink() = default;
    virtual Where where() const { return Owner; }
    virtual void take(const WalkRun& run, const TileResult& result) = 0;
};
