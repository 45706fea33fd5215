#include "Fuzz.h"

#include "calibration/ShiftMap.h"
#include "calibration/ShiftMapFile.h"
#include "maps/Analyzed2DRes.h"

#include <QBuffer>
#include <QFile>
#include <QTextStream>

#include <cmath>

namespace {

/// Maps above this are read and not looked through: that would take all the fuzzer's time.
constexpr int mostPixels = 4096;

/// The map through a file once more: a shift that the crystal can tell comes back.
void checkRoundTrip(const ShiftMap& map, const EMPHeader& header)
{
    const int w = map.walk.width;
    ShiftMapRecord record;
    record.header = header;
    record.imageWidth = w;
    record.imageHeight = map.walk.height;
    record.recorded = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
    QString text;
    QTextStream out(&text);
    writeShiftMap(out, record, [&](int x, int y) { return map.shifts.at(y * w + x); });
    out.flush();
    QTextStream in(&text, QIODevice::ReadOnly);
    const EMPHeader again = readMapHeader(in);
    check(again.width == header.width && again.height == header.height, "a head comes back");
    if (again.isValid)
        check(readShiftMap(in, again, again.stdEdgeE).shifts.size() == map.shifts.size(),
              "a map comes back");
}

void useMap(const ShiftMap& map, const EMPHeader& header)
{
    for (const double shift : map.shifts)
        check(std::isfinite(shift), "a shift of a file is finite");
    if (map.shifts.size() > mostPixels)
        return;
    const auto middle = map.medianAndSpread();
    check(!middle || (middle->median >= map.min && middle->median <= map.max),
          "the median lies among the shifts");
    Analyzed2DRes shown(QStringLiteral("shown"));
    map.showIn(shown);
    ShiftMap back = map;
    back.takeFrom(shown);
    check(back.shifts == map.shifts, "a map that is shown stays as it is");
    const ShiftField field = map.field(QPoint(header.xOffset, header.yOffset));
    check(field.at(0, 0) == map.shifts.first(), "a field begins with the first shift");
    checkRoundTrip(map, header);
}

} // namespace

/// Files of energy shift maps.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QFile file(writeInput(asBytes(data, size)));
    check(file.open(QIODevice::ReadOnly | QIODevice::Text), "the input is opened");
    QTextStream in(&file);
    const EMPHeader header = readMapHeader(in);
    if (header.isValid)
        useMap(readShiftMap(in, header, header.stdEdgeE), header);
    return 0;
}
