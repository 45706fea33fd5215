#include "analysis/MapLabels.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"

namespace {

/// A map that is no row's.
struct WordOfMap
{
    Analyzed2DRes* (Analyzer::*map)();
    const char* word;
};

constexpr WordOfMap words[] = {{&Analyzer::zansaMap, "Zansa"}, {&Analyzer::dEdgeMap, "dEdge"}};

} // namespace

QVector<LabelledMap> labelledMaps(Analyzer& analyzer)
{
    QVector<LabelledMap> maps;
    const QVector<LCFReference*>& rows = analyzer.refs();
    for (int row = 0; row < rows.size(); ++row) {
        for (int kind = 0; kind < LCFReference::mapKinds; ++kind)
            maps.append({rows[row]->map(kind), QString::number(row),
                         QStringLiteral("%1-%2").arg(row).arg(kind)});
    }
    for (const WordOfMap& other : words) {
        const QString word = QLatin1String(other.word);
        maps.append({(analyzer.*other.map)(), word, word});
    }
    return maps;
}

LabelledMap labelledMap(Analyzer& analyzer, const Analyzed2DRes* map)
{
    for (const LabelledMap& known : labelledMaps(analyzer)) {
        if (known.map == map)
            return known;
    }
    return {};
}
