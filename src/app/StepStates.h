#pragma once

#include "common/Mark.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

// What the bar above the image says of the five steps of the work: facts in, marks and sentences
// out. No widget, so that a test states them as a table.

enum class Step
{
    Data,
    Spectrum,
    Calibration,
    Analysis,
    Save
};
constexpr int stepCount = 5;

/// What the one button beside a sentence does about it.
enum class Mend
{
    None,
    SetEnergies,
    UseI0,
    LoadReferences,
    Analyze,
    SaveData
};

/// Text of the button; empty for none.
QString mendText(Mend mend);

/// Work that goes on.
struct RunFacts
{
    double share = 0.0;             ///< from 0 to 1
    std::optional<int> secondsLeft; ///< none while nobody can tell
};

/// What is known of one stack.
struct StackFacts
{
    int images = 0;
    QSize size;         ///< of its images [pixels]
    double first = 0.0; ///< least and greatest energy [eV]
    double last = 0.0;
    QString energyDoubt; ///< "81 files at 0, 1 ... 80 eV: no energies of X-rays", or empty
    bool evenExposure = true;
    int failedFiles = 0; ///< of the last load
};

enum class MapFacts
{
    None,
    Whole,
    InPart ///< its walk was stopped
};

/// All that the sentences are made of.
struct StepFacts
{
    StackFacts i1;
    StackFacts i0;
    bool usesI0 = false;
    bool i0Replaced = false; ///< total I0 takes the place of the I0 images
    std::optional<RunFacts> load;

    QSize block;                ///< [pixels]
    std::optional<double> edge; ///< at the cursor [eV]; none without a spectrum or an edge
    bool hasSpectrum = false;   ///< there is one at the cursor

    bool hasStandard = false;
    MapFacts shiftMap = MapFacts::None;
    double shiftMedian = 0.0; ///< of the map [eV]
    double shiftSpread = 0.0;
    bool standardChanged = false; ///< since the map was made
    std::optional<RunFacts> calibration;

    bool fits = true;   ///< the walk that Analyze starts fits references
    int references = 0; ///< in use
    QString notReady;   ///< why there is nothing to analyse, or empty
    MapFacts maps = MapFacts::None;
    int mapReferences = 0; ///< that the maps were made with; 0 for another analysis
    bool mapsOutOfDate = false;
    std::optional<RunFacts> analysis;

    int savedMaps = 0; ///< of the maps that there are
    int mapsToSave = 0;
    QString saveFault; ///< of the last attempt, or empty

    /// Fields of each step that can't be read as a number, by the names that people know.
    std::array<QStringList, stepCount> unreadable;
};

/// What a step's button and its strip say.
struct StepState
{
    Mark mark = Mark::ToDo;
    QString line;     ///< of the button
    QString sentence; ///< of the strip
    Mend mend = Mend::None;
    double share = 0.0; ///< while running

    bool isDone() const { return mark == Mark::Done; }
};

using StepStates = std::array<StepState, stepCount>;

/// No step after the first has its tick before the first has.
StepStates stepStates(const StepFacts& facts);
