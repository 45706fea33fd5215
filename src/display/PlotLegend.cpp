#include "display/PlotLegend.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr QRgb frameColour = qRgb(192, 192, 192);
constexpr int padding = 5;
constexpr int sampleWidth = 22; ///< of the piece of line before a name [pixels]
constexpr int sampleGap = 6;

/// Greatest part of the window that the legend may take, each way.
constexpr double share = 0.55;

/// Length of curves that the legend may cover [pixels].
constexpr double mayCover = 12.0;

} // namespace

void PlotLegend::begin(const QRect& window, const QFont& font)
{
    used_ = 0;
    if (font_ != font) {
        font_ = font;
        metrics_ = QFontMetrics(font);
        rows_.clear();
    }
    if (window.width() != window_.width())
        rows_.clear();
    window_ = window;
}

void PlotLegend::add(const QString& name, const QPen& pen)
{
    if (name.isEmpty())
        return;
    if (used_ == rows_.size())
        rows_.append(Row());
    Row& row = rows_[used_++];
    row.pen = pen;
    if (row.name == name)
        return;
    const int room = int(share * window_.width()) - 2 * padding - sampleWidth - sampleGap;
    row.name = name;
    row.shown = metrics_.elidedText(name, Qt::ElideMiddle, std::max(room, 0));
    row.width = metrics_.horizontalAdvance(row.shown);
}

void PlotLegend::place()
{
    int width = 0;
    for (int i = 0; i < used_; ++i)
        width = std::max(width, rows_.at(i).width);
    size_ = QSize(2 * padding + sampleWidth + sampleGap + width,
                  2 * padding + used_ * metrics_.height());
    if (used_ == 0 || size_.width() > share * window_.width() ||
        size_.height() > share * window_.height())
        size_ = QSize();
    free_.begin(size_.isEmpty() ? QRect() : window_, size_);
}

void PlotLegend::paint(QPainter* p)
{
    const FreePlace::Found found = size_.isEmpty() ? FreePlace::Found{} : free_.find(box_);
    box_ = found.covered <= mayCover ? found.box : QRect();
    if (box_.isEmpty())
        return;
    p->setPen(QColor(frameColour));
    p->setBrush(Qt::white);
    p->drawRect(box_.adjusted(0, 0, -1, -1));
    p->setBrush(Qt::NoBrush);
    const int left = box_.left() + padding;
    int top = box_.top() + padding;
    for (int i = 0; i < used_; ++i, top += metrics_.height()) {
        const int middle = top + metrics_.height() / 2;
        p->setPen(rows_.at(i).pen);
        p->drawLine(left, middle, left + sampleWidth, middle);
        p->setPen(Qt::black);
        p->drawText(left + sampleWidth + sampleGap, top + metrics_.ascent(), rows_.at(i).shown);
    }
}
