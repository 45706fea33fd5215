#pragma once

#include <QString>
#include <QVector>

class Analyzed2DRes;
class Analyzer;

/// A result map and what stands for it in the names of its files.
struct LabelledMap
{
    Analyzed2DRes* map = nullptr;
    QString label; ///< number of the row that shows the map, or the word of one that is no row's
    QString fullLabel; ///< the same with the kind of map of a row, no two alike: "2-1", "Zansa"
};

/// All result maps of the panel: those of the rows, row by row and kind by kind, then the others.
QVector<LabelledMap> labelledMaps(Analyzer& analyzer);

/// The map with its labels; without a map for one that is not the panel's.
LabelledMap labelledMap(Analyzer& analyzer, const Analyzed2DRes* map);
