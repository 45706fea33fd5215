#include "display/ReadingOrder.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QVector>

#include <algorithm>

namespace {

void collect(QWidget* widget, QVector<QWidget*>& chain);

/// The items of a layout as they are read; a grid gives them in the order of their making.
QVector<QLayoutItem*> readItems(QLayout* layout)
{
    QVector<QLayoutItem*> items;
    QVector<std::pair<int, int>> places;
    auto* const grid = qobject_cast<QGridLayout*>(layout);
    QVector<int> order;
    for (int i = 0; i < layout->count(); ++i) {
        int row = 0;
        int column = i;
        int rows = 0;
        int columns = 0;
        if (grid)
            grid->getItemPosition(i, &row, &column, &rows, &columns);
        places.append({row, column});
        order.append(i);
    }
    std::sort(order.begin(), order.end(), [&](int a, int b) { return places[a] < places[b]; });
    for (const int i : qAsConst(order))
        items.append(layout->itemAt(i));
    return items;
}

void collect(QLayout* layout, QVector<QWidget*>& chain)
{
    for (QLayoutItem* item : readItems(layout)) {
        if (item->widget())
            collect(item->widget(), chain);
        else if (item->layout())
            collect(item->layout(), chain);
    }
}

void collect(QWidget* widget, QVector<QWidget*>& chain)
{
    if (widget->focusPolicy() & Qt::TabFocus)
        chain.append(widget);
    if (auto* const area = qobject_cast<QScrollArea*>(widget); area && area->widget())
        collect(area->widget(), chain);
    else if (widget->layout())
        collect(widget->layout(), chain);
}

} // namespace

void tabInReadingOrder(QWidget* form)
{
    QVector<QWidget*> chain;
    collect(form, chain);
    for (int i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain.at(i - 1), chain.at(i));
}
