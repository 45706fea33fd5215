#include "display/ProcDispA.h"

#include "display/SampledView.h"

#include <QPainter>

ProcDispA::ProcDispA(QWidget* parent)
    : DispA(parent)
{
    connect(this, &DispA::drawImage1, this, &ProcDispA::drawOnScreen);
    connect(this, &DispA::mousePressed0, this, &ProcDispA::onMousePressed);
    connect(this, &DispA::mouseReleased0, this, &ProcDispA::onMouseReleased);
    connect(this, &DispA::mouseMoved0, this, &ProcDispA::onMouseMoved);
    connect(this, &DispA::wheelMoved0, this, &ProcDispA::onWheelMoved);
}

void ProcDispA::setImage(const QImage* picture)
{
    image_ = picture && !picture->isNull() ? picture : nullptr;
    if (image_ && image_->size() != shownSize_)
        resetViewWindow();
    update();
}

void ProcDispA::resetViewWindow()
{
    if (!image_)
        return;
    shownSize_ = image_->size();
    viewWindow_ = QRectF(image_->rect());
    update();
}

void ProcDispA::setEmptyText(const QString& text)
{
    emptyText_ = text;
    update();
}

QSize ProcDispA::sizeHint() const
{
    return {300, 300};
}

void ProcDispA::drawOnScreen(QPainter* p)
{
    if (!image_) {
        p->fillRect(rect(), palette().color(QPalette::Window));
        p->setPen(palette().color(QPalette::WindowText));
        p->drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
        return;
    }
    QImage pixels(size() * devicePixelRatioF(), QImage::Format_RGB32);
    pixels.setDevicePixelRatio(devicePixelRatioF());
    sampleView(*image_, viewWindow_, pixels);
    p->drawImage(0, 0, pixels);
    coord.setScreenArea(0, 0, width(), height());
    coord.setRealArea(viewWindow_.left(), viewWindow_.top(), viewWindow_.right(),
                      viewWindow_.bottom());
}

void ProcDispA::onMousePressed()
{
    update();
}

void ProcDispA::onMouseReleased()
{
    update();
}

void ProcDispA::onMouseMoved()
{
    Q_EMIT mouseMoved(double(mouse.pos.x()) / width() * viewWindow_.width() + viewWindow_.x(),
                      double(mouse.pos.y()) / height() * viewWindow_.height() + viewWindow_.y());
    update();
}

void ProcDispA::onWheelMoved()
{
    if (!wheelEnabled)
        return;
    const double fx = double(mouse.pos.x()) / width();
    const double fy = double(mouse.pos.y()) / height();
    const double w = viewWindow_.width() * wheelFactor;
    const double h = viewWindow_.height() * wheelFactor;
    viewWindow_ = QRectF(viewWindow_.x() + fx * viewWindow_.width() - fx * w,
                         viewWindow_.y() + fy * viewWindow_.height() - fy * h, w, h);
    update();
}
