#include "display/ImgDispA.h"

#include "common/SafeInt.h"
#include "display/SampledView.h"
#include "maps/Analyzed2DRes.h"

#include <QContextMenuEvent>
#include <QDebug>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace {

/// Share of the widget at each side in which the wheel zooms in one direction alone.
constexpr double edgeStrip = 0.1;

bool inStrip(double fraction)
{
    return fraction < edgeStrip || fraction > 1.0 - edgeStrip;
}

/// Way of the mouse [pixels of the screen] that makes a press a drag.
constexpr int dragDistance = 3;

/// A drag by its longer side; one straight along an axis has no area.
bool isDrag(const QPoint& way)
{
    const int dx = std::abs(way.x());
    const int dy = std::abs(way.y());
    return std::max(dx, dy) >= dragDistance && dx > 0 && dy > 0;
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

void ImgDispA::setImageSize(const QSize& size)
{
    hasImages_ = size.isValid();
    if (!hasImages_)
        return;
    const auto madeOnOthers = [&size](const Selection& s) {
        return s.images.isValid() && s.images != size;
    };
    const bool otherSelection = madeOnOthers(selection_);
    const bool otherView = imageSize_.isValid() && imageSize_ != size;
    if (otherSelection)
        clearSelection();
    if (madeOnOthers(oldSelection_))
        oldSelection_ = Selection();
    if (otherView)
        setView(QRectF(QPointF(0, 0), size));
    if (otherSelection || otherView)
        qDebug().noquote() << QStringLiteral("Images of %1 x %2 pixels, not %3 x %4: view%5 reset")
                                  .arg(size.width())
                                  .arg(size.height())
                                  .arg(imageSize_.width())
                                  .arg(imageSize_.height())
                                  .arg(QLatin1String(otherSelection ? " and selection" : ""));
    imageSize_ = size;
}

void ImgDispA::setEmptyText(const QString& text)
{
    emptyText_ = text;
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
    const bool filled = f && analyzedRes_ && analyzedRes_->imgValid;
    if (filled && viewWindow_.width() == 0.0)
        resetImageViewWindow();
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
    return shown ? viewOf(*shown) : QImage();
}

QImage ImgDispA::viewOf(const QImage& picture) const
{
    if (picture.isNull())
        return {};
    const QRectF view = viewWindow_.normalized();
    const auto [left, right] = pixelsBetween(view.left(), view.right(), picture.width());
    const auto [top, bottom] = pixelsBetween(view.top(), view.bottom(), picture.height());
    if (right < left || bottom < top)
        return {};
    return picture.copy(QRect(QPoint(left, top), QPoint(right, bottom)));
}

bool ImgDispA::isInSelectedArea(int x, int y) const
{
    if (!selection_.exists)
        return true;
    const QRectF& a = selection_.area;
    return a.x() <= x && x <= a.x() + a.width() && a.y() + a.height() <= y && y <= a.y();
}

void ImgDispA::resetImageViewWindow()
{
    // A map can be on show before any image is loaded.
    const QImage* whole = image_.picture ? image_.picture : currentImage();
    if (!whole)
        return;
    if (!imageSize_.isValid())
        imageSize_ = whole->size();
    setView(QRectF(whole->rect()));
}

void ImgDispA::setView(const QRectF& view)
{
    viewWindow_ = view;
    update();
    Q_EMIT viewChanged();
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
    const Analyzed2DRes* const map = shownMap();
    if (map && map->imgValid) {
        const Analyzed2DRes::Scale scale = map->scale();
        Q_EMIT rangeShown(scale.min, scale.max);
    } else if (!showOverLayer_ && image_.picture) {
        Q_EMIT rangeShown(image_.min, image_.max);
    } else {
        Q_EMIT nothingShown();
    }
}

void ImgDispA::drawImage(QPainter* p)
{
    const QImage* shown = currentImage();
    if (!shown || (showOverLayer_ && !analyzedRes_->imgValid)) {
        Q_EMIT nothingShown();
        drawEmpty(p);
        return;
    }
    if (viewWindow_.width() == 0.0)
        resetImageViewWindow();
    tellRange();
    layOutCoord();
    p->drawImage(0, 0, renderedView(*shown));
}

/// No white paper: there is nothing on it.
void ImgDispA::drawEmpty(QPainter* p) const
{
    p->fillRect(rect(), palette().color(QPalette::Window));
    p->setPen(palette().color(QPalette::Mid));
    p->drawRect(rect().adjusted(0, 0, -1, -1));
    p->setPen(palette().color(QPalette::WindowText));
    p->drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
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

bool ImgDispA::drawsSelection() const
{
    const int action = mouse.pressAction();
    return action == MouseC::Plain || action == MouseC::Ctrl;
}

void ImgDispA::onMousePressed()
{
    selecting_ = false;
    pressedToSelect_ = drawsSelection();
    if (pressedToSelect_) {
        dragStart_ = imagePoint(mouse.pos);
        beforeDrag_ = selection_;
    }
    pressCleared_ = mouse.pressAction() == MouseC::RightPlain && selection_.exists;
    if (mouse.pressAction() == MouseC::RightPlain)
        clearSelection();
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
    if (pressedToSelect_)
        dragSelection();
    else if (mouse.pressAction() == MouseC::Shift && dragEnabled)
        setView(viewWindow_.translated(imagePoint(mouse.prevPos) - imagePoint(mouse.pos)));
    update();
}

void ImgDispA::dragSelection()
{
    selecting_ = currentImage() && isDrag(mouse.pos - mouse.pressPos);
    if (!selecting_) {
        selection_ = beforeDrag_;
        return;
    }
    const QPointF way = imagePoint(mouse.pos) - dragStart_;
    selection_.area = QRectF(dragStart_, QSizeF(way.x(), way.y()));
}

void ImgDispA::onMouseReleased()
{
    if (pressedToSelect_ && selecting_)
        finishSelection();
    pressedToSelect_ = false;
    selecting_ = false;
    update();
}

void ImgDispA::finishSelection()
{
    oldSelection_ = beforeDrag_;
    setSelection({selection_.area.normalized(), true, hasImages_ ? imageSize_ : QSize()});
    Q_EMIT newAreaSelected();
    if (mouse.pressAction() == MouseC::Ctrl)
        setView(selection_.area);
}

void ImgDispA::setSelectedArea(int x1, int y1, int x2, int y2)
{
    oldSelection_ = selection_;
    const QRectF area(x1, y1, double(x2) - x1, double(y2) - y1);
    setSelection({area.normalized(), true, hasImages_ ? imageSize_ : QSize()});
    // A drag under way would bring back what it began with.
    pressedToSelect_ = false;
    selecting_ = false;
    update();
}

void ImgDispA::setViewWAsSelectedArea()
{
    if (!selection_.exists)
        return;
    if (selection_.area.isEmpty())
        qDebug() << "The selected area has no extent that could be zoomed to";
    else
        setView(selection_.area);
}

void ImgDispA::recallOldSelectedArea()
{
    setSelection(oldSelection_);
}

void ImgDispA::clearSelection()
{
    setSelection(Selection());
    pressedToSelect_ = false;
    selecting_ = false;
    update();
}

void ImgDispA::setSelection(const Selection& selection)
{
    selection_ = selection;
    Q_EMIT selectionChanged();
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
    const bool atSide = !squarePixels_ && inStrip(fx);
    const bool atTopOrBottom = !squarePixels_ && !atSide && inStrip(fy);
    zoomAbout(fx, fy, atSide ? 1.0 : wheelFactor, atTopOrBottom ? 1.0 : wheelFactor);
}

void ImgDispA::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const int dx = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
    const int dy = key == Qt::Key_Up ? -1 : key == Qt::Key_Down ? 1 : 0;
    // The arrows of a number pad are no others.
    const auto keys = event->modifiers() & ~Qt::KeypadModifier;
    if (keys == Qt::ShiftModifier && (dx != 0 || dy != 0))
        Q_EMIT cursorMoveAsked(dx, dy);
    else if (keys == Qt::NoModifier && dx != 0)
        Q_EMIT browseAsked(dx);
    else
        DispA::keyPressEvent(event);
}

void ImgDispA::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    if (byMouse && (pressCleared_ || mouse.pressAction() != MouseC::RightPlain))
        return;
    const QPointF p = imagePoint(byMouse ? event->pos() : mouse.pos);
    Q_EMIT menuAsked(event->globalPos(), truncatedInt(std::floor(p.x())),
                     truncatedInt(std::floor(p.y())));
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
    setView(QRectF(viewWindow_.x() + fx * viewWindow_.width() - fx * newW,
                   viewWindow_.y() + fy * viewWindow_.height() - fy * newH, newW, newH));
}
