// What the history and sessions are told of the stacks.
#include "batch/BatchLine.h"
#include "batch/CommandBook.h"
#include "common/FileNames.h"
#include "conduct/StackConductor.h"
#include "selection/SelectDataFiles.h"

#include <QFileInfo>

void StackConductor::tellHistory(const Loading& loading, EX_CMD_ID ofI1, EX_CMD_ID ofI0,
                                 const QStringList& arguments) const
{
    if (history_)
        history_->add(&loading == &i1_ ? ofI1 : ofI0, arguments);
}

/// Before the load, which goes by the controls as they stand.
void StackConductor::tellLoad(const Loading& loading, const QStringList& files, bool newFile) const
{
    if (!history_ || files.isEmpty())
        return;
    history_->settle();
    history_->add(loadLine(loading, files, newFile));
}

QString StackConductor::loadLine(const Loading& loading, const QStringList& files,
                                 bool newFile) const
{
    const bool ofI1 = &loading == &i1_;
    const QString mode = newFile ? QStringLiteral("new") : QStringLiteral("add");
    const QString folder = QFileInfo(files.first()).path() + QLatin1Char('/');
    const QString filter = patternOfFiles(files, folder);
    if (filter.isEmpty())
        return batchLine(ofI1 ? ExCmdLoadI1Files : ExCmdLoadI0Files, QStringList(mode) + files);
    return batchLine(ofI1 ? ExCmdLoadI1FilesOfPattern : ExCmdLoadI0FilesOfPattern,
                     {mode, folder, filter});
}

QStringList StackConductor::jobLines(const Loading& loading, int skip, int cutFirst,
                                     int cutLast) const
{
    const bool ofI1 = &loading == &i1_;
    return {batchLine(ofI1 ? ExCmdSkipI1 : ExCmdSkipI0, {QString::number(skip)}),
            batchLine(ofI1 ? ExCmdCutFI1 : ExCmdCutFI0, {QString::number(cutFirst)}),
            batchLine(ofI1 ? ExCmdCutLI1 : ExCmdCutLI0, {QString::number(cutLast)})};
}

/// What brings the stack's images about; its fields stand then as they do now.
QStringList StackConductor::stackLines(const Loading& loading) const
{
    const bool ofI1 = &loading == &i1_;
    if (loading.jobs.isEmpty())
        return {batchLine(ofI1 ? ExCmdClearI1Files : ExCmdClearI0Files)};
    QStringList lines;
    for (const LoadJob& job : loading.jobs)
        lines << jobLines(loading, job.skip, job.cutFirst, job.cutLast)
              << loadLine(loading, job.files, lines.isEmpty());
    const SelectDataFiles& row = *loading.row;
    lines << jobLines(loading, row.skip(), row.cutFirst(), row.cutLast());
    // The files have brought one of their own.
    if (!row.typedExposure().isNull())
        lines << batchLine(ofI1 ? ExCmdExposureI1 : ExCmdExposureI0, {row.typedExposure()});
    return lines;
}
