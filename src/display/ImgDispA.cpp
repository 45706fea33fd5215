#include "display/ImgDispA.h"

#include "common/SafeInt.h"
#include "display/SampledView.h"
#include "maps/Analyzed2DRes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// Share of the widget at each side in which the wheel zooms in one direction alone.
constexpr double edgeStrip = 0.1;

bool inStrip(double fraction)
{
    return fraction < edgeStrip || fraction > 1.0 - edgeStrip;
}

/// The pixels from the one that holds `start` to the one that holds what lies just before `end`,
/// of `count`: first and last.
std::pair<int, int> pixelsBetween(double start, double end, int count)
{
    // Compared as numbers first: a view may lie anywhere, and nan is beyond any bound.
    const double first = qMax(0.0, std::floor(start));
    const double last = qMin(double(count), std::ceil(end)) - 1.0;
    return first <= last ? std::pair(int(first), int(last)) : std::pair(0, -1);
}

} // namespace

ImgDispA::ImgDispA(QWidget* parent)
    : DispA(parent)
{
    connect(this, &DispA::drawImage1, this, &ImgDispA::drawImage);
    connect(this, &DispA::mousePressed0, this, &ImgDispA::onMousePressed);
    connect(this, &DispA::mouseReleased0, this, &ImgDispA::onMouseReleased);
    connect(this, &DispA::mouseMoved0, this, &ImgDispA::onMouseMoved);
    connect(this, &DispA::wheelMoved0, this, &ImgDispA::onWheelMoved);
}

void ImgDispA::setImage(const ShownImage& image)
{
    image_ = image;
    if (image_.picture && viewWindow_.width() == 0.0)
        resetImageViewWindow();
    update();
}

void ImgDispA::setAnalyzedRes(Analyzed2DRes* map)
{
    analyzedRes_ = map;
    update();
}

void ImgDispA::setShowOverLayer(bool f)
{
    showOverLayer_ = f;
    update();
}

const QImage* ImgDispA::currentImage() const
{
    if (!showOverLayer_)
        return image_.picture;
    return analyzedRes_ ? analyzedRes_->img() : nullptr;
}

const Analyzed2DRes* ImgDispA::shownMap() const
{
    return showOverLayer_ ? analyzedRes_.data() : nullptr;
}

QImage ImgDispA::viewImage() const
{
    const QImage* shown = currentImage();
    if (!shown || shown->isNull())
        return {};
    const QRectF view = viewWindow_.normalized();
    const auto [left, right] = pixelsBetween(view.left(), view.right(), shown->width());
    const auto [top, bottom] = pixelsBetween(view.top(), view.bottom(), shown->height());
    if (right < left || bottom < top)
        return {};
    return shown->copy(QRect(QPoint(left, top), QPoint(right, bottom)));
}

bool ImgDispA::isInSelectedArea(int x, int y) const
{
    if (!hasSelection_)
        return true;
    const QRectF& a = selectedArea_;
    return a.x() <= x && x <= a.x() + a.width() && a.y() + a.height() <= y && y <= a.y();
}

void ImgDispA::resetImageViewWindow()
{
    // A map can be on show before any image is loaded.
    const QImage* whole = image_.picture ? image_.picture : currentImage();
    if (!whole)
        return;
    viewWindow_ = QRectF(whole->rect());
    update();
}

/// Maps the view onto the widget as it now is; each paint does it too.
void ImgDispA::layOutCoord()
{
    coord.setScreenArea(0, 0, width(), height());
    coord.setRealArea(viewWindow_.left(), viewWindow_.top(), viewWindow_.right(),
                      viewWindow_.bottom());
}

void ImgDispA::tellRange()
{
    if (const Analyzed2DRes* map = shownMap()) {
        const Analyzed2DRes::Scale scale = map->scale();
        Q_EMIT rangeShown(scale.min, scale.max);
    } else if (image_.picture) {
        Q_EMIT rangeShown(image_.min, image_.max);
    }
}

void ImgDispA::drawImage(QPainter* p)
{
    const QImage* shown = currentImage();
    if (!shown || (showOverLayer_ && !analyzedRes_->imgValid))
        return;
    if (viewWindow_.width() == 0.0)
        resetImageViewWindow();
    tellRange();
    layOutCoord();
    p->drawImage(0, 0, renderedView(*shown));
}

const QImage& ImgDispA::renderedView(const QImage& picture)
{
    QImage& pixels = rendered_.pixels;
    const QSize size = this->size() * devicePixelRatioF();
    if (rendered_.picture == picture.cacheKey() && rendered_.view == viewWindow_ &&
        pixels.size() == size)
        return pixels;
    if (pixels.size() != size)
        pixels = QImage(size, QImage::Format_RGB32);
    pixels.setDevicePixelRatio(devicePixelRatioF());
    sampleView(picture, viewWindow_, pixels);
    rendered_.picture = picture.cacheKey();
    rendered_.view = viewWindow_;
    return pixels;
}

QPointF ImgDispA::imagePoint(const QPoint& pixel) const
{
    return {double(pixel.x()) / width() * viewWindow_.width() + viewWindow_.x(),
            double(pixel.y()) / height() * viewWindow_.height() + viewWindow_.y()};
}

void ImgDispA::rememberSelection()
{
    oldSelectedArea_ = selectedArea_;
    hadSelection_ = hasSelection_;
}

bool ImgDispA::drawsSelection() const
{
    const int action = mouse.pressAction();
    return action == MouseC::Plain || action == MouseC::Ctrl;
}

void ImgDispA::onMousePressed()
{
    if (drawsSelection()) {
        selecting_ = true;
        rememberSelection();
        selectedArea_ = QRectF(imagePoint(mouse.pos), QSizeF(0, 0));
    } else if (mouse.pressAction() == MouseC::RightPlain) {
        selecting_ = false;
        clearSelection();
    }
    update();
}

void ImgDispA::onMouseMoved()
{
    if (!mouse.pressed) {
        const QPointF p = imagePoint(mouse.pos);
        Q_EMIT mouseMoved(p.x(), p.y());
        update();
        return;
    }
    if (!image_.picture)
        return;
    if (drawsSelection()) {
        const QPointF distance = imagePoint(mouse.pos) - selectedArea_.topLeft();
        selectedArea_.setSize(QSizeF(distance.x(), distance.y()));
    } else if (mouse.pressAction() == MouseC::Shift && dragEnabled) {
        viewWindow_.translate(imagePoint(mouse.prevPos) - imagePoint(mouse.pos));
    }
    update();
}

void ImgDispA::onMouseReleased()
{
    if (drawsSelection() && selecting_) {
        selecting_ = false;
        finishSelection();
    }
    update();
}

void ImgDispA::finishSelection()
{
    // A click without a drag leaves a former selection as it was flagged.
    if (selectedArea_.width() == 0.0 || selectedArea_.height() == 0.0)
        return;
    selectedArea_ = selectedArea_.normalized();
    hasSelection_ = true;
    Q_EMIT newAreaSelected();
    if (mouse.pressAction() == MouseC::Ctrl)
        viewWindow_ = selectedArea_;
}

void ImgDispA::setSelectedArea(int x1, int y1, int x2, int y2)
{
    rememberSelection();
    hasSelection_ = true;
    selectedArea_ = QRectF(x1, y1, double(x2) - x1, double(y2) - y1);
    update();
}

void ImgDispA::setViewWAsSelectedArea()
{
    if (!hasSelection_)
        return;
    viewWindow_ = selectedArea_;
    update();
}

void ImgDispA::recallOldSelectedArea()
{
    selectedArea_ = hadSelection_ ? oldSelectedArea_ : QRectF();
    hasSelection_ = hadSelection_;
}

void ImgDispA::clearSelection()
{
    hasSelection_ = false;
    selectedArea_ = QRectF();
    update();
}

void ImgDispA::setMousePixel(int x, int y)
{
    if (mouse.pressed)
        return;
    // Nothing may have been painted since the view or the window changed.
    layOutCoord();
    mouse.moveTo(
        MouseC::wholePixel(QPointF(coord.realToScreenX(x + 0.5), coord.realToScreenY(y + 0.5))));
    update();
}

void ImgDispA::onWheelMoved()
{
    if (!wheelEnabled)
        return;
    const double fx = double(mouse.pos.x()) / width();
    const double fy = double(mouse.pos.y()) / height();
    // At the left and right the wheel changes the height alone, at top and bottom the width.
    const bool atSide = inStrip(fx);
    const bool atTopOrBottom = !atSide && inStrip(fy);
    zoomAbout(fx, fy, atSide ? 1.0 : wheelFactor, atTopOrBottom ? 1.0 : wheelFactor);
}

void ImgDispA::zoomBy(double factor)
{
    zoomAbout(0.5, 0.5, factor, factor);
}

/// Changes the size of the view; the image point at these fractions of the widget stays in place.
void ImgDispA::zoomAbout(double fx, double fy, double factorX, double factorY)
{
    const double newW = viewWindow_.width() * factorX;
    const double newH = viewWindow_.height() * factorY;
    viewWindow_ = QRectF(viewWindow_.x() + fx * viewWindow_.width() - fx * newW,
                         viewWindow_.y() + fy * viewWindow_.height() - fy * newH, newW, newH);
    update();
}
