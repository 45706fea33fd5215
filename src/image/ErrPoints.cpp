#include "image/ErrPoints.h"

#include "common/CappedLine.h"
#include "common/Fault.h"
#include "common/TextItems.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// Longest line taken from a definition file; a longer one is no list of pixels.
constexpr qint64 maxLineBytes = 4096;

} // namespace

bool ErrPoints::readFile(const QString& fname, int keep)
{
    if (keep == 0)
        clear();
    active = false;
    QFile file(fname);
    // Opening a pipe may never return, and a device may never end.
    if (!QFileInfo(fname).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fault(QStringLiteral("Can't Open ") + quoted(fname));
        fileName.clear();
        clear();
        return false;
    }
    fileName = QFileInfo(fname).canonicalFilePath();
    read(file);
    return true;
}

void ErrPoints::read(QIODevice& in)
{
    while (!in.atEnd()) {
        const QString line = QString::fromUtf8(readCappedLine(in, maxLineBytes));
        QStringList size;
        // Looked for before comments are cut: the line is one itself.
        if (startsWithItems(line.simplified(), size, 2, QStringLiteral("# Size"))) {
            // The size line starts the list anew, on purpose also at the end of a file.
            clear();
            active = false;
            sizeX = size[0].toInt();
            sizeY = size[1].toInt();
            continue;
        }
        QString comment;
        QString x;
        QString y;
        nextItem(nextItem(stripComment(line, comment), x), y);
        if (!y.isEmpty())
            add(x.toInt(), y.toInt());
    }
}

QByteArray ErrPoints::definition(const QSize& size, const QVector<QPoint>& pixels)
{
    QByteArray text = "# Size " + QByteArray::number(size.width()) + '\t' +
                      QByteArray::number(size.height()) + '\n';
    for (const QPoint& pixel : pixels)
        text += QByteArray::number(pixel.x()) + ' ' + QByteArray::number(pixel.y()) + '\n';
    return text;
}

void ErrPoints::add(int x, int y)
{
    points_.append(QPoint(x, y));
    lookup_.insert(key(x, y));
}

void ErrPoints::clear()
{
    points_.clear();
    lookup_.clear();
}

ErrPoints& defaultErrPoints()
{
    static ErrPoints list;
    return list;
}
