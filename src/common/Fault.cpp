#include "common/Fault.h"

#include <QDebug>
#include <QMutex>

namespace {

thread_local FaultCollector* collector = nullptr;

struct Tapped
{
    QMutex mutex; ///< guards the tap: it can't end while it is told
    FaultTap* tap = nullptr;
};

Tapped& tapped()
{
    static Tapped state;
    return state;
}

void tell(const QString& text)
{
    const QMutexLocker lock(&tapped().mutex);
    if (FaultTap* const tap = tapped().tap)
        QMetaObject::invokeMethod(
            tap, [tap, text] { Q_EMIT tap->told(text); }, Qt::QueuedConnection);
}

} // namespace

void fault(const QString& text)
{
    if (collector == nullptr) {
        qDebug().noquote() << text;
    } else {
        qDebug().noquote() << collector->where_ + text;
        collector->faults_.append(text);
    }
    tell(text);
}

FaultTap::FaultTap(QObject* parent)
    : QObject(parent)
{
    const QMutexLocker lock(&tapped().mutex);
    tapped().tap = this;
}

FaultTap::~FaultTap()
{
    const QMutexLocker lock(&tapped().mutex);
    if (tapped().tap == this)
        tapped().tap = nullptr;
}

FaultCollector::FaultCollector(const QString& where)
    : outer_(collector)
    , where_(where)
{
    collector = this;
}

FaultCollector::~FaultCollector()
{
    collector = outer_;
}
