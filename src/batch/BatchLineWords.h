#pragma once

#include <QString>
#include <QVector>

/// What the editor shows a stretch of a batch line as.
enum class BatchRole
{
    Keyword,
    Command,
    Unknown, ///< a word that is neither
    Quoted,
    Variable, ///< "$name$"
    Comment
};

struct BatchStretch
{
    int start;
    int length;
    BatchRole role;
};

/// The stretches of a line of the text, in their order; variables may lie within others. A line
/// that continues the one before has no word of its own.
QVector<BatchStretch> batchStretches(const QString& line, bool continues);

/// The next line continues this one.
bool isContinued(const QString& line);

/// Some keyword or command begins so, in any case.
bool beginsAWord(const QString& text);
