#include "common/LogRelay.h"

#include <QDateTime>
#include <QMutex>
#include <QScopedValueRollback>

#include <algorithm>
#include <deque>
#include <iterator>

namespace {

struct State
{
    QtMessageHandler previous = nullptr; ///< written while no other thread logs through the relay
    QMutex mutex;                        ///< guards what follows
    std::deque<LogLine> lines;
    LogTap* tap = nullptr;
    bool told = false; ///< the tap has been told of lines that it has not taken yet
};

/// Never destroyed: threads and static objects may log until the process ends.
State& state()
{
    static State* const only = new State;
    return *only;
}

/// The tap is told under the lock, so it can't die meanwhile. Call with the lock held.
void tellTap(State& s)
{
    if (!s.tap || s.told || s.lines.empty())
        return;
    s.told = true;
    QMetaObject::invokeMethod(s.tap, &LogTap::linesWait, Qt::QueuedConnection);
}

void keep(const QString& text)
{
    // Telling the tap goes through Qt, which may log something itself.
    static thread_local bool inside = false;
    if (inside)
        return;
    const QScopedValueRollback<bool> mark(inside, true);
    State& s = state();
    const QMutexLocker lock(&s.mutex);
    s.lines.push_back({QDateTime::currentMSecsSinceEpoch(), text.left(LogRelay::longestText)});
    if (s.lines.size() > LogRelay::mostLines)
        s.lines.pop_front();
    tellTap(s);
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    keep(text);
    if (const QtMessageHandler previous = state().previous)
        previous(type, context, text);
}

} // namespace

LogRelay::LogRelay()
{
    state().previous = qInstallMessageHandler(&handleMessage);
}

LogRelay::~LogRelay()
{
    qInstallMessageHandler(state().previous);
}

LogTap::LogTap(QObject* parent)
    : QObject(parent)
{
    State& s = state();
    const QMutexLocker lock(&s.mutex);
    s.tap = this;
    s.told = false;
    tellTap(s);
}

LogTap::~LogTap()
{
    State& s = state();
    const QMutexLocker lock(&s.mutex);
    if (s.tap == this)
        s.tap = nullptr;
}

QVector<LogLine> LogTap::take()
{
    std::deque<LogLine> taken;
    {
        State& s = state();
        const QMutexLocker lock(&s.mutex);
        taken.swap(s.lines);
        s.told = false;
    }
    QVector<LogLine> lines;
    lines.reserve(int(taken.size()));
    std::move(taken.begin(), taken.end(), std::back_inserter(lines));
    return lines;
}
