#pragma once

#include <QSet>
#include <QString>
#include <QVector>

class CmdLine;

/// The files that a batch names, as they will be when its lines are run: those of the disk, and
/// those that its earlier lines write. Nothing is opened or written. Names that are not absolute
/// count from the current folder, as the commands take them.
class BatchFiles
{
public:
    /// Why a file can't be read, or what a line writes can't be written; empty when it can.
    QString readFault(const QString& name) const;
    QString writeFault(const CmdLine& line, const QString& name) const;

    /// Why the lines of load_..._of_pattern find nothing; empty when they find files, whose number
    /// goes to `found`. What an earlier line writes into the folder may match too, and is not
    /// counted.
    QString patternFault(const CmdLine& line, int& found) const;

    /// The line, which writes the file, has been run.
    void wrote(const CmdLine& line, const QString& name);

private:
    bool isWritten(const QString& path) const;
    bool isWrittenInto(const QString& folder) const;

    /// Files with a label of the map or the spectrum in their names.
    struct Labelled
    {
        QString stem;      ///< absolute path up to the label
        QString extension; ///< empty for any
    };

    QSet<QString> written_; ///< absolute paths
    QVector<Labelled> labelled_;
};
