#pragma once

#include <QByteArray>
#include <QString>

/// Longest line of a batch text or a configuration, in characters. An editor lays out a line as a
/// whole, and would stand still for minutes beyond it.
constexpr int longestTextLine = 1000000;

/// Text of bytes that a user's editor wrote: UTF-8, or UTF-16 with a byte order mark; bytes that
/// are neither are read as Latin-1, in which every byte is a character. Line ends "\r\n" become
/// "\n" and NULs, which would cut a file's name short, become blanks.
QString decodeText(const QByteArray& bytes);

enum class TextFileResult
{
    Ok,
    CantOpen, ///< no such file, no permission, or not a plain file (a folder, a pipe, a device)
    TooLong,  ///< the file holds more than the bytes allowed
};

/// Reads a whole text file of at most `maxBytes` into `text`, which stays as it is unless the
/// result is Ok. Logs nothing: the caller knows what the file was for.
TextFileResult readTextFile(const QString& fileName, qint64 maxBytes, QString& text);
