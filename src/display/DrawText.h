#pragma once

#include <QColor>
#include <QRectF>
#include <QStringList>
#include <QVector>

class QBrush;
class QFont;
class QPainter;

/// Text on pictures and plots: fitted into rectangles, rotated, in columns, and beside small check
/// boxes.
///
/// Rectangles given by reference are normalised in place. Flags are those of QPainter::drawText.
/// Texts are drawn in the rectangle given, also where they are larger than it; a rectangle without
/// room for any text leaves it out. The painter keeps its own font and, but for drawCheckBox(), its
/// pen. GUI thread.
class DrawText
{
public:
    enum Mode
    {
        AsIs = 0,  ///< in the given font as it stands
        Fitted = 1 ///< scaled to the greatest size that fits the rectangle
    };

    QColor frameColor{0, 220, 220};
    QColor selectedFill{170, 255, 170};
    QColor unselectedFill{140, 180, 140};
    QColor textColor{Qt::black};
    QVector<QRectF> occupied; ///< places taken on a picture, filled and cleared by its owner

    /// Makes width and height non-negative; the corners stay.
    static void normalize(QRectF& rect);

    /// Draws the text and returns the rectangle that it takes in a box of 1000 by 1000 at the
    /// corner of `rect`. A fitted text gets at most maxPoint [points]; 0 and less is no limit.
    static QRectF drawFitted(QPainter* painter, QRectF& rect, const QFont& font, int flags,
                             int mode, const QString& text, double maxPoint);

    /// The same in a box of the size of `rect` which is turned by `angle` [degrees, clockwise]
    /// round its centre. That centre is the *corner* of `rect`. With `fill` the brush fills the
    /// box first. The rectangle returned is in the turned coordinates.
    static QRectF drawRotated(QPainter* painter, double angle, QRectF& rect, const QFont& font,
                              int flags, int mode, const QString& text, double maxPoint, bool fill,
                              const QBrush& brush);

    /// What drawFitted() would return without a limit of the size.
    static QRectF boundingFitted(QPainter* painter, QRectF& rect, const QFont& font, int flags,
                                 int mode, const QString& text);

    /// Size [points] at which the text fits the rectangle; infinite for an empty text.
    static double fittedPointSize(QPainter* painter, QRectF& rect, const QFont& font, int flags,
                                  const QString& text);

    /// Draws texts one after the other, the rectangle moving by (dx, dy) after each. In mode AsIs
    /// all get one size, at which each of them fits; in mode Fitted each has its own.
    static void drawColumn(QPainter* painter, QRectF& rect, double dx, double dy, const QFont& font,
                           int flags, int mode, const QStringList& texts, double maxPoint);

    /// Draws pairs of texts, one at the left and one at the right end of the rectangle, in one
    /// size at which the longest pair fits. The shorter list is filled up with empty texts.
    static void drawTwoColumns(QPainter* painter, QRectF& rect, double dx, double dy,
                               const QFont& font, const QStringList& leftTexts,
                               const QStringList& rightTexts, double maxPoint);

    /// A check box of `size` pixels standing on y, and its text as far as xEnd pixels.
    void drawCheckBox(QPainter* painter, bool checked, const QString& text, double x, double xEnd,
                      double y, double size) const;
    /// The mouse is strictly inside such a box.
    static bool checkBoxHit(const QPointF& mouse, double x, double y, double size);

    /// The rectangle overlaps an occupied one; touching is not overlapping.
    bool hitsOccupied(QRectF& rect) const;
    void addOccupied(const QRectF& rect) { occupied.append(rect); }
};
