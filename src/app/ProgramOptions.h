#pragma once

#include <QString>
#include <QVector>

/// An option of the command line, as help, manual page and documentation tell it.
struct ProgramOption
{
    QString usage;  ///< with its value, and other forms behind commas: "-d <folder>, -br <folder>"
    QString effect; ///< without its full stop
};

/// In the order of telling. Names and words of the program stand between backticks.
const QVector<ProgramOption>& programOptions();

/// How the program is called: an invocation a line, without the program's name.
const QVector<QString>& programUsages();

/// A variable of the environment that the program follows.
const QVector<ProgramOption>& programVariables();
