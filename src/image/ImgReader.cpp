#include "image/ImageReaders.h"
#include "image/TiffData.h"

#include "common/Fault.h"
#include "common/TextItems.h"

#include <QFile>
#include <QtEndian>

namespace {

// Byte offsets of the little-endian header words.
constexpr int commentLengthAt = 2;
constexpr int widthAt = 4;
constexpr int heightAt = 6;
constexpr int originXAt = 8;
constexpr int originYAt = 10;
constexpr int commentAt = 64;
constexpr int headerBytes = 40;
constexpr int fewestHeaderBytes = 10;

struct UnitScale
{
    const char* unit;
    double toMs;
};
/// Units of the exposure text; a number without unit is in seconds.
constexpr UnitScale exposureUnits[] = {{"us", 0.001}, {"ms", 1.0}, {"s", 1000.0}};

int word(const QByteArray& header, int at)
{
    if (at + 2 > header.size())
        return 0;
    return qFromLittleEndian<quint16>(header.constData() + at);
}

template<typename T>
bool readRow(QIODevice& file, TiffData& image, int y)
{
    T* row = image.row<T>(y);
    const qint64 bytes = qint64(image.width) * qint64(sizeof(T));
    if (file.read(reinterpret_cast<char*>(row), bytes) != bytes)
        return false;
    qFromLittleEndian<T>(row, image.width, row);
    image.noteExtremes(y);
    return true;
}

bool readRows(QIODevice& file, TiffData& image, const std::atomic<bool>* stop)
{
    const bool longs = image.pixelType == TiffData::ImgLongs;
    for (int y = 0; y < image.height; ++y) {
        if (stop && *stop)
            return false;
        if (!(longs ? readRow<quint32>(file, image, y) : readRow<quint16>(file, image, y)))
            return false;
    }
    return true;
}

} // namespace

QByteArray commentValue(const QByteArray& comment, const char* key, char terminator,
                        const char* fallback)
{
    const int at = comment.indexOf(key);
    if (at < 0)
        return QByteArray(fallback);
    QByteArray value = comment.mid(at + int(qstrlen(key)));
    value.truncate(qMin(value.size(), int(qstrnlen(value.constData(), uint(value.size())))));
    const int end = value.indexOf(terminator);
    return end < 0 ? value : value.left(end);
}

double exposureFromText(const QByteArray& text)
{
    const QList<QByteArray> parts = text.simplified().split(' ');
    const double number = parts.value(0).toDouble();
    if (parts.size() < 2)
        return number * 1000.0;
    for (const UnitScale& unit : exposureUnits) {
        if (parts[1] == unit.unit)
            return number * unit.toMs;
    }
    return number;
}

int readImgHeader(TiffData& image, QIODevice& file, const QString& name)
{
    image.width = 0;
    image.height = 0;
    const QByteArray header = file.read(headerBytes);
    if (header.size() < fewestHeaderBytes) {
        fault(QStringLiteral("Error on reading (4) ") + quoted(name));
        return 0;
    }
    const int commentLength = word(header, commentLengthAt);
    image.width = word(header, widthAt);
    image.height = word(header, heightAt);
    image.x0 = word(header, originXAt);
    image.y0 = word(header, originYAt);

    QByteArray comment;
    if (file.seek(commentAt))
        comment = file.read(commentLength);
    image.bytesPerPixel = commentValue(comment, "BytesPerPixel=", ',', "2").trimmed().toInt();
    image.exposureMs = exposureFromText(commentValue(comment, "ExposureTime=", ',', "0.1"));
    return commentAt + commentLength;
}

bool readImg(TiffData& image, const QString& name, const std::atomic<bool>* stop)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        fault(QStringLiteral("Can not open %1 [ %2 ]").arg(quoted(name)).arg(int(file.error())));
        return false;
    }
    const int offset = readImgHeader(image, file, name);
    if (offset < 1)
        return false;

    const bool longs = image.bytesPerPixel == 4;
    const int w = image.width;
    const int h = image.height;
    const qint64 needed = offset + qint64(w) * h * (longs ? 4 : 2);
    const bool complete = w > 0 && h > 0 && needed <= file.size() && file.seek(offset) &&
                          image.allocate(w, h, longs ? TiffData::ImgLongs : TiffData::ImgWords) &&
                          readRows(file, image, stop);
    if (!complete && !(stop && *stop)) {
        fault(QStringLiteral("invalid file size. expected (h,w) =  %1 %2 Error on reading (%3) %4")
                  .arg(h)
                  .arg(w)
                  .arg(longs ? 2 : 3)
                  .arg(quoted(name)));
    }
    return complete;
}
