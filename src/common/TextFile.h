#pragma once

#include <QByteArray>
#include <QString>

/// Text of bytes that a user's editor wrote: UTF-8, or UTF-16 with a byte order mark; bytes that
/// are neither are read in the system's own encoding. Line ends "\r\n" become "\n".
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
