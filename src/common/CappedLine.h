#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QTextStream>

// Lines of files that may be no text at all: none takes more memory than a stated number of bytes
// or characters.

/// The next line with its end, cut after `most` bytes; what is cut off is read past, so that the
/// next call begins with the next line. Empty at the end of the device.
inline QByteArray readCappedLine(QIODevice& in, qint64 most)
{
    QByteArray line = in.readLine(most);
    for (QByteArray piece = line; !piece.isEmpty() && !piece.endsWith('\n');)
        piece = in.readLine(most);
    return line;
}

/// The next line without its end, or an empty text in place of one of `most` characters or more.
/// Empty at the end of the stream.
inline QString readLineBelow(QTextStream& in, int most)
{
    QString line = in.readLine(most);
    if (line.size() < most)
        return line;
    // The rest comes in pieces of full length up to the one that ends at the line's end.
    while (in.readLine(most).size() >= most) {
    }
    return {};
}
