#pragma once

#include "common/ExCmdId.h"

#include <QString>
#include <QVector>

class CmdLine;

// The vocabulary of the batch language. Parsing, execution and the list of commands in the manual
// all come from these tables. Words are compared without regard to case.

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
};

struct ExCmdRow
{
    EX_CMD_ID id;
    QString word;
    QString arguments; ///< for the reader, such as "<int x> <int y>"; empty without arguments
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

/// The word of an external command, or "UnKnow ExCMD id" when no row has the id.
QString exCmdName(int id);
