#include "display/WrapLayout.h"

#include <QBoxLayout>

namespace {

constexpr int gap = 4; ///< between items and lines, as in all forms [pixels]

} // namespace

WrapLayout::WrapLayout()
{
    setContentsMargins(0, 0, 0, 0);
}

WrapLayout::~WrapLayout()
{
    qDeleteAll(items_);
}

void WrapLayout::addItem(QLayoutItem* item)
{
    items_.append(item);
}

int WrapLayout::count() const
{
    return items_.size();
}

QLayoutItem* WrapLayout::itemAt(int index) const
{
    return items_.value(index);
}

QLayoutItem* WrapLayout::takeAt(int index)
{
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

Qt::Orientations WrapLayout::expandingDirections() const
{
    return {};
}

bool WrapLayout::hasHeightForWidth() const
{
    return true;
}

int WrapLayout::heightForWidth(int width) const
{
    int height = -gap;
    for (const Line& line : lines(width))
        height += line.height + gap;
    return qMax(height, 0);
}

/// All in one line.
QSize WrapLayout::sizeHint() const
{
    QSize size;
    for (const QLayoutItem* item : items_) {
        if (!item->isEmpty())
            size = QSize(size.width() + gap + item->sizeHint().width(),
                         qMax(size.height(), item->sizeHint().height()));
    }
    return size;
}

QSize WrapLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : items_) {
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    }
    return size;
}

void WrapLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    int y = rect.top();
    for (const Line& line : lines(rect.width())) {
        int x = rect.left();
        for (QLayoutItem* item : line.items) {
            const int width = qMin(item->sizeHint().width(), rect.width());
            item->setGeometry(QRect(x, y, width, line.height));
            x += width + gap;
        }
        y += line.height + gap;
    }
}

QVector<WrapLayout::Line> WrapLayout::lines(int width) const
{
    QVector<Line> lines;
    int used = 0;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (lines.isEmpty() || used + size.width() > width) {
            lines.append(Line());
            used = 0;
        }
        Line& line = lines.last();
        line.items.append(item);
        line.height = qMax(line.height, size.height());
        used += size.width() + gap;
    }
    return lines;
}

void wrapLine(QBoxLayout* column, QBoxLayout* line)
{
    auto* const wrapped = new WrapLayout;
    while (QLayoutItem* item = line->takeAt(0))
        wrapped->addItem(item);
    column->insertLayout(column->indexOf(line), wrapped);
    column->removeItem(line);
    delete line;
}
