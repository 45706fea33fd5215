#pragma once

#include <QCoreApplication>
#include <QSize>
#include <QStringList>
#include <QVector>

/// What a series of images is loaded as.
enum class SeriesUse
{
    Unused,
    I1,
    I0,
    Dark
};

/// Images of a folder that belong together by their names.
struct ImageSeries
{
    QString folder;                    ///< within the folder that was read; empty for that itself
    QString pattern;                   ///< "i1_*.tif"; the file's name when there is but one
    QStringList files;                 ///< paths, in the order of loading
    QSize pixels;                      ///< of the first image that can be read
    SeriesUse use = SeriesUse::Unused; ///< a guess
};

/// What a measurement's folder holds, as far as names, headers and first lines tell.
struct FolderContents
{
    Q_DECLARE_TR_FUNCTIONS(FolderContents)
public:
    QString path;
    QVector<ImageSeries> series;
    QStringList references; ///< paths of spectra, in their natural order
    QStringList badPixels;  ///< paths of lists of bad pixels
    QString fault;          ///< why the folder can't be read, or empty
    QStringList remarks;    ///< what was left out, a sentence each

    /// The last part of the path, by which people know it.
    QString name() const;
};

/// Looks through a folder and its subfolders, one level, and guesses what each series is. Images
/// are not read, and of texts no more than the start; what is too much for a measurement's folder
/// is left out with a remark. Logs nothing.
FolderContents readFolder(const QString& path);
