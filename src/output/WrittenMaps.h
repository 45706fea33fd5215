#pragma once

#include <QHash>
#include <QString>

/// Remembers from which map each file of this run was written.
class WrittenMaps
{
public:
    /// A file was written from this map. When it held another map of this run before, one log line
    /// tells so.
    void add(const QString& file, const QString& map);

private:
    QHash<QString, QString> mapOfFile_; ///< by canonical path
};
