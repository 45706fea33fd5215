#pragma once

#include <QString>

/// Logs one line: the tag, then the present date and time as "yyMMdd hh:mm:ss.zzz". Any thread.
void logTime(const QString& tag);
