#include "CompareAnalyses.h"

#include "DemoFiles.h"

#include <algorithm>

namespace {
/// Of the easy scan [eV].
constexpr double energyStep = 1.0;

double plantedShift(const BlockTruth& block)
{
    return mixtureShift(block.fractions);
}

double plantedStep(const BlockTruth& block)
{
    return block.edgeStep;
}

struct Analysis
{
    const char* word; ///< of the map's file
    const char* title;
    double (*planted)(const BlockTruth& block);
    double mostBias;
    double mostRms;
};

constexpr Analysis analyses[] = {
    {"dEdge", "edge [eV]", plantedShift, edgeBiasLimit, edgeRmsLimit},
    {"DMut", "jump, lines", plantedStep, biasLimit, rmsLimit},
    {"Cu-K-0", "jump, Cu", plantedStep, biasLimit, rmsLimit},
};

CompareResult compareAnalysis(const QString& folder, const Analysis& analysis, const Blocks& blocks,
                              QTextStream& table, QTextStream& out)
{
    SavedMap map;
    const auto reader = [&](QTextStream& in, QString* error) {
        return readMapText(in, blocks.centres, &map, error);
    };
    if (!readText(demoFiles::analysisMap(folder, QLatin1String(analysis.word)), out, reader)) {
        return compareFailed;
    }
    Deviation deviation;
    for (int i = 0; i < blocks.planted.size(); ++i) {
        if (blocks.hasEdge[i]) {
            deviation.add(map.values[i] - analysis.planted(blocks.planted[i]));
        }
    }
    const bool within = deviation.isWithin(analysis.mostBias, analysis.mostRms);
    printRow(QStringLiteral("-"), analysis.title, deviation, verdictOf(within), table);
    return within ? compareWithin : compareOutside;
}
} // namespace

double mixtureShift(const std::array<double, speciesCount>& fractions)
{
    const auto mixture = [&fractions](double energy) {
        double sum = 0.0;
        for (int s = 0; s < speciesCount; ++s) {
            sum +=
                fractions[static_cast<std::size_t>(s)] * speciesShape(Difficulty::Easy, s, energy);
        }
        return sum;
    };
    double below = demoEdgeEnergy - 8.0;
    double above = demoEdgeEnergy + 6.0;
    while (above - below > 1e-6) {
        const double middle = 0.5 * (below + above);
        (mixture(middle) < 0.5 ? below : above) = middle;
    }
    return below - demoEdgeEnergy - energyStep / 3.0;
}

CompareResult compareAnalyses(const QString& folder, const Blocks& blocks, QTextStream& table,
                              QTextStream& out)
{
    CompareResult worst = compareWithin;
    for (const Analysis& analysis : analyses) {
        worst = std::max(worst, compareAnalysis(folder, analysis, blocks, table, out));
    }
    return worst;
}
