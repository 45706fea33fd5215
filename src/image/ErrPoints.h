#pragma once

#include <QPoint>
#include <QSet>
#include <QSize>
#include <QString>
#include <QVector>

class QIODevice;

/// A list of bad pixels ("error points") in detector coordinates. A value: every load job and every
/// image carries its own copy, so a list changed during a load does no harm.
class ErrPoints
{
public:
    bool active = false; ///< the list is applied
    QString fileName;    ///< canonical path of the definition file
    int sizeX = 0;       ///< detector size from the "# Size" line
    int sizeY = 0;

    /// The bad pixels in the order of the file.
    const QVector<QPoint>& points() const { return points_; }
    void add(int x, int y);
    void clear();

    /// Reads a definition file: "# Size w h" empties the list and sets the size, "x y" adds a bad
    /// pixel. With keep 0 the old points go first; active is false on return. False, with the list
    /// empty and one log line, when the file can't be opened.
    bool readFile(const QString& fname, int keep);

    /// The same from an open text device.
    void read(QIODevice& in);

    /// The text of a definition file of these pixels, of a detector of that size.
    static QByteArray definition(const QSize& size, const QVector<QPoint>& pixels);

    bool contains(int x, int y) const { return lookup_.contains(key(x, y)); }

private:
    static quint64 key(int x, int y) { return quint64(quint32(x)) << 32 | quint32(y); }

    QVector<QPoint> points_;
    QSet<quint64> lookup_; ///< the same points; a long list would make each correction crawl
};

/// The list of images that are read without one of their own: the dark image. GUI thread.
ErrPoints& defaultErrPoints();
