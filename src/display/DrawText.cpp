#include "display/DrawText.h"

#include "common/SafeInt.h"
#include "display/MouseC.h"

#include <QBrush>
#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// Turns the boxes of rotated texts; a better value would move their pixels.
constexpr double rotationPi = 3.141592653;

constexpr double measuredPoint = 10.0; ///< size at which texts are measured
constexpr double measureBox = 1000.0;
constexpr double fitBox = 5000.0;
constexpr double greatestPoint = 2000.0; ///< beyond any screen, and still within fonts' reach
constexpr double noTextsPoint = 90000.0; ///< start of the search for a column's size
constexpr double columnFraction = 0.9;
constexpr int leftFlags = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int rightFlags = Qt::AlignRight | Qt::AlignVCenter;

QRectF measured(QPainter* painter, const QFont& font, const QRectF& box, int flags,
                const QString& text)
{
    painter->setFont(font);
    return painter->boundingRect(box, flags, text);
}

QFont sized(const QFont& font, double points)
{
    QFont result(font);
    result.setPointSizeF(points);
    return result;
}

double ratioOrOne(double numerator, double denominator)
{
    return denominator == 0.0 ? 1.0 : numerator / denominator;
}

/// Size at which a text fills a box of the given size, limited by maxPoint if that is above 0.
double fillingPoint(QPainter* painter, const QSizeF& size, const QFont& font, int flags,
                    const QString& text, double maxPoint)
{
    const QRectF m =
        measured(painter, sized(font, measuredPoint), QRectF(0, 0, fitBox, fitBox), flags, text);
    const double points = measuredPoint * std::min(ratioOrOne(size.width(), m.width()),
                                                   ratioOrOne(size.height(), m.height()));
    return maxPoint > 0.0 ? std::min(points, maxPoint) : points;
}

/// Measures and, if asked, draws a text in a box; the painter's font is the caller's afterwards.
/// A text that must not get any size is neither measured nor drawn.
QRectF putText(QPainter* painter, const QRectF& box, const QFont& font, int flags, int mode,
               const QString& text, double maxPoint, bool draw)
{
    const QFont painterFont = painter->font();
    QFont used(font);
    if (mode == DrawText::Fitted) {
        const double points = fillingPoint(painter, box.size(), font, flags, text, maxPoint);
        painter->setFont(painterFont);
        if (!(points > 0.0))
            return {box.topLeft(), QSizeF()};
        used.setPointSizeF(std::min(points, greatestPoint));
    }
    const QRectF taken =
        measured(painter, used, QRectF(box.x(), box.y(), measureBox, measureBox), flags, text);
    // Hinting makes some sizes a pixel wider than the measured one tells.
    if (draw)
        painter->drawText(box, flags | Qt::TextDontClip, text);
    painter->setFont(painterFont);
    return taken;
}

/// One size at which each of the texts fits the rectangle.
QFont columnFont(QPainter* painter, QRectF& rect, const QFont& font, const QStringList& texts,
                 double maxPoint)
{
    double smallest = noTextsPoint / columnFraction;
    for (const QString& text : texts)
        smallest =
            std::min(smallest, DrawText::fittedPointSize(painter, rect, font, leftFlags, text));
    double points = std::min<double>(truncatedInt(columnFraction * smallest), greatestPoint);
    if (maxPoint > 0.0)
        points = std::min(points, maxPoint);
    // Fonts have no size 0.
    return sized(font, std::max(points, 1.0));
}

} // namespace

void DrawText::normalize(QRectF& rect)
{
    rect = rect.normalized();
}

QRectF DrawText::drawFitted(QPainter* painter, QRectF& rect, const QFont& font, int flags, int mode,
                            const QString& text, double maxPoint)
{
    normalize(rect);
    return putText(painter, rect, font, flags, mode, text, maxPoint, true);
}

QRectF DrawText::drawRotated(QPainter* painter, double angle, QRectF& rect, const QFont& font,
                             int flags, int mode, const QString& text, double maxPoint, bool fill,
                             const QBrush& brush)
{
    normalize(rect);
    const double a = angle / 180.0 * rotationPi;
    const QRectF box(std::cos(a) * rect.x() + std::sin(a) * rect.y() - rect.width() / 2,
                     -std::sin(a) * rect.x() + std::cos(a) * rect.y() - rect.height() / 2,
                     rect.width(), rect.height());
    painter->rotate(angle);
    if (fill)
        painter->fillRect(box, brush);
    const QRectF taken = putText(painter, box, font, flags, mode, text, maxPoint, true);
    painter->rotate(-angle);
    return taken;
}

QRectF DrawText::boundingFitted(QPainter* painter, QRectF& rect, const QFont& font, int flags,
                                int mode, const QString& text)
{
    normalize(rect);
    return putText(painter, rect, font, flags, mode, text, 0.0, false);
}

double DrawText::fittedPointSize(QPainter* painter, QRectF& rect, const QFont& font, int flags,
                                 const QString& text)
{
    normalize(rect);
    const QFont painterFont = painter->font();
    const QRectF m = measured(painter, sized(font, measuredPoint),
                              QRectF(0, 0, measureBox, measureBox), flags, text);
    painter->setFont(painterFont);
    const double ratio =
        std::max(ratioOrOne(m.width(), rect.width()), ratioOrOne(m.height(), rect.height()));
    return measuredPoint / ratio;
}

void DrawText::drawColumn(QPainter* painter, QRectF& rect, double dx, double dy, const QFont& font,
                          int flags, int mode, const QStringList& texts, double maxPoint)
{
    normalize(rect);
    if (texts.isEmpty())
        return;
    const QFont used = mode == AsIs ? columnFont(painter, rect, font, texts, maxPoint) : font;
    QRectF place = rect;
    for (const QString& text : texts) {
        drawFitted(painter, place, used, flags, mode, text, maxPoint);
        place.translate(dx, dy);
    }
}

void DrawText::drawTwoColumns(QPainter* painter, QRectF& rect, double dx, double dy,
                              const QFont& font, const QStringList& leftTexts,
                              const QStringList& rightTexts, double maxPoint)
{
    normalize(rect);
    QStringList joined;
    for (int i = 0; i < std::max(leftTexts.size(), rightTexts.size()); ++i)
        joined.append(leftTexts.value(i) + rightTexts.value(i));
    if (joined.isEmpty())
        return;
    const QFont used = columnFont(painter, rect, font, joined, maxPoint);
    QRectF place = rect;
    for (int i = 0; i < joined.size(); ++i) {
        drawFitted(painter, place, used, leftFlags, AsIs, leftTexts.value(i), 0.0);
        drawFitted(painter, place, used, rightFlags, AsIs, rightTexts.value(i), 0.0);
        place.translate(dx, dy);
    }
}

void DrawText::drawCheckBox(QPainter* painter, bool checked, const QString& text, double x,
                            double xEnd, double y, double size) const
{
    const QRectF box(x, y - size, size - 1, size - 1);
    painter->fillRect(QRectF(x, y - size, size, size), checked ? selectedFill : unselectedFill);
    painter->setPen(frameColor);
    const QBrush brush = painter->brush();
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(box);
    painter->setBrush(brush);
    painter->setPen(textColor);
    QRectF textRect(x + 1.2 * size, y - 0.95 * size, xEnd - 1.2 * size, 0.9 * size);
    drawFitted(painter, textRect, painter->font(), leftFlags, Fitted, text, 0.0);
}

bool DrawText::checkBoxHit(const QPointF& mouse, double x, double y, double size)
{
    const QPoint at = MouseC::wholePixel(mouse);
    return x < at.x() && at.x() < x + size && y - size < at.y() && at.y() < y;
}

bool DrawText::hitsOccupied(QRectF& rect) const
{
    normalize(rect);
    return std::any_of(occupied.begin(), occupied.end(),
                       [&](const QRectF& taken) { return taken.intersects(rect); });
}
