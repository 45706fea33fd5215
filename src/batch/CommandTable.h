#pragma once

#include "common/ExCmdId.h"

#include <QString>
#include <QVector>

class CmdLine;

// The vocabulary of the batch language. Parsing, execution, the check of a text, the editor's
// completion and the manual all come from these tables. Words are compared without regard to case.

enum BatchKeyword : int
{
    KeywordFor,
    KeywordNext,
    KeywordEcho,
    KeywordRemStart,
    KeywordRemEnd,
    KeywordEnd,
    KeywordLet,
    KeywordNone, ///< no keyword
};

struct KeywordRow
{
    BatchKeyword id;
    QString word;
    QString arguments; ///< as in ExCmdRow
    QString effect;

    QString usage() const; ///< the word with its arguments
};

struct ExCmdRow
{
    EX_CMD_ID id;
    QString word;
    /// What it takes, such as "<int x> <int y>"; empty without arguments. The first word of each
    /// is its kind, see CommandArguments.h; one in brackets may be left out, and "..." repeats it.
    QString arguments;
    QString example; ///< arguments for a line that works; empty without arguments
    bool later;      ///< its end comes later: the run waits for it
    QString effect;  ///< a sentence without its full stop

    QString usage() const; ///< the word with its arguments
    QString exampleLine() const;
};

/// The 7 keywords, in the order of their identifiers.
const QVector<KeywordRow>& keywordTable();

/// The 126 external commands, and a last row that stands for no command.
const QVector<ExCmdRow>& exCmdTable();

/// Commands beyond those; looked up after them.
const QVector<ExCmdRow>& extensionTable();

/// KeywordNone when the line's word is no keyword.
BatchKeyword keywordId(const CmdLine& line);

/// ExCmdNone when the line's word is no external command.
EX_CMD_ID exCmdId(const CmdLine& line);

bool isKeyword(const CmdLine& line);
bool isExCmd(const CmdLine& line);

/// The row of a command; null when there is none with that id.
const ExCmdRow* exCmdRow(int id);

/// The word of an external command, or "UnKnow ExCMD id" when no row has the id.
QString exCmdName(int id);
