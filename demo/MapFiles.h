#pragma once

#include <QPoint>
#include <QString>
#include <QVector>

class QTextStream;

/// A saved map: the analysed positions in walking order, with a value each.
struct SavedMap
{
    QVector<QPoint> positions; ///< block centres [pixels]
    QVector<double> values;    ///< may hold nan where an analysis failed
};

/// Block centres of a whole square image, side by side in walking order.
QVector<QPoint> blockCentres(int size, int halfWidth);

/// Reads the "x y value" text form; blanks or commas separate. False, with a sentence in `error`,
/// when a line doesn't hold three numbers or the positions are not the expected ones.
bool readMapText(QTextStream& in, const QVector<QPoint>& expected, SavedMap* map, QString* error);

/// Reads an energy shift map of size*size pixels, row after row, as shifts [eV] at the edge that
/// the file names. False, with a sentence in `error`, when the file is not whole.
bool readShiftMap(QTextStream& in, int size, QVector<double>* shifts, QString* error);

/// Reads a 16-bit map of columns*rows values, row after row. False, with a sentence in `error`, for
/// a file that can't be read or has another size or kind.
bool readMapTiff(const QString& fname, int columns, int rows, QVector<quint16>* values,
                 QString* error);
