#include "CompareParts.h"

#include "CompareHard.h"
#include "DemoFiles.h"
#include "Pictures.h"

#include <QDir>

#include <algorithm>
#include <limits>

namespace {
bool countsAsEdge(Difficulty difficulty, const BlockTruth& block)
{
    return difficulty == Difficulty::Hard ? block.lit && block.leastStep >= hardEdgeStep
                                          : block.usable && block.edgeStep >= leastEdgeStep;
}
} // namespace

bool readTruthOf(const QString& folder, Truth* truth, QTextStream& out)
{
    return readText(demoFiles::truthFile(folder), out, [truth](QTextStream& in, QString* error) {
        return readTruth(in, truth, error);
    });
}

bool makeBlocks(const Truth& truth, int halfWidth, Blocks* blocks, QTextStream& out)
{
    blocks->halfWidth = halfWidth < 0 ? truth.halfWidth : halfWidth;
    blocks->centres = blockCentres(truth.size, blocks->halfWidth);
    if (blocks->centres.isEmpty()) {
        out << "The half width " << blocks->halfWidth << " is too large for the image\n";
        return false;
    }
    const double side = std::sqrt(static_cast<double>(blocks->centres.size()));
    blocks->columns = static_cast<int>(std::lround(side));
    for (const QPoint& centre : blocks->centres) {
        const BlockTruth block = blockTruth(truth, centre.x(), centre.y(), blocks->halfWidth);
        blocks->planted.append(block);
        blocks->hasEdge.append(countsAsEdge(truth.difficulty, block));
    }
    return true;
}

bool readMap(const QString& folder, const QString& kind, int species, const Blocks& blocks,
             SavedMap* map, QTextStream& out)
{
    const QString fname = demoFiles::mapText(folder, kind, species);
    return readText(fname, out, [&blocks, map](QTextStream& in, QString* error) {
        return readMapText(in, blocks.centres, map, error);
    });
}

void Deviation::add(double difference)
{
    ++blocks;
    sum += difference;
    squares += difference * difference;
    largest = std::max(largest, std::fabs(difference));
}

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

bool savePicture(const QString& folder, int species, const Blocks& blocks, const SavedMap& map,
                 QTextStream& out)
{
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    QVector<double> planted;
    QVector<double> fitted;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        const double fraction = blocks.planted[i].fractions[static_cast<std::size_t>(species)];
        planted.append(blocks.hasEdge[i] ? fraction : nothing);
        fitted.append(blocks.hasEdge[i] ? map.values[i] : nothing);
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
