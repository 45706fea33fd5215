#include "Compare.h"

#include "DemoFiles.h"
#include "MapFiles.h"
#include "Pictures.h"
#include "Truth.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

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

/// Opens a text file and hands it to a reader `bool(QTextStream&, QString* error)`; a failure is
/// told with the file's name.
template<typename Reader>
bool readText(const QString& fname, QTextStream& out, const Reader& reader)
{
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        out << "Can't open " << fname << '\n';
        return false;
    }
    QTextStream in(&file);
    QString error;
    if (!reader(in, &error)) {
        out << fname << ": " << error << '\n';
        return false;
    }
    return true;
}

/// The planted fields and the blocks that the batch analysed.
struct Blocks
{
    Truth truth;
    int halfWidth = 0;
    int columns = 0;
    QVector<QPoint> centres;
    QVector<BlockTruth> planted;
};

bool readBlocks(const QString& folder, int halfWidth, Blocks* blocks, QTextStream& out)
{
    const auto reader = [blocks](QTextStream& in, QString* error) {
        return readTruth(in, &blocks->truth, error);
    };
    if (!readText(demoFiles::truthFile(folder), out, reader)) {
        return false;
    }
    blocks->halfWidth = halfWidth < 0 ? blocks->truth.halfWidth : halfWidth;
    blocks->centres = blockCentres(blocks->truth.size, blocks->halfWidth);
    if (blocks->centres.isEmpty()) {
        out << "The half width " << blocks->halfWidth << " is too large for the image\n";
        return false;
    }
    const double side = std::sqrt(static_cast<double>(blocks->centres.size()));
    blocks->columns = static_cast<int>(std::lround(side));
    for (const QPoint& centre : blocks->centres) {
        blocks->planted.append(
            blockTruth(blocks->truth, centre.x(), centre.y(), blocks->halfWidth));
    }
    return true;
}

bool readMap(const QString& folder, const MapKind& kind, int species, const Blocks& blocks,
             SavedMap* map, QTextStream& out)
{
    const QString fname = demoFiles::mapText(folder, QLatin1String(kind.name), species);
    return readText(fname, out, [&blocks, map](QTextStream& in, QString* error) {
        return readMapText(in, blocks.centres, map, error);
    });
}

/// The value that a map of this kind should hold at a block.
double plantedValue(const BlockTruth& block, const MapKind& kind, int species)
{
    const double fraction = block.fractions[static_cast<std::size_t>(species)];
    return &kind == &mapKinds[1] ? fraction * block.edgeStep : fraction;
}

/// Differences from the planted values.
struct Deviation
{
    int blocks = 0;
    double sum = 0.0;
    double squares = 0.0;
    double largest = 0.0;

    void add(double difference)
    {
        ++blocks;
        sum += difference;
        squares += difference * difference;
        largest = std::max(largest, std::fabs(difference));
    }
    double bias() const { return blocks > 0 ? sum / blocks : 0.0; }
    double rms() const { return blocks > 0 ? std::sqrt(squares / blocks) : 0.0; }

    /// False also for nan.
    bool isWithin(double mostBias, double mostRms) const
    {
        return blocks > 0 && std::fabs(bias()) <= mostBias && rms() <= mostRms;
    }
};

Deviation deviationOf(const Blocks& blocks, const SavedMap& map, const MapKind& kind, int species)
{
    Deviation deviation;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const BlockTruth& block = blocks.planted[i];
        if (block.usable && block.edgeStep >= leastEdgeStep) {
            deviation.add(map.values[i] - plantedValue(block, kind, species));
        }
    }
    return deviation;
}

/// A row of the table; `verdict` is what it ends with.
void printRow(const QString& name, const char* title, const Deviation& d, const char* verdict,
              QTextStream& out)
{
    out << QStringLiteral("%1  %2  %3  %4  %5  %6  %7\n")
               .arg(name, 7)
               .arg(QLatin1String(title), -12)
               .arg(d.blocks, 6)
               .arg(d.bias(), 8, 'f', 4)
               .arg(d.rms(), 7, 'f', 4)
               .arg(d.largest, 7, 'f', 4)
               .arg(QLatin1String(verdict));
}

const char* verdictOf(bool within)
{
    return within ? "ok" : "OUTSIDE";
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

bool savePicture(const QString& folder, int species, const Blocks& blocks, const SavedMap& map,
                 QTextStream& out)
{
    QVector<double> planted;
    QVector<double> fitted;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const BlockTruth& block = blocks.planted[i];
        const double nothing = std::numeric_limits<double>::quiet_NaN();
        const bool shown = block.usable && block.edgeStep >= leastEdgeStep;
        planted.append(shown ? plantedValue(block, mapKinds[0], species) : nothing);
        fitted.append(shown ? map.values[i] : nothing);
    }
    QDir().mkpath(demoFiles::pictureFolder(folder));
    const QString fname =
        QStringLiteral("%1/truth-result-%2.png").arg(demoFiles::pictureFolder(folder)).arg(species);
    if (!sideBySide(planted, fitted, blocks.columns).save(fname)) {
        out << "Can't write " << fname << '\n';
        return false;
    }
    out << "Planted and fitted fraction of species " << species << ": " << fname << '\n';
    return true;
}

/// One map against the planted field; for fractions with its picture.
CompareResult compareMap(const QString& folder, const MapKind& kind, int species,
                         const Blocks& blocks, QTextStream& table, QTextStream& out)
{
    SavedMap map;
    if (!readMap(folder, kind, species, blocks, &map, out)) {
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
    if (!readMap(folder, rawKind, species, blocks, &map, out)) {
        return compareFailed;
    }
    printRow(QString::number(species), rawKind.title, deviationOf(blocks, map, rawKind, species),
             "", table);
    return compareWithin;
}

/// The energy shift map against the planted shifts, at the centres of the blocks.
CompareResult compareShift(const QString& folder, const Blocks& blocks, QTextStream& table,
                           QTextStream& out)
{
    QVector<double> shifts;
    const int size = blocks.truth.size;
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
} // namespace

CompareResult compareWithTruth(const QString& folder, int halfWidth, QTextStream& out)
{
    Blocks blocks;
    if (!readBlocks(folder, halfWidth, &blocks, out)) {
        return compareFailed;
    }
    QString rows;
    QTextStream table(&rows);
    QVector<CompareResult> results{compareShift(folder, blocks, table, out)};
    for (int s = 0; s < speciesCount; ++s) {
        results.append(showUncalibrated(folder, s, blocks, table, out));
    }
    for (const MapKind& kind : mapKinds) {
        for (int s = 0; s < speciesCount; ++s) {
            results.append(compareMap(folder, kind, s, blocks, table, out));
        }
    }
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
    out << "species  map           blocks      bias      rms  largest\n" << *table.string();
    return worst;
}

CompareResult compareFolders(const QString& folder, const QString& other, int halfWidth,
                             QTextStream& out)
{
    Blocks blocks;
    if (!readBlocks(folder, halfWidth, &blocks, out)) {
        return compareFailed;
    }
    double largest = 0.0;
    for (const MapKind& kind : mapKinds) {
        for (int s = 0; s < speciesCount; ++s) {
            SavedMap here;
            SavedMap there;
            if (!readMap(folder, kind, s, blocks, &here, out) ||
                !readMap(other, kind, s, blocks, &there, out)) {
                return compareFailed;
            }
            largest = std::max(largest, largestDifference(blocks, here, there));
        }
    }
    out << "Largest difference of the maps in " << folder << " and " << other << ": " << largest
        << " (limit " << otherLimit << ")\n";
    return largest <= otherLimit ? compareWithin : compareOutside;
}
