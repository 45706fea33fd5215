#pragma once

#include <QMetaType>
#include <QString>

class CmdLine;

/// What a line of a batch asked for and did not get. The batch log, the line of the log (which the
/// status bar shows) and the exit code of an unattended run all come from this record.
struct CommandFailure
{
    CommandFailure() = default;
    CommandFailure(const CmdLine& cmd, const QString& reason);

    int lineNo = 0;        ///< from 1; 0 for what stands in no text
    bool ofConfig = false; ///< the number counts the batch lines of the configuration
    QString word;
    QString reason;

    /// "line 3, load_I1_files: Can not open ..."
    QString text() const;
};

/// How many failures there were, and the first of them. A value; it travels in queued signals.
struct FailureCount
{
    int count = 0;
    CommandFailure first;

    void add(const CommandFailure& failure);
    void add(const FailureCount& later);
};

/// The failure as a line of the batch log.
QString batchLogText(const CommandFailure& failure);

/// What stands in front of the reason in a failure's text.
QString failurePlace(const CmdLine& cmd);

Q_DECLARE_METATYPE(FailureCount)
