#include "Fuzz.h"

#include "common/Fault.h"
#include "image/TiffData.h"

#include <algorithm>

namespace {

constexpr int side = 12;

/// An image of ones with its corner at (5, 3) on the detector.
void fillImage(TiffData& image)
{
    check(image.allocate(side, side, TiffData::ImgWords), "a small image has memory");
    image.x0 = 5;
    image.y0 = 3;
    std::fill(image.row<quint16>(0), image.row<quint16>(side), quint16(1));
}

} // namespace

/// Lists of bad pixels, and the correction of an image by one.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString name = writeInput(asBytes(data, size));
    const FaultCollector faults;
    TiffData image;
    check(image.errPs.readFile(name, 0), "a list that can be opened is read");
    check(faults.faults().isEmpty(), "a list that is read costs no fault");
    fillImage(image);
    image.errPs.active = true;
    image.correctErrPoints();
    for (const QPoint& point : image.errPs.points())
        check(image.errPs.contains(point.x(), point.y()), "a list contains its points");
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            check(image.row<quint16>(y)[x] <= 1, "a mean lies among its pixels");
    }
    // A second list is added to the first, unless it states a size.
    const int before = image.errPs.points().size();
    image.errPs.readFile(name, 1);
    check(image.errPs.points().size() >= before, "a list that is kept grows, or begins anew");
    return 0;
}
