#pragma once

#include "common/ExCmdId.h"

#include <QString>
#include <QStringList>

/// The line of a batch that gives a command these arguments, quoted where they need it. Empty ones
/// at the end are left out, since the language drops them anyway. Where its items can not hold one
/// (an empty one before others, or one with both blanks and double quotes) the line is a comment
/// that says so.
QString batchLine(EX_CMD_ID id, const QStringList& arguments = {});

/// The same with "1" or "0".
QString batchLine(EX_CMD_ID id, bool on);
