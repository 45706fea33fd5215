#include "batch/RunWatch.h"

#include "common/SafeInt.h"

namespace {

/// Commands that end sooner would only flicker.
constexpr int tellAfterMs = 500;

} // namespace

RunWatch::RunWatch(QObject* parent)
    : QObject(parent)
{
    tell_.setSingleShot(true);
    tell_.setInterval(tellAfterMs);
    limit_.setSingleShot(true);
    connect(&tell_, &QTimer::timeout, this, [this] {
        told_ = true;
        Q_EMIT waits(command_, since_);
    });
    connect(&limit_, &QTimer::timeout, this, &RunWatch::lookAtLimit);
}

void RunWatch::setLimit(double seconds)
{
    limitMs_ = seconds > 0.0 ? qMax(1, truncatedInt(seconds * 1000.0)) : 0;
}

void RunWatch::commandStarted(const CmdLine& cmd)
{
    leave();
    command_ = cmd;
    since_ = QDateTime::currentDateTime();
    waiting_ = true;
    lastProgress_.start();
    tell_.start();
    if (limitMs_ > 0)
        limit_.start(int(limitMs_));
}

void RunWatch::commandEnded(int /*id*/, int ticket)
{
    if (ticket == command_.ticket)
        leave();
}

void RunWatch::progressed()
{
    lastProgress_.start();
}

void RunWatch::leave()
{
    waiting_ = false;
    tell_.stop();
    limit_.stop();
    if (told_)
        Q_EMIT waitEnded();
    told_ = false;
}

/// Time left without progress. [ms]
qint64 RunWatch::leftMs() const
{
    return limitMs_ - lastProgress_.elapsed();
}

void RunWatch::lookAtLimit()
{
    const qint64 left = leftMs();
    if (left > 0) {
        limit_.start(int(left));
        return;
    }
    // Work on this thread may have held up the events that tell of progress: they come first.
    const int ticket = command_.ticket;
    QMetaObject::invokeMethod(
        this, [this, ticket] { confirmTimeout(ticket); }, Qt::QueuedConnection);
}

void RunWatch::confirmTimeout(int ticket)
{
    if (!waiting_ || ticket != command_.ticket)
        return;
    const qint64 left = leftMs();
    if (left > 0)
        limit_.start(int(left));
    else
        Q_EMIT timedOut(command_);
}
