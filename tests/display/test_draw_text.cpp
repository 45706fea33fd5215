#include "display/DrawText.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

/// Texts on pictures, judged by their ink.
class TestDrawText : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aFittedTextFillsItsRectangle()
    {
        const QRectF rows[] = {{20, 30, 200, 100}, {220, 130, -200, -100}, {20, 30, 270, 30}};
        for (const QRectF& row : rows) {
            Canvas canvas;
            QRectF rect = row;
            const QFont before = canvas.painter.font();
            DrawText::drawFitted(&canvas.painter, rect, before, centred, DrawText::Fitted, "HEIGHT",
                                 0);
            const QRectF ink = canvas.ink();
            QCOMPARE(rect, row.normalized());
            QVERIFY(rect.adjusted(-4, -4, 4, 4).contains(ink));
            QVERIFY(ink.width() > 0.85 * rect.width() || ink.height() > 0.5 * rect.height());
            QVERIFY((ink.center() - rect.center()).manhattanLength() < 8);
            QCOMPARE(canvas.painter.font(), before);
        }
    }

    void sizesAreLimitedAndMayVanish()
    {
        Canvas canvas;
        QPainter* const p = &canvas.painter;
        const QFont font = p->font();
        QRectF rect(10, 10, 250, 100);
        const QSizeF free =
            DrawText::boundingFitted(p, rect, font, left, DrawText::Fitted, "ink").size();
        QVERIFY(canvas.ink().isEmpty());
        const QSizeF limited =
            DrawText::drawFitted(p, rect, font, left, DrawText::Fitted, "ink", 8).size();
        QVERIFY(limited.height() < 20 && free.height() > 80);
        QVERIFY(canvas.ink().height() < 20);
        for (const QSizeF& none : {QSizeF(0, 50), QSizeF(50, 0), QSizeF(qQNaN(), 50)}) {
            Canvas blank;
            QRectF thin({50, 50}, none);
            DrawText::drawFitted(&blank.painter, thin, font, left, DrawText::Fitted, "ink", 0);
            QVERIFY(blank.ink().isEmpty());
        }
    }

    /// The corner of the rectangle is the centre of the turned box.
    void turnedTextsReadRoundTheirCentre()
    {
        for (const int angle : {0, 90, 180, 270}) {
            Canvas canvas;
            QRectF rect(150, 120, 160, 20);
            DrawText::drawRotated(&canvas.painter, angle, rect, canvas.painter.font(), left,
                                  DrawText::Fitted, "ab", 0, true, QColor(Qt::yellow));
            const bool upright = angle % 180 != 0;
            const QRectF box(QPointF(150, 120) - QPointF(upright ? 10 : 80, upright ? 80 : 10),
                             upright ? QSizeF(20, 160) : QSizeF(160, 20));
            const QRectF filled = canvas.ink(Qt::yellow);
            QVERIFY((filled.center() - box.center()).manhattanLength() < 3);
            QVERIFY((filled.size() - box.size()).width() < 2 &&
                    qAbs(filled.height() - box.height()) < 2);
            // At the left end of the text's own direction.
            const QPointF start = canvas.ink(Qt::black).center() - rect.topLeft();
            const QPointF expected[] = {{-1, 0}, {0, -1}, {1, 0}, {0, 1}};
            const QPointF along = expected[angle / 90];
            QVERIFY(QPointF::dotProduct(start, along) > 50);
            QVERIFY(canvas.painter.transform().map(QPointF(7, 3)).toPoint() == QPoint(7, 3));
        }
    }

    void columnsHaveOneSize()
    {
        Canvas canvas;
        QPainter* const p = &canvas.painter;
        const QFont font = p->font();
        QRectF rect(20, 20, 100, 30);
        DrawText::drawColumn(p, rect, 0, 60, font, left, DrawText::AsIs, {"H", "HHHHHHHHHHHHHHHH"},
                             0);
        const QRectF one = canvas.ink(Qt::black, {0, 0, 300, 60});
        const QRectF two = canvas.ink(Qt::black, {0, 61, 300, 180});
        QCOMPARE(one.height(), two.height());
        QVERIFY(two.width() > 70 && two.right() <= 120 && qAbs(two.top() - one.top() - 60) < 1);
        DrawText::drawColumn(p, rect, 0, 0, font, left, DrawText::AsIs, {}, 0);
        DrawText::drawColumn(p, rect, 0, 0, font, left, DrawText::AsIs, {""}, 0);

        Canvas pairs;
        rect = {20, 20, 200, 30};
        DrawText::drawTwoColumns(&pairs.painter, rect, 0, 40, font, {"name", "n"}, {"8979.0"}, 0);
        const QRectF first = pairs.ink(Qt::black, {0, 0, 300, 55});
        QVERIFY(first.left() < 25 && first.right() > 212 && first.right() <= 220);
        QVERIFY(pairs.ink(Qt::black, {0, 56, 300, 100}).right() < 50);
    }

    void checkBoxesAreDrawnWhereTheyAreHit()
    {
        Canvas canvas;
        const DrawText texts;
        texts.drawCheckBox(&canvas.painter, true, "", 40, 200, 60, 12);
        texts.drawCheckBox(&canvas.painter, false, "w", 40, 200, 90, 12);
        canvas.painter.end();
        QCOMPARE(canvas.image.pixelColor(45, 55), texts.selectedFill);
        QCOMPARE(canvas.image.pixelColor(45, 85), texts.unselectedFill);
        for (const QPoint& corner : {QPoint(40, 48), QPoint(51, 59)})
            QCOMPARE(canvas.image.pixelColor(corner), texts.frameColor);
        QVERIFY(canvas.ink(Qt::black).left() >= 53);
        const QPair<QPointF, bool> rows[] = {{{40.4, 55}, false},  {{40.5, 55}, true},
                                             {{51.4, 59.4}, true}, {{52, 55}, false},
                                             {{45, 48}, false},    {{45, 59.5}, false}};
        for (const auto& row : rows)
            QCOMPARE(DrawText::checkBoxHit(row.first, 40, 60, 12), row.second);
        QVERIFY(DrawText::checkBoxHit({-0.5, -0.5}, -1, 1, 2)); // a half rounds up
    }

    void overlapsAreFound()
    {
        DrawText texts;
        texts.addOccupied({10, 10, 20, 20});
        QRectF inside(25, 25, -5, -5), touching(30, 10, 5, 5);
        QVERIFY(texts.hitsOccupied(inside) && !texts.hitsOccupied(touching));
        QCOMPARE(inside, QRectF(20, 20, 5, 5));
    }

private:
    static constexpr int left = Qt::AlignLeft | Qt::AlignVCenter;
    static constexpr int centred = Qt::AlignCenter;

    struct Canvas
    {
        QImage image{300, 240, QImage::Format_RGB32};
        QPainter painter;
        Canvas()
        {
            image.fill(Qt::white);
            painter.begin(&image);
        }

        static int distance(const QColor& a, const QColor& b)
        {
            return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) +
                   qAbs(a.blue() - b.blue());
        }

        /// Bounds of what is nearer to the colour than to white.
        QRectF ink(const QColor& colour = Qt::black, QRect area = {0, 0, 300, 240}) const
        {
            QRect bounds;
            area = area.intersected(image.rect());
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x) {
                    const QColor c = image.pixelColor(x, y);
                    if (distance(c, colour) < distance(c, Qt::white))
                        bounds |= QRect(x, y, 1, 1);
                }
            }
            return bounds;
        }
    };
};

QTEST_MAIN(TestDrawText)
#include "test_draw_text.moc"
