#include "output/WrittenMaps.h"

#include "common/TextItems.h"

#include <QDebug>
#include <QFileInfo>

QStringList WrittenMaps::lines() const
{
    QStringList lines;
    for (auto written = mapOfFile_.begin(); written != mapOfFile_.end(); ++written)
        lines << QStringLiteral("# map %1 was saved as %2").arg(written.value(), written.key());
    lines.sort();
    return lines;
}

void WrittenMaps::add(const QString& file, const QString& map)
{
    QString& written = mapOfFile_[QFileInfo(file).canonicalFilePath()];
    if (!written.isEmpty() && written != map)
        qDebug().noquote() << QStringLiteral("%1 held map %2 and now holds map %3")
                                  .arg(quoted(file), written, map);
    written = map;
}
