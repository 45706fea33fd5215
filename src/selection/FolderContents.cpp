#include "selection/FolderContents.h"

#include "common/FileNames.h"
#include "image/ImageSize.h"
#include "selection/FolderGuess.h"
#include "selection/SeriesNames.h"
#include "selection/TextKind.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace {

// A measurement has some thousand files; beyond these somebody has chosen a home folder.
constexpr int mostFolders = 100;
constexpr int mostFiles = 50000;
constexpr int mostSeries = 50;
constexpr int mostTexts = 200;
/// Files of a series whose headers are tried: the first may be broken, and often is.
constexpr int mostTries = 3;

bool hasSuffix(const QString& name, std::initializer_list<const char*> suffixes)
{
    const QString own = QFileInfo(name).suffix().toLower();
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [&own](const char* suffix) { return own == QLatin1String(suffix); });
}

/// Reads one folder after the other into what it was given.
class FolderReader
{
public:
    explicit FolderReader(FolderContents& contents)
        : contents_(contents)
    {
    }

    void read()
    {
        readOne(QString());
        const QDir dir(contents_.path);
        seen_.insert(dir.canonicalPath());
        const QStringList folders =
            dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
        for (const QString& folder : folders.mid(0, mostFolders)) {
            // A link may lead back here, or to a folder that another leads to.
            const QString canonical = QFileInfo(dir.filePath(folder)).canonicalFilePath();
            if (seen_.contains(canonical))
                continue;
            seen_.insert(canonical);
            readOne(folder);
        }
        if (folders.size() > mostFolders)
            contents_.remarks.append(
                FolderContents::tr("Only %1 of %2 folders were looked through.")
                    .arg(mostFolders)
                    .arg(folders.size()));
        if (filesLeft_ <= 0)
            contents_.remarks.append(
                FolderContents::tr("Only the first %1 files were looked at.").arg(mostFiles));
        keepLargestSeries();
        takeSizes();
        takeTexts();
    }

private:
    void readOne(const QString& folder)
    {
        const QString path = QDir(contents_.path).filePath(folder);
        QStringList images;
        QStringList dats;
        for (QDirIterator it(path, QDir::Files); filesLeft_ > 0 && it.hasNext(); --filesLeft_) {
            it.next();
            const QString name = it.fileName();
            if (hasSuffix(name, {"tif", "tiff", "img"}))
                images.append(name);
            else if (hasSuffix(name, {"dat"}))
                dats.append(name);
            else if (hasSuffix(name, {"txt", "csv", "xmu", "nor", "xdi", "prn", "asc"}))
                texts_.append(it.filePath());
        }
        for (const NamedSeries& series : seriesOfNames(images))
            addSeries(folder, series);
        for (const NamedSeries& series : seriesOfNames(dats)) {
            if (imageSize(QDir(path).filePath(series.names.first())).isValid()) {
                addSeries(folder, series);
                continue;
            }
            for (const QString& name : series.names)
                texts_.append(QDir(path).filePath(name));
        }
    }

    void addSeries(const QString& folder, const NamedSeries& named)
    {
        const QDir dir(QDir(contents_.path).filePath(folder));
        ImageSeries series;
        series.folder = folder;
        series.pattern = named.pattern;
        for (const QString& name : named.names)
            series.files.append(dir.filePath(name));
        contents_.series.append(series);
    }

    void keepLargestSeries()
    {
        QVector<ImageSeries>& all = contents_.series;
        if (all.size() <= mostSeries)
            return;
        contents_.remarks.append(FolderContents::tr("Only the %1 largest of %2 series are shown.")
                                     .arg(mostSeries)
                                     .arg(all.size()));
        QVector<int> sizes;
        for (const ImageSeries& series : qAsConst(all))
            sizes.append(series.files.size());
        std::nth_element(sizes.begin(), sizes.begin() + mostSeries, sizes.end(),
                         std::greater<int>());
        const int tooSmall = sizes.at(mostSeries);
        // Those of the limit's own size come in as long as there is room.
        auto room = mostSeries -
                    std::count_if(all.cbegin(), all.cend(), [tooSmall](const ImageSeries& series) {
                        return series.files.size() > tooSmall;
                    });
        QVector<ImageSeries> kept;
        for (const ImageSeries& series : qAsConst(all)) {
            if (series.files.size() > tooSmall || (series.files.size() == tooSmall && room-- > 0))
                kept.append(series);
        }
        all = kept;
    }

    /// Series without an image that can be read go.
    void takeSizes()
    {
        QVector<ImageSeries> readable;
        QStringList others;
        for (ImageSeries& series : contents_.series) {
            for (int i = 0; i < qMin(mostTries, series.files.size()) && !series.pixels.isValid();
                 ++i)
                series.pixels = imageSize(series.files.at(i));
            if (series.pixels.isValid())
                readable.append(series);
            else
                others.append(series.pattern);
        }
        contents_.series = readable;
        if (!others.isEmpty())
            contents_.remarks.append(FolderContents::tr("No images that can be read: %1")
                                         .arg(others.mid(0, 3).join(QLatin1String(", "))) +
                                     (others.size() > 3 ? QStringLiteral(" ...") : QString()));
    }

    void takeTexts()
    {
        if (texts_.size() > mostTexts)
            contents_.remarks.append(
                FolderContents::tr("Only the first %1 of %2 text files were looked at.")
                    .arg(mostTexts)
                    .arg(texts_.size()));
        sortNaturally(texts_);
        for (const QString& text : qAsConst(texts_).mid(0, mostTexts)) {
            const TextKind kind = textKindOf(text);
            if (kind == TextKind::Reference)
                contents_.references.append(text);
            else if (kind == TextKind::BadPixels)
                contents_.badPixels.append(text);
        }
        keepFolderOfReferences();
    }

    /// Where a folder says that it holds the references, spectra elsewhere are something else, such
    /// as results.
    void keepFolderOfReferences()
    {
        QStringList kept;
        for (const QString& file : qAsConst(contents_.references)) {
            const QString folder = QFileInfo(file).path();
            const bool isHere = QDir(folder) == QDir(contents_.path);
            if (!isHere && namesReferences(QFileInfo(folder).fileName()))
                kept.append(file);
        }
        if (!kept.isEmpty())
            contents_.references = kept;
    }

    FolderContents& contents_;
    QSet<QString> seen_; ///< canonical paths of folders
    QStringList texts_;  ///< files that may be of interest
    int filesLeft_ = mostFiles;
};

} // namespace

QString FolderContents::name() const
{
    const QString own = QDir(path).dirName();
    return own.isEmpty() ? QDir::toNativeSeparators(path) : own;
}

FolderContents readFolder(const QString& path)
{
    FolderContents contents;
    contents.path = QDir(path).absolutePath();
    const QFileInfo folder(path);
    if (path.isEmpty() || !folder.isDir() || !folder.isReadable() || !folder.isExecutable()) {
        contents.fault = FolderContents::tr("The folder %1 can't be read").arg(contents.name());
        return contents;
    }
    FolderReader(contents).read();
    guessUses(contents.series);
    return contents;
}
