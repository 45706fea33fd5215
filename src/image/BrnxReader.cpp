#include "image/ImageReaders.h"
#include "image/TiffData.h"

#include "common/CappedLine.h"
#include "common/Fault.h"
#include "common/SafeInt.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QFile>

namespace {

/// Longest line taken; pixel lines are far shorter.
constexpr qint64 maxLineBytes = 1024;
constexpr double countsPerUnit = 500.0;
/// A header of more lines than this is none.
constexpr int maxHeaderLines = 1000;

struct Range
{
    int x0 = 0;
    int x1 = 0;
    int y0 = 0;
    int y1 = 0;
};

struct RangeKey
{
    const char* key;
    int Range::*end;
};
constexpr RangeKey rangeKeys[] = {{"RANGE_X0", &Range::x0},
                                  {"RANGE_X1", &Range::x1},
                                  {"RANGE_Y0", &Range::y0},
                                  {"RANGE_Y1", &Range::y1}};

/// One header line: "# key separator value".
void takeHeaderLine(const QString& line, Range& range)
{
    QString mark;
    QString key;
    QString separator;
    QString value;
    nextItem(nextItem(nextItem(nextItem(line, mark), key), separator), value);
    qDebug() << "ksv" << key << separator << value;
    const QString upper = key.toUpper();
    for (const RangeKey& known : rangeKeys) {
        if (upper == QLatin1String(known.key))
            range.*known.end = truncatedInt(value.toDouble());
    }
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

/// Third item of a pixel line. Lines with quotes, which no writer makes, take the general way.
double thirdItem(const char* line, int length)
{
    if (memchr(line, '"', size_t(length))) {
        QString item;
        QString rest = QString::fromUtf8(line, length);
        for (int i = 0; i < 3; ++i)
            rest = nextItem(rest, item);
        return item.toDouble();
    }
    int at = 0;
    int start = 0;
    for (int item = 0; item < 3; ++item) {
        while (at < length && isSpace(line[at]))
            ++at;
        start = at;
        while (at < length && !isSpace(line[at]))
            ++at;
    }
    return QByteArray::fromRawData(line + start, at - start).toDouble();
}

/// Number of pixels without a line of their own, set to 0; -1 when stopped.
qint64 readRows(QIODevice& file, TiffData& image, const std::atomic<bool>* stop)
{
    qint64 missing = 0;
    char line[maxLineBytes];
    for (int y = 0; y < image.height; ++y) {
        if (stop && *stop)
            return -1;
        float* row = image.row<float>(y);
        for (int x = 0; x < image.width; ++x) {
            const qint64 length = file.readLine(line, maxLineBytes);
            if (length <= 0)
                ++missing;
            const double v = length > 0 ? thirdItem(line, int(length)) * countsPerUnit : 0.0;
            row[x] = v < 0.0 ? 0.0F : static_cast<float>(v);
        }
        image.noteExtremes(y);
    }
    return missing;
}

} // namespace

int readBrnxHeader(TiffData& image, QIODevice& file)
{
    Range range;
    int lines = 0;
    while (lines < maxHeaderLines) {
        const qint64 lineStart = file.pos();
        const QByteArray line = readCappedLine(file, maxLineBytes);
        if (!line.trimmed().startsWith('#')) {
            file.seek(lineStart);
            break;
        }
        takeHeaderLine(QString::fromUtf8(line), range);
        ++lines;
    }
    const qint64 w = qint64(range.x1) - range.x0;
    const qint64 h = qint64(range.y1) - range.y0;
    qDebug() << "rrr" << range.x0 << range.x1 << range.y0 << range.y1 << w << h;
    image.pixelType = TiffData::Floats;
    if (w < 1 || h < 1 || w > maxImagePixels || h > maxImagePixels)
        return -1;
    image.width = int(w);
    image.height = int(h);
    return lines;
}

bool readBrnx(TiffData& image, const QString& name, const std::atomic<bool>* stop)
{
    // Not in text mode, whose positions could not be sought; carriage returns count as blanks.
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        fault(QStringLiteral("Can not open (2) ") + quoted(name));
        return false;
    }
    if (readBrnxHeader(image, file) < 0) {
        fault(QStringLiteral("No image size in the header ") + quoted(name));
        return false;
    }
    // Missing lines read as 0, but a pixel takes a byte of the file at the least: a size beyond
    // that comes from a broken header and must not take memory.
    const qint64 pixels = qint64(image.width) * image.height;
    if (pixels > maxImagePixels || pixels > file.size()) {
        fault(QStringLiteral("Image size exceeds the file %1 %2 %3")
                  .arg(image.width)
                  .arg(image.height)
                  .arg(quoted(name)));
        return false;
    }
    if (!image.allocate(image.width, image.height, TiffData::Floats)) {
        fault(QStringLiteral("No memory for image ") + quoted(name));
        return false;
    }
    const qint64 missing = readRows(file, image, stop);
    if (missing > 0)
        qDebug() << "Missing pixel lines read as 0 :" << missing << name;
    return missing >= 0;
}
