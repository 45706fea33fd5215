#include "batch/History.h"

#include "batch/BatchLine.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>

namespace {

/// A key that ends an entry or acts, rather than one that types.
bool actsByKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return event.text().isEmpty() || event.text() == QLatin1String(" ") ||
               event.modifiers().testFlag(Qt::ControlModifier);
    }
}

} // namespace

History::History(QObject* parent)
    : QObject(parent)
{
    settling_.setSingleShot(true);
    connect(&settling_, &QTimer::timeout, this, &History::settle);
}

void History::follow(Lines lines, Writing writing)
{
    const QStringList now = lines();
    followed_.append({std::move(lines), writing, now, now});
}

void History::follow(EX_CMD_ID id, std::function<QString()> argument)
{
    follow(
        [id, argument = std::move(argument)] { return QStringList(batchLine(id, {argument()})); });
}

void History::followCursor(Lines lines)
{
    const QStringList now = lines();
    cursor_ = {std::move(lines), AllTogether, now, now};
}

void History::begin()
{
    if (recording_)
        return;
    recording_ = true;
    takeAsTold();
    QCoreApplication::instance()->installEventFilter(this);
}

bool History::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::Drop:
    case QEvent::ShortcutOverride:
        // What was typed or dragged so far counts before whatever comes of this event.
        if (event->type() != QEvent::ShortcutOverride || actsByKey(*static_cast<QKeyEvent*>(event)))
            settle();
        settling_.start();
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
    case QEvent::Wheel:
        settling_.start();
        break;
    default:
        break;
    }
    return false;
}

void History::settle()
{
    if (!records())
        return;
    for (Followed& followed : followed_) {
        if (followed.writing == InState)
            continue;
        const QStringList now = followed.lines();
        if (now == followed.told)
            continue;
        const QStringList anew = newOnes(followed, now);
        followed.told = now;
        write(anew);
    }
}

QStringList History::newOnes(const Followed& followed, const QStringList& now)
{
    if (followed.writing == AllTogether)
        return now;
    QStringList anew;
    for (const QString& line : now) {
        if (!followed.told.contains(line))
            anew.append(line);
    }
    return anew;
}

void History::add(const QStringList& lines)
{
    if (!records())
        return;
    const QStringList place = cursor_.lines ? cursor_.lines() : QStringList();
    if (place != cursor_.told) {
        cursor_.told = place;
        write(place);
    }
    write(lines);
    takeAsTold();
}

void History::add(EX_CMD_ID id, const QStringList& arguments)
{
    add(batchLine(id, arguments));
}

void History::write(const QStringList& lines)
{
    if (lines.isEmpty())
        return;
    lines_ += lines;
    Q_EMIT added(lines);
}

void History::takeAsTold()
{
    for (Followed& followed : followed_) {
        if (followed.writing != InState)
            followed.told = followed.lines();
    }
}

void History::clear()
{
    lines_.clear();
    Q_EMIT cleared();
}

QStringList History::controls() const
{
    QStringList lines;
    for (const Followed& followed : followed_) {
        if (followed.writing != InState)
            lines += followed.lines();
    }
    return lines;
}

QStringList History::wayBack() const
{
    QStringList lines;
    for (const Followed& followed : followed_) {
        if (followed.lines() != followed.atStart)
            lines += followed.atStart;
    }
    return lines;
}

QStringList History::state() const
{
    QStringList lines;
    for (const Followed& followed : followed_) {
        const QStringList now = followed.lines();
        if (now != followed.atStart)
            lines += now;
    }
    return lines;
}

History::Hold::Hold(History& history)
    : history_(history)
{
    history_.settle();
    ++history_.holds_;
}

History::Hold::~Hold()
{
    --history_.holds_;
    if (history_.records())
        history_.takeAsTold();
}
