#include "CompareHard.h"

#include "CompareParts.h"
#include "DemoFiles.h"

#include <algorithm>

namespace {
struct RunLimits
{
    const char* title;
    double bias;
    double rms;
};

using Maps = std::array<SavedMap, speciesCount>;

/// A share of a number of cases.
struct Share
{
    int cases = 0;
    int counted = 0;

    void add(bool counts)
    {
        ++cases;
        counted += counts ? 1 : 0;
    }
    double value() const { return cases > 0 ? static_cast<double>(counted) / cases : 0.0; }
};

/// The program leaves the fractions of a position that it can't fit at exactly 0.
bool isRejected(const Maps& maps, int i)
{
    return std::all_of(maps.begin(), maps.end(),
                       [i](const SavedMap& map) { return map.values[i] == 0.0; });
}

bool readMaps(const QString& folder, const HardRun& run, const Blocks& blocks, Maps* maps,
              QTextStream& out)
{
    for (int s = 0; s < speciesCount; ++s) {
        if (!readMap(folder, QLatin1String(run.ratio), s, blocks,
                     &(*maps)[static_cast<std::size_t>(s)], out)) {
            return false;
        }
    }
    return true;
}

/// Whether all went well; a line tells the share and its limit.
bool judge(const char* what, const Share& share, bool within, QTextStream& out)
{
    out << QStringLiteral("  %1  %2  %3 %  %4\n")
               .arg(QLatin1String(what), -28)
               .arg(share.cases, 7)
               .arg(100.0 * share.value(), 8, 'f', 3)
               .arg(QLatin1String(verdictOf(share.cases > 0 && within)));
    return share.cases > 0 && within;
}

bool judgeRejection(const Blocks& blocks, const Maps& maps, QTextStream& out)
{
    Share withoutEdge;
    Share withEdge;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        if (blocks.hasEdge[i]) {
            withEdge.add(isRejected(maps, i));
        } else if (blocks.planted[i].lit && blocks.planted[i].mostStep == 0.0) {
            withoutEdge.add(isRejected(maps, i));
        }
    }
    const bool cleared =
        judge("without an edge, rejected", withoutEdge, withoutEdge.value() >= leastRejected, out);
    return judge("with an edge, rejected", withEdge, withEdge.value() <= mostLost, out) && cleared;
}

/// The weights of edges that were fitted: those of a rejected one say nothing.
bool judgeWeights(const Blocks& blocks, const Maps& maps, const RunLimits& limits, QTextStream& out)
{
    Share sound;
    std::array<Deviation, speciesCount> deviations;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        if (!blocks.hasEdge[i] || isRejected(maps, i)) {
            continue;
        }
        for (std::size_t s = 0; s < maps.size(); ++s) {
            const double weight = maps[s].values[i];
            sound.add(std::fabs(weight) < weightLimit);
            deviations[s].add(weight - blocks.planted[i].fractions[s]);
        }
    }
    bool within = judge("weights below 2", sound, sound.value() >= leastSoundWeights, out);
    out << tableHead;
    for (std::size_t s = 0; s < deviations.size(); ++s) {
        const bool good = deviations[s].isWithin(limits.bias, limits.rms);
        printRow(QString::number(s), "fraction", deviations[s], verdictOf(good), out);
        within = within && good;
    }
    return within;
}

CompareResult compareRun(const QString& folder, const HardRun& run, const RunLimits& limits,
                         const Blocks& blocks, Maps* maps, QTextStream& out)
{
    if (!readMaps(folder, run, blocks, maps, out)) {
        return compareFailed;
    }
    out << QStringLiteral("\n%1, half width %2; edges from a step of %3 on; limits: bias %4, rms "
                          "%5\n")
               .arg(QLatin1String(limits.title))
               .arg(blocks.halfWidth)
               .arg(hardEdgeStep)
               .arg(limits.bias)
               .arg(limits.rms);
    const bool rejects = judgeRejection(blocks, *maps, out);
    return judgeWeights(blocks, *maps, limits, out) && rejects ? compareWithin : compareOutside;
}

bool savePictures(const QString& folder, const Blocks& blocks, const Maps& maps, QTextStream& out)
{
    for (int s = 0; s < speciesCount; ++s) {
        if (!savePicture(folder, s, blocks, maps[static_cast<std::size_t>(s)], out)) {
            return false;
        }
    }
    return true;
}
} // namespace

CompareResult compareHard(const QString& folder, const Truth& truth, int halfWidth,
                          QTextStream& out)
{
    Blocks blocks;
    Blocks pixels;
    if (!makeBlocks(truth, halfWidth, &blocks, out) || !makeBlocks(truth, 0, &pixels, out)) {
        return compareFailed;
    }
    Maps straight;
    Maps victoreen;
    const RunLimits straightLimits{"Straight lines", straightBiasLimit, straightRmsLimit};
    const RunLimits victoreenLimits{"Victoreen lines", victoreenBiasLimit, victoreenRmsLimit};
    const CompareResult first =
        compareRun(folder, straightRun, straightLimits, blocks, &straight, out);
    const CompareResult second =
        compareRun(folder, victoreenRun, victoreenLimits, pixels, &victoreen, out);
    if (first == compareFailed || second == compareFailed) {
        return compareFailed;
    }
    return savePictures(folder, blocks, straight, out) ? std::max(first, second) : compareFailed;
}
