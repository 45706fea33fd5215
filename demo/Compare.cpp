#include "Compare.h"

#include "CompareAnalyses.h"
#include "CompareHard.h"
#include "CompareParts.h"
#include "DemoFiles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
struct MapKind
{
    const char* name;
    const char* title;
};

constexpr std::array<MapKind, 2> mapKinds{{{"ratio", "fraction"}, {"dmut", "edge step"}}};
/// Fractions of a fit without the energy shift map: they show what it is good for.
constexpr MapKind rawKind{"raw", "no shift map"};

/// The value that a map of this kind should hold at a block.
double plantedValue(const BlockTruth& block, const MapKind& kind, int species)
{
    const double fraction = block.fractions[static_cast<std::size_t>(species)];
    return &kind == &mapKinds[1] ? fraction * block.edgeStep : fraction;
}

Deviation deviationOf(const Blocks& blocks, const SavedMap& map, const MapKind& kind, int species)
{
    Deviation deviation;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const BlockTruth& block = blocks.planted[i];
        if (blocks.hasEdge[i]) {
            deviation.add(map.values[i] - plantedValue(block, kind, species));
        }
    }
    return deviation;
}

/// The 16-bit form holds the text form's values, cut to the scale, within a step of the scale.
bool agreesWithTiff(const SavedMap& map, const QVector<quint16>& stored)
{
    constexpr double step = (mapScaleMax - mapScaleMin) / 65535.0;
    for (int i = 0; i < stored.size(); ++i) {
        const double value = std::clamp(map.values[i], mapScaleMin, mapScaleMax);
        const double difference = mapScaleMin + step * stored[i] - value;
        if (std::isfinite(value) && std::fabs(difference) > 1.5 * step) {
            return false;
        }
    }
    return true;
}

CompareResult compareTiff(const QString& folder, const MapKind& kind, int species,
                          const Blocks& blocks, const SavedMap& map, QTextStream& out)
{
    const QString fname = demoFiles::mapTiff(folder, QLatin1String(kind.name), species);
    QVector<quint16> stored;
    QString error;
    if (!readMapTiff(fname, blocks.columns, blocks.columns, &stored, &error)) {
        out << fname << ": " << error << '\n';
        return compareFailed;
    }
    if (!agreesWithTiff(map, stored)) {
        out << fname << ": differs from the text form of the same map\n";
        return compareOutside;
    }
    return compareWithin;
}

/// One map against the planted field; for fractions with its picture.
CompareResult compareMap(const QString& folder, const MapKind& kind, int species,
                         const Blocks& blocks, QTextStream& table, QTextStream& out)
{
    SavedMap map;
    if (!readMap(folder, QLatin1String(kind.name), species, blocks, &map, out)) {
        return compareFailed;
    }
    const CompareResult tiff = compareTiff(folder, kind, species, blocks, map, out);
    if (tiff == compareFailed) {
        return compareFailed;
    }
    if (&kind == &mapKinds[0] && !savePicture(folder, species, blocks, map, out)) {
        return compareFailed;
    }
    const Deviation deviation = deviationOf(blocks, map, kind, species);
    const bool within = deviation.isWithin(biasLimit, rmsLimit);
    printRow(QString::number(species), kind.title, deviation, verdictOf(within), table);
    return within ? tiff : compareOutside;
}

/// The fractions of a fit without the energy shift map, which no limit is set to.
CompareResult showUncalibrated(const QString& folder, int species, const Blocks& blocks,
                               QTextStream& table, QTextStream& out)
{
    SavedMap map;
    if (!readMap(folder, QLatin1String(rawKind.name), species, blocks, &map, out)) {
        return compareFailed;
    }
    printRow(QString::number(species), rawKind.title, deviationOf(blocks, map, rawKind, species),
             "", table);
    return compareWithin;
}

/// The energy shift map against the planted shifts, at the centres of the blocks.
CompareResult compareShift(const QString& folder, const Truth& truth, const Blocks& blocks,
                           QTextStream& table, QTextStream& out)
{
    QVector<double> shifts;
    const int size = truth.size;
    const auto reader = [size, &shifts](QTextStream& in, QString* error) {
        return readShiftMap(in, size, &shifts, error);
    };
    if (!readText(demoFiles::shiftMap(folder), out, reader)) {
        return compareFailed;
    }
    Deviation deviation;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const QPoint& centre = blocks.centres[i];
        if (blocks.planted[i].lit) {
            deviation.add(shifts[centre.y() * size + centre.x()] - blocks.planted[i].shift);
        }
    }
    const bool within = deviation.isWithin(shiftBiasLimit, std::numeric_limits<double>::max());
    printRow(QStringLiteral("-"), "shift [eV]", deviation, verdictOf(within), table);
    return within ? compareWithin : compareOutside;
}

/// Largest difference of two maps over blocks without bad pixels. A value that is a number in one
/// map only counts as infinite.
double largestDifference(const Blocks& blocks, const SavedMap& a, const SavedMap& b)
{
    double largest = 0.0;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const bool bothFail = std::isnan(a.values[i]) && std::isnan(b.values[i]);
        if (!blocks.planted[i].usable || bothFail) {
            continue;
        }
        const double difference = std::fabs(a.values[i] - b.values[i]);
        largest = std::max(largest, std::isnan(difference) ? std::numeric_limits<double>::infinity()
                                                           : difference);
    }
    return largest;
}
/// All maps of the easy experiment.
CompareResult compareEasy(const QString& folder, const Truth& truth, const Blocks& blocks,
                          QTextStream& out)
{
    QString rows;
    QTextStream table(&rows);
    QVector<CompareResult> results{compareShift(folder, truth, blocks, table, out)};
    for (int s = 0; s < speciesCount; ++s) {
        results.append(showUncalibrated(folder, s, blocks, table, out));
    }
    for (const MapKind& kind : mapKinds) {
        for (int s = 0; s < speciesCount; ++s) {
            results.append(compareMap(folder, kind, s, blocks, table, out));
        }
    }
    results.append(compareAnalyses(folder, blocks, table, out));
    const CompareResult worst = *std::max_element(results.begin(), results.end());
    if (worst == compareFailed) {
        return compareFailed;
    }
    out << QStringLiteral("\nBlocks of half width %1 with an edge step of %2 or more; limits: bias "
                          "%3, rms %4; of the shift: bias %5\n")
               .arg(blocks.halfWidth)
               .arg(leastEdgeStep)
               .arg(biasLimit)
               .arg(rmsLimit)
               .arg(shiftBiasLimit);
    out << tableHead << *table.string();
    return worst;
}
} // namespace

CompareResult compareWithTruth(const QString& folder, int halfWidth, QTextStream& out)
{
    Truth truth;
    if (!readTruthOf(folder, &truth, out)) {
        return compareFailed;
    }
    if (truth.difficulty == Difficulty::Hard) {
        return compareHard(folder, truth, halfWidth, out);
    }
    Blocks blocks;
    return makeBlocks(truth, halfWidth, &blocks, out) ? compareEasy(folder, truth, blocks, out)
                                                      : compareFailed;
}

CompareResult compareFolders(const QString& folder, const QString& other, int halfWidth,
                             QTextStream& out)
{
    Truth truth;
    Blocks blocks;
    if (!readTruthOf(folder, &truth, out) || !makeBlocks(truth, halfWidth, &blocks, out)) {
        return compareFailed;
    }
    double largest = 0.0;
    for (const MapKind& kind : mapKinds) {
        for (int s = 0; s < speciesCount; ++s) {
            SavedMap here;
            SavedMap there;
            const QLatin1String name(kind.name);
            if (!readMap(folder, name, s, blocks, &here, out) ||
                !readMap(other, name, s, blocks, &there, out)) {
                return compareFailed;
            }
            largest = std::max(largest, largestDifference(blocks, here, there));
        }
    }
    out << "Largest difference of the maps in " << folder << " and " << other << ": " << largest
        << " (limit " << otherLimit << ")\n";
    return largest <= otherLimit ? compareWithin : compareOutside;
}
