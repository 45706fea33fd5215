#pragma once

#include "batch/CmdLine.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// Watches the command that a batch run waits for: tells when it takes long, and when it makes no
/// progress for longer than a limit. GUI thread.
class RunWatch : public QObject
{
    Q_OBJECT
public:
    explicit RunWatch(QObject* parent = nullptr);

    /// Time without progress after which timedOut() comes; 0, as at the start, for never. [s]
    void setLimit(double seconds);

    bool isWaiting() const { return waiting_; }

public Q_SLOTS:
    void commandStarted(const CmdLine& cmd);
    /// Another ticket than that of the command changes nothing.
    void commandEnded(int id, int ticket);
    /// What the command does goes on: a file was read, positions were fitted.
    void progressed();
    /// The run waits no longer, whatever becomes of the command.
    void leave();

Q_SIGNALS:
    /// The run has waited for the command for a while, too long to be overlooked.
    void waits(const CmdLine& cmd, const QDateTime& since);
    /// A wait that was told has ended.
    void waitEnded();
    void timedOut(const CmdLine& cmd);

private:
    void lookAtLimit();
    void confirmTimeout(int ticket);
    qint64 leftMs() const;

    CmdLine command_;
    QDateTime since_;
    QElapsedTimer lastProgress_;
    QTimer tell_;
    QTimer limit_;
    qint64 limitMs_ = 0;
    bool waiting_ = false;
    bool told_ = false;
};
