#pragma once

#include <QString>

/// What the log and a batch that waits are told of work that was stopped: by the user, or because
/// of what happens to the images.
inline QString stopReason(const QString& what = {})
{
    const QString stopped = QStringLiteral("stopped");
    return what.isEmpty() ? stopped : stopped + QLatin1String(", ") + what;
}
