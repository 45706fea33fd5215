#include "display/ImageFrame.h"

#include "display/ImgDispA.h"

#include <QEvent>

#include <cmath>

namespace {

// [pixels]
constexpr int gap = 4;
constexpr int sectionSize = 76;
constexpr int barWidth = 28;
constexpr int smallestSide = 40; ///< of the area, however long and narrow its view
constexpr QSize smallestArea(200, 160);
constexpr QSize usualArea(364, 364);

} // namespace

ImageFrame::ImageFrame(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ImageFrame::setParts(const Parts& parts)
{
    parts_ = parts;
    connect(parts_.area, &ImgDispA::viewChanged, this, &ImageFrame::layOut);
    layOut();
}

void ImageFrame::setSquarePixels(bool on)
{
    square_ = on;
    parts_.area->setSquarePixels(on);
    layOut();
}

void ImageFrame::setSectionsVisible(bool on)
{
    sections_ = on;
    for (QWidget* part : {parts_.across, parts_.upright, parts_.upperButton, parts_.lowerButton})
        part->setVisible(on);
    updateGeometry();
    layOut();
}

/// The buttons below it must find room.
int ImageFrame::uprightWidth() const
{
    const int buttons = qMax(parts_.upperButton->minimumSizeHint().width(),
                             parts_.lowerButton->minimumSizeHint().width());
    return qMax(sectionSize, buttons - gap - barWidth);
}

int ImageFrame::acrossHeight() const
{
    return qMax(sectionSize, parts_.upperButton->sizeHint().height() + gap +
                                 parts_.lowerButton->sizeHint().height());
}

/// What stands beside the area.
QSize ImageFrame::margins() const
{
    if (!sections_)
        return {gap + barWidth, 0};
    return {gap + uprightWidth() + gap + barWidth, gap + acrossHeight()};
}

QSize ImageFrame::sizeHint() const
{
    return usualArea + margins();
}

QSize ImageFrame::minimumSizeHint() const
{
    return smallestArea + margins();
}

QSize ImageFrame::areaSize(const QSize& room) const
{
    const QSizeF view = parts_.area->viewWindow().size();
    const double scale = qMin(room.width() / view.width(), room.height() / view.height());
    // Written so that a view that is no number fills the room.
    if (!square_ || !(scale > 0.0) || !std::isfinite(scale))
        return room;
    const auto side = [scale](double pixels, int most) {
        return qBound(qMin(smallestSide, most), qRound(qMin(scale * pixels, double(most))), most);
    };
    return {side(view.width(), room.width()), side(view.height(), room.height())};
}

void ImageFrame::layOut()
{
    if (!parts_.area)
        return;
    const QSize aside = margins();
    const QSize room = (size() - aside).expandedTo({1, 1});
    const QSize area = areaSize(room);
    const QPoint at((room.width() - area.width()) / 2, (room.height() - area.height()) / 2);
    parts_.area->setGeometry(QRect(at, area));
    int x = at.x() + area.width() + gap;
    const int below = at.y() + area.height() + gap;
    if (sections_) {
        const int corner = uprightWidth() + gap + barWidth;
        parts_.across->setGeometry(at.x(), below, area.width(), acrossHeight());
        const int upper = parts_.upperButton->sizeHint().height();
        parts_.upperButton->setGeometry(x, below, corner, upper);
        parts_.lowerButton->setGeometry(x, below + upper + gap, corner,
                                        parts_.lowerButton->sizeHint().height());
        parts_.upright->setGeometry(x, at.y(), uprightWidth(), area.height());
        x += uprightWidth() + gap;
    }
    parts_.bar->setGeometry(x, at.y(), barWidth, area.height());
}

void ImageFrame::resizeEvent(QResizeEvent* /*event*/)
{
    layOut();
}

bool ImageFrame::event(QEvent* event)
{
    // A child asks for another size: its text or font is another.
    if (event->type() == QEvent::LayoutRequest)
        layOut();
    return QWidget::event(event);
}
