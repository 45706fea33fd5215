#include "common/Fault.h"

#include <QDebug>

namespace {
thread_local FaultCollector* collector = nullptr;
} // namespace

void fault(const QString& text)
{
    qDebug().noquote() << text;
    if (collector != nullptr)
        collector->faults_.append(text);
}

FaultCollector::FaultCollector()
    : outer_(collector)
{
    collector = this;
}

FaultCollector::~FaultCollector()
{
    collector = outer_;
}
