#pragma once

#include "batch/CommandArguments.h"

class CmdLine;

/// What is wrong with the number of a line's arguments; empty when it fits the description. `usage`
/// is the word with what it takes; of a line that `waits` a missing argument halts the run.
QString countFault(const CmdLine& line, const QVector<Argument>& arguments, const QString& usage,
                   bool waits);

/// Why the argument is not read as what it says; empty for kinds that take any text.
QString valueFault(const Argument& argument, const QString& value);
