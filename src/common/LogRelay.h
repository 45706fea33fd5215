#pragma once

#include <QObject>
#include <QVector>
#include <QtGlobal>

/// A line of the log with the time of its writing.
struct LogLine
{
    qint64 time = 0; ///< [ms] since 1970-01-01 UTC
    QString text;    ///< at most LogRelay::longestText characters; may hold line ends
};

/// While it lives, each log line of any thread goes to the message handler that was there before,
/// unchanged, and a copy is kept for a LogTap. One at a time; made and destroyed by one thread.
/// Handlers installed later are to be gone before it.
class LogRelay
{
public:
    /// Lines kept until a tap takes them; the oldest give way.
    static constexpr int mostLines = 5000;
    /// A viewer lays out a line as a whole; what is longer is cut in the copy.
    static constexpr int longestText = 2000;

    LogRelay();
    ~LogRelay();
    Q_DISABLE_COPY(LogRelay)
};

/// Takes the lines that the relay has kept, also those from before it existed. One at a time: the
/// latest one made is told. Belongs to the thread that made it.
class LogTap : public QObject
{
    Q_OBJECT
public:
    explicit LogTap(QObject* parent = nullptr);
    ~LogTap() override;

    /// The lines since the last call, oldest first.
    QVector<LogLine> take();

Q_SIGNALS:
    /// Lines wait to be taken. Comes through the event loop, once between two calls of take(), so
    /// that a flood of lines costs one event.
    void linesWait();
};
