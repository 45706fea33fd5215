#include "display/EmptyPlot.h"

#include <QPainter>
#include <QWidget>

void paintEmptyPlot(QPainter* p, const QWidget& area, const QString& sentence)
{
    constexpr int margin = 8;
    constexpr int frameAlpha = 80;
    const QRect all = area.rect();
    const QColor text = area.palette().color(QPalette::WindowText);
    QColor frame = text;
    frame.setAlpha(frameAlpha);
    p->fillRect(all, area.palette().color(QPalette::Window));
    p->setPen(frame);
    p->drawRect(all.adjusted(0, 0, -1, -1));
    p->setPen(text);
    p->drawText(all.adjusted(margin, margin, -margin, -margin),
                int(Qt::AlignCenter) | Qt::TextWordWrap, sentence);
}
