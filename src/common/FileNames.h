#pragma once

#include <QString>
#include <QStringList>

// Names of files. Only what the program itself gives or knows counts as a file's extension: tif
// tiff dat txt csv png bmp jpg emp bat, in any case, so that "sample_0.25" has none. Names built
// here keep the folder part as it was written; a point at the end of a name goes.

/// Absolute path of `name`; `defaultExt` becomes its extension when it has none. An empty name
/// stays empty, so that saving under it fails instead of making a hidden file.
QString withExtension(const QString& name, const QString& defaultExt);

/// The name with `ext` in place of its own extension, if it has one: "d/a.txt" and "dat" give
/// "d/a.dat". An empty name stays empty.
QString withReplacedExtension(const QString& name, const QString& ext);

/// The name with "-" and `suffix` put in front of its extension: "d/a.tif" and "cBar" give
/// "d/a-cBar.tif", "a_0.5" and "1" give "a_0.5-1".
QString addSuffix(const QString& name, const QString& suffix);

/// The name with a running number: addSuffix() with the number's text as it stands.
QString withInsertedNumber(const QString& name, const QString& num);

/// The order of file lists: numbers in the names count by their value, "a9" before "a10"; small and
/// capital letters alike unless nothing else tells two names apart.
bool naturallyLess(const QString& a, const QString& b);
void sortNaturally(QStringList& names);

/// The files of a folder that match one of the filters, all of them without a filter, in natural
/// order. The folder's text stands directly in front of each name, so it ends with "/".
QStringList filesOfPattern(const QString& folder, const QStringList& filters);

/// The filter, by the common start of the names, by which filesOfPattern() finds just these files
/// of the folder in this order; empty without one. There is at least one file.
QString patternOfFiles(const QStringList& files, const QString& folder);
