#pragma once

#include <QString>
#include <QVector>

/// What an argument of a batch line is read as.
enum class ArgumentKind
{
    Text,
    Whole, ///< a decimal whole number
    Number,
    Switch,  ///< one of a few numbers, such as "0|1"
    Mode,    ///< "new", or anything else
    File,    ///< that is read
    NewFile, ///< that is written
    Folder,
    Filter, ///< a pattern of file names
    Element,
};

/// An argument as the command tables describe it.
struct Argument
{
    ArgumentKind kind = ArgumentKind::Text;
    QString word;          ///< of its kind, as it stands there: "int", "0|1"
    QString name;          ///< what it means; may be empty
    bool optional = false; ///< may be left out
    bool repeated = false; ///< may come any number of times; the last one alone
};

/// Takes a description such as "<int row> <file> [<use>]" apart. A kind that is none is a text.
QVector<Argument> argumentsOf(const QString& description);

/// Fewest arguments that a line needs, and most that it takes; -1 for any number. One that repeats
/// itself needs to be there once, but for filters: no filter means all files.
int leastArguments(const QVector<Argument>& arguments);
int mostArguments(const QVector<Argument>& arguments);
