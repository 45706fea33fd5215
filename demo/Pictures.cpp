#include "Pictures.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {
constexpr int paneSize = 400; // [pixels]
constexpr int gap = 12;

QRgb heat(double value)
{
    if (!std::isfinite(value)) {
        return qRgb(96, 96, 96);
    }
    const double level = 3.0 * std::clamp(value, 0.0, 1.0);
    const auto part = [level](double start) {
        return static_cast<int>(std::lround(255.0 * std::clamp(level - start, 0.0, 1.0)));
    };
    return qRgb(part(0.0), part(1.0), part(2.0));
}

QImage pane(const QVector<double>& field, int columns)
{
    QImage image(columns, columns, QImage::Format_RGB32);
    for (int i = 0; i < columns * columns; ++i) {
        image.setPixel(i % columns, i / columns, heat(field[i]));
    }
    return image.scaled(paneSize, paneSize);
}
} // namespace

QImage sideBySide(const QVector<double>& planted, const QVector<double>& fitted, int columns)
{
    QImage image(2 * paneSize + gap, paneSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawImage(0, 0, pane(planted, columns));
    painter.drawImage(paneSize + gap, 0, pane(fitted, columns));
    return image;
}
