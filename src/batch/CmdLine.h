#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>

/// One line of a batch text, taken apart into a word and its arguments by the item rule of
/// common/TextItems.h. A value; it travels in queued signals.
class CmdLine
{
public:
    CmdLine() = default;

    /// Parses a line. A line of blanks, one whose first visible character is "#", and one whose
    /// first item is an empty pair of quotes have no word. A "#" behind the word is no comment:
    /// it and what follows it are arguments.
    explicit CmdLine(const QString& line);

    bool valid = false;     ///< the line holds a word
    QString line;           ///< the line as given
    QString simplified;     ///< without surplus blanks, cut in front of the first "#"
    bool isKeyword = false; ///< the word begins with ":"
    QString word;
    QStringList args; ///< the items behind the word; empty ones are dropped

    int lineNo = 0;        ///< of its first line in the text, from 1; 0 outside a text
    bool ofConfig = false; ///< the text is that of the configuration's batch lines

    /// Number that the interpreter gives to each external command that it sends, so that the
    /// report of its end can be told from others; 0 for a line that no run waits for.
    int ticket = 0;

    /// Argument i, or an empty text when there are fewer.
    QString arg(int i) const { return args.value(i); }
};

Q_DECLARE_METATYPE(CmdLine)
