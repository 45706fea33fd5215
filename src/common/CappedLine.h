#pragma once

#include <QByteArray>
#include <QIODevice>

/// The next line with its end, cut after `most` bytes; what is cut off is read past, so that the
/// next call begins with the next line. Empty at the end of the device.
inline QByteArray readCappedLine(QIODevice& in, qint64 most)
{
    QByteArray line = in.readLine(most);
    for (QByteArray piece = line; !piece.isEmpty() && !piece.endsWith('\n');)
        piece = in.readLine(most);
    return line;
}
