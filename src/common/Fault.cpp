#include "common/Fault.h"

#include <QDebug>

namespace {
thread_local FaultCollector* collector = nullptr;
} // namespace

void fault(const QString& text)
{
    if (collector == nullptr) {
        qDebug().noquote() << text;
        return;
    }
    qDebug().noquote() << collector->where_ + text;
    collector->faults_.append(text);
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
