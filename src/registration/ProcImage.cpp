#include "registration/ProcImage.h"

#include "common/FieldText.h"
#include "image/PixelAccess.h"

#include <array>
#include <cmath>
#include <type_traits>
#include <utility>

namespace {

ProcImage ofSize(int width, int height, ProcImage image = {})
{
    image.width = width;
    image.height = height;
    image.pixels.resize(std::size_t(width) * std::size_t(height));
    return image;
}

/// Values of positions -1 .. width of a row, which may lie outside as well.
void readRow(const TiffData& image, int y, std::vector<double>& values)
{
    values.assign(std::size_t(image.width) + 2, 0.0);
    const qint64 rowNo = qint64(y) - image.shiftY;
    if (rowNo < 0 || rowNo >= image.height)
        return;
    withPixelType(image, 0, [&](auto* tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        const T* const row = image.row<T>(int(rowNo));
        const qint64 first = qMax<qint64>(0, -1 - qint64(image.shiftX));
        const qint64 last = qMin<qint64>(image.width - 1, image.width - qint64(image.shiftX));
        for (qint64 column = first; column <= last; ++column)
            values[std::size_t(column + image.shiftX + 1)] = static_cast<double>(row[column]);
        return 0;
    });
}

/// Rows y-1, y and y+1 give the edges of row y.
void edgesOfRow(const double* above, const double* here, const double* below, int width,
                double* edges)
{
    for (int x = 0; x < width; ++x) {
        const double across = here[x + 2] - here[x];
        const double falling = below[x + 2] - above[x];
        const double rising = above[x + 2] - below[x];
        const double down = below[x + 1] - above[x + 1];
        const double gradientX = std::abs(across + falling + rising);
        const double gradientY = std::abs(falling - rising + down);
        edges[x] = gradientX < gradientY ? gradientY : gradientX;
    }
}

double shownNumber(double v)
{
    return fieldText(v).toDouble();
}

} // namespace

void ProcImage::takeExtremes()
{
    minV = std::numeric_limits<double>::max();
    maxV = std::numeric_limits<double>::min();
    for (const double v : pixels) {
        if (v < minV)
            minV = v;
        if (v > maxV)
            maxV = v;
    }
}

ProcImage dataImage(const TiffData& image, ProcImage into)
{
    ProcImage data = ofSize(image.width, image.height, std::move(into));
    std::vector<double> row;
    auto out = data.pixels.begin();
    for (int y = 0; y < image.height; ++y) {
        readRow(image, y, row);
        out = std::copy(row.begin() + 1, row.end() - 1, out);
    }
    data.takeExtremes();
    return data;
}

ProcImage edgeImage(const TiffData& image, ProcImage into)
{
    ProcImage edges = ofSize(image.width, image.height, std::move(into));
    std::array<std::vector<double>, 3> rows;
    readRow(image, -1, rows[0]);
    readRow(image, 0, rows[1]);
    for (int y = 0; y < image.height; ++y) {
        readRow(image, y + 1, rows[2]);
        edgesOfRow(rows[0].data(), rows[1].data(), rows[2].data(), image.width,
                   edges.pixels.data() + std::size_t(y) * std::size_t(image.width));
        rows[0].swap(rows[1]);
        rows[1].swap(rows[2]);
    }
    edges.takeExtremes();
    return edges;
}

ProcImage binarized(const ProcImage& image, double threshold)
{
    ProcImage binary = ofSize(image.width, image.height);
    for (std::size_t i = 0; i < image.pixels.size(); ++i)
        binary.pixels[i] = threshold < image.pixels[i] ? 1.0 : 0.0;
    binary.takeExtremes();
    return binary;
}

double thresholdBetween(double min, double max, int thousandths)
{
    return shownNumber((max - min) * thousandths / 1000.0 + min);
}

double thresholdOf(const ProcImage& image, int thousandths)
{
    return thresholdBetween(shownNumber(image.minV), shownNumber(image.maxV), thousandths);
}
