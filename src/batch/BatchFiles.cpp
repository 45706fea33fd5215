#include "batch/BatchFiles.h"

#include "batch/CmdLine.h"
#include "batch/CommandTable.h"
#include "batch/ShownArgument.h"
#include "common/FileNames.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

/// How a command names its file.
struct Naming
{
    EX_CMD_ID id;
    const char* extension; ///< of a name that has none, and of all labelled ones
    bool labelled;         ///< a label goes into the name, which the text does not tell
};

/// What is not listed takes the name as it stands. The form of a saved map may be any.
constexpr Naming namings[] = {
    {ExCmdSaveImage, "png", false},    {ExCmdSaveImageWNum, "png", false},
    {ExCmdSaveAllImages, "png", true}, {ExCmdSaveData, "", true},
    {ExCmdSaveAllData, "", true},      {ExCmdSaveDataAsTiff, "tif", true},
    {ExCmdSaveSpectra, "dat", true},   {ExCmdAnalyzerSaveSpectra, "dat", true},
    {ExCmdCalibSaveMap, "emp", false}, {ExCmdScreenshot, "png", false}};

const Naming* namingOf(const CmdLine& line)
{
    const EX_CMD_ID id = exCmdId(line);
    const auto* const row = std::find_if(std::begin(namings), std::end(namings),
                                         [id](const Naming& naming) { return naming.id == id; });
    return row == std::end(namings) ? nullptr : row;
}

QString absolutePath(const QString& name)
{
    return QDir::cleanPath(QFileInfo(name).absoluteFilePath());
}

/// The file that a line without a label writes.
QString pathOf(const CmdLine& line, const Naming* naming, const QString& name)
{
    if (!naming)
        return absolutePath(name);
    const QString numbered =
        naming->id == ExCmdSaveImageWNum ? withInsertedNumber(name, line.arg(1)) : name;
    return absolutePath(withExtension(numbered, QLatin1String(naming->extension)));
}

QString folderFault(const QFileInfo& folder)
{
    if (!folder.exists())
        return QStringLiteral("there is no folder ") + shown(folder.filePath());
    if (!folder.isDir())
        return shown(folder.filePath()) + QStringLiteral(" is no folder");
    return {};
}

} // namespace

QString BatchFiles::readFault(const QString& name) const
{
    const QFileInfo file(name);
    if (!file.exists())
        return isWritten(absolutePath(name)) ? QString()
                                             : QStringLiteral("there is no file ") + shown(name);
    if (file.isDir())
        return shown(name) + QStringLiteral(" is a folder, not a file");
    return file.isReadable() ? QString() : shown(name) + QStringLiteral(" may not be read");
}

QString BatchFiles::writeFault(const CmdLine& line, const QString& name) const
{
    if (withExtension(name, QString()).isEmpty())
        return shown(name) + QStringLiteral(" names no file");
    const Naming* const naming = namingOf(line);
    const QFileInfo folder(QFileInfo(name).path());
    const QString why = folderFault(folder);
    if (!why.isEmpty())
        return why;
    if (!folder.isWritable())
        return QStringLiteral("nothing may be written into the folder ") + shown(folder.filePath());
    if (naming && naming->labelled)
        return {};
    const QFileInfo former(pathOf(line, naming, name));
    if (former.isDir())
        return shown(former.filePath()) + QStringLiteral(" is a folder, not a file");
    return former.exists() && !former.isWritable()
               ? shown(former.filePath()) + QStringLiteral(" may not be written over")
               : QString();
}

QString BatchFiles::patternFault(const CmdLine& line, int& found) const
{
    found = 0;
    const QString& folder = line.arg(1);
    const QFileInfo info(folder);
    const QString why = folderFault(info);
    if (!why.isEmpty())
        return why;
    if (!info.isReadable())
        return QStringLiteral("the folder %1 may not be read").arg(shown(folder));
    if (!folder.endsWith(QLatin1Char('/')))
        return QStringLiteral("the folder %1 needs a \"/\" at its end").arg(shown(folder));
    found = filesOfPattern(folder, line.args.mid(2)).size();
    if (found > 0 || isWrittenInto(absolutePath(folder)))
        return {};
    const QString filters = line.args.mid(2).join(QLatin1Char(' '));
    return QStringLiteral("no file of %1 matches %2")
        .arg(shown(folder), shown(filters.isEmpty() ? QStringLiteral("*") : filters));
}

void BatchFiles::wrote(const CmdLine& line, const QString& name)
{
    const Naming* const naming = namingOf(line);
    if (naming && naming->labelled) {
        const QString base = withReplacedExtension(name, QString());
        labelled_.append({absolutePath(base) + QLatin1Char('-'), QLatin1String(naming->extension)});
    } else {
        written_.insert(pathOf(line, naming, name));
    }
}

bool BatchFiles::isWritten(const QString& path) const
{
    return written_.contains(path) ||
           std::any_of(labelled_.begin(), labelled_.end(), [&path](const Labelled& files) {
               return path.startsWith(files.stem) &&
                      (files.extension.isEmpty() ||
                       path.endsWith(QLatin1Char('.') + files.extension));
           });
}

bool BatchFiles::isWrittenInto(const QString& folder) const
{
    const QString front = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    return std::any_of(written_.begin(), written_.end(),
                       [&front](const QString& path) { return path.startsWith(front); }) ||
           std::any_of(labelled_.begin(), labelled_.end(),
                       [&front](const Labelled& files) { return files.stem.startsWith(front); });
}
