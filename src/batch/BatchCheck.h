#pragma once

#include "batch/CommandFailure.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// How far a check goes. What lies beyond is told in one line.
struct BatchCheckLimits
{
    int passes = 1000;   ///< of all loops together; then each ends where it is
    int steps = 1000000; ///< lines that are taken, those of loops again at each pass
    int milliseconds = 60000;
    int findingsOfLine = 20; ///< that are listed
};

struct BatchCheckOptions
{
    QString before;    ///< lines that run in front of the text: those of the configuration
    bool files = true; ///< whether files and folders are there is looked at
    BatchCheckLimits limits;
};

/// What a check has found.
struct BatchReport
{
    QVector<CommandFailure> findings;        ///< in the order of their lines
    int count = 0;                           ///< of all findings, those that are not listed too
    qint64 images = 0;                       ///< files that all loads together read
    std::optional<CommandFailure> notWalked; ///< where a limit was met, and what it left out

    /// A line for each finding and for the limit, then the summary, all without line ends. Places
    /// are "file:12: ", or "12: " when `file` is empty.
    QStringList lines(const QString& file) const;
    QString summary() const; ///< "2 findings; 120 images to load"
};

/// Reads a batch text as a run would, with its loops and variables, and tells what would go wrong,
/// without running it: unknown words, arguments that are missing, too many or of a wrong kind,
/// loops that are not closed or never end, unknown elements, files that can't be read or written.
/// A file that an earlier line writes counts as there. The lines behind "quit" or ":end" are not
/// looked at. Logs nothing but quotes that are not closed. Any thread.
BatchReport checkBatch(const QString& text, const BatchCheckOptions& options = {});
