#include "common/Log.h"

#include <QDateTime>
#include <QDebug>

void logTime(const QString& tag)
{
    qDebug().noquote() << tag
                       << QDateTime::currentDateTime().toString(
                              QStringLiteral("yyMMdd hh:mm:ss.zzz"));
}
