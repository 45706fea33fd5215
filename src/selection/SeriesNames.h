#pragma once

#include <QStringList>
#include <QVector>

/// Names of files that are alike but for one number.
struct NamedSeries
{
    QString pattern; ///< "i1_*.tif"; the name itself of a file that stands alone
    QStringList names;
};

/// Sorts the names of one folder into series, each in its natural order, the series by their
/// patterns. The number that runs is the last run of digits, "i1_0001.tif"; or one with decimals,
/// "i1_8948.5.tif" or "i1_8948_50.tif", where its whole part changes from file to file rather than
/// from one set of files to another.
QVector<NamedSeries> seriesOfNames(const QStringList& names);
