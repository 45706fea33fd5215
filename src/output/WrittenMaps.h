#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Remembers from which map each file of this run was written.
class WrittenMaps
{
public:
    /// A file was written from this map. When it held another map of this run before, one log line
    /// tells so.
    void add(const QString& file, const QString& map);

    /// A comment line of a batch for each file: the map and the file.
    QStringList lines() const;

private:
    QHash<QString, QString> mapOfFile_; ///< by canonical path
};
