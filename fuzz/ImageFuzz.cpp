#include "ImageFuzz.h"

#include "Fuzz.h"

#include "common/Fault.h"
#include "image/ImageSize.h"
#include "image/TiffData.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Images above this are read and not looked through: that would take all the fuzzer's time.
constexpr qint64 mostPixels = 1 << 14;

/// Bad pixels in the corners and middle of small images, and outside.
ErrPoints someErrPoints()
{
    ErrPoints list;
    for (const QPoint& point : {QPoint(0, 0), QPoint(1, 0), QPoint(2, 3), QPoint(-1, 70000)})
        list.add(point.x(), point.y());
    list.active = true;
    return list;
}

void checkPixels(const TiffData& image, bool isCorrected)
{
    std::vector<double> row(size_t(image.width));
    for (int y = 0; y < image.height; ++y) {
        image.blockSums(0, 1, image.width, y, 0, 0, row.data());
        for (int x = 0; x < image.width; ++x) {
            const double v = image.pixel(x, y);
            check(isSame(v, row[size_t(x)]), "a sum over a pixel is the pixel");
            check(isCorrected || !(v < image.minVal || v > image.maxVal) || v <= 0.0,
                  "extremes hold all pixels");
        }
    }
}

void useImage(const TiffData& image, bool isCorrected)
{
    check(image.width > 0 && image.height > 0, "an image has a size");
    if (qint64(image.width) * image.height > mostPixels)
        return;
    checkPixels(image, isCorrected);
    std::vector<double> sums(4);
    image.blockSums(-2, 3, int(sums.size()), image.height - 1, 2, 1, sums.data());
    check(isSame(sums[1], image.blockSum(1, image.height - 1, 2, 1)),
          "block sums in a row are those of each block");
}

} // namespace

void readAsImage(const QByteArray& bytes)
{
    const QString name = writeInput(bytes);
    static const ErrPoints bad = someErrPoints();
    const bool correct = bytes.size() % 2 == 1;
    const QSize told = imageSize(name);
    const FaultCollector faults;
    TiffData image;
    const bool isRead = image.readFile(name, correct ? bad : ErrPoints());
    if (!isRead) {
        check(faults.faults().size() == 1, "an image that is refused costs one fault");
        return;
    }
    check(faults.faults().size() <= 1, "an image that is read costs at most one fault");
    check(told == QSize(image.width, image.height), "the header tells the size of the image");
    useImage(image, correct);
}
