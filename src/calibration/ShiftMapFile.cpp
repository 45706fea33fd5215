#include "calibration/ShiftMapFile.h"

#include "common/Bragg.h"
#include "common/CappedLine.h"
#include "common/FieldText.h"
#include "common/FileNames.h"
#include "common/Log.h"
#include "common/SafeFile.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr char magic[] = "###Morvenkite::MVKT";
constexpr char oldMagic[] = "###MVKT";
constexpr char headEnd[] = "##-----------------";

/// A line of the head: 26 characters of key, then a whole or a real number.
struct HeadLine
{
    const char* key;
    int EMPHeader::*whole;
    double EMPHeader::*real;
    bool needed;
};

/// In the order of writing; reading takes them in any order.
constexpr HeadLine headLines[] = {
    {"Std Edge Energy [eV]    : ", nullptr, &EMPHeader::stdEdgeE, true},
    // The spacing is in angstrom; the key names another unit and stays so for the files there are.
    {"Spacing [nm]            : ", nullptr, &EMPHeader::spacing, true},
    {"X Offset [pix]          : ", &EMPHeader::xOffset, nullptr, false},
    {"Y Offset [pix]          : ", &EMPHeader::yOffset, nullptr, false},
    {"Width [pix]             : ", &EMPHeader::width, nullptr, true},
    {"Height [pix]            : ", &EMPHeader::height, nullptr, true},
    {"Bin Half Width [pix]    : ", &EMPHeader::halfX, nullptr, false},
    {"Bin Half Height [pix]   : ", &EMPHeader::halfY, nullptr, false},
    {"Area X0                 : ", &EMPHeader::areaX0, nullptr, false},
    {"Area X1                 : ", &EMPHeader::areaX1, nullptr, false},
    {"Area Y0                 : ", &EMPHeader::areaY0, nullptr, false},
    {"Area Y1                 : ", &EMPHeader::areaY1, nullptr, false},
};

/// Longest line of a head that is looked at. [characters]
constexpr int longestLine = 64 * 1024;

/// Pixels that a head may claim whatever the length of its file: values may be missing.
constexpr qint64 freePixels = 512 * 512;
/// Pixels of the largest map: its values fit a vector.
constexpr qint64 mostPixels = qint64(1) << 26;

/// Takes the value of the line's key into the header; the key's index, or -1 for another line.
int takeHeadLine(const QString& line, EMPHeader& header)
{
    for (std::size_t i = 0; i < std::size(headLines); ++i) {
        const HeadLine& known = headLines[i];
        const QString key = QLatin1String(known.key);
        if (!line.startsWith(key))
            continue;
        const QString value = line.split(key).value(1);
        if (known.whole != nullptr)
            header.*known.whole = value.toInt();
        else
            header.*known.real = value.toDouble();
        return static_cast<int>(i);
    }
    return -1;
}

/// Reads up to the line that ends the head; whether it came, behind all the needed keys.
bool readHeadLines(QTextStream& in, EMPHeader& header)
{
    bool seen[std::size(headLines)] = {};
    while (!in.atEnd()) {
        const QString line = readLineBelow(in, longestLine);
        if (line.startsWith(QLatin1String(headEnd))) {
            return std::equal(std::begin(seen), std::end(seen), std::begin(headLines),
                              [](bool s, const HeadLine& known) { return s || !known.needed; });
        }
        const int known = takeHeadLine(line, header);
        if (known >= 0)
            seen[known] = true;
    }
    return false;
}

qint64 lengthOf(const QTextStream& in)
{
    if (in.device() != nullptr)
        return in.device()->size();
    return in.string() != nullptr ? in.string()->size() : 0;
}

/// Whether the size can be true: the shortest value takes a digit and a blank.
bool canHold(const QTextStream& in, const EMPHeader& header)
{
    const qint64 pixels = qint64(header.width) * header.height;
    const qint64 most = std::clamp((lengthOf(in) + 1) / 2, freePixels, mostPixels);
    const bool plausible = header.width > 0 && header.height > 0 && pixels <= most;
    if (!plausible)
        qDebug() << "Energy map size" << header.width << "x" << header.height
                 << "is not that of the file";
    return plausible;
}

/// An edge and a crystal that can be: without them the file's angles mean nothing.
bool hasOptics(const EMPHeader& header)
{
    const bool possible = std::isfinite(header.stdEdgeE) && header.stdEdgeE > 0.0 &&
                          std::isfinite(header.spacing) && header.spacing > 0.0;
    if (!possible)
        qDebug() << "Energy map: edge" << header.stdEdgeE << "eV and spacing" << header.spacing
                 << "can not be";
    return possible;
}

void writeHeadLines(QTextStream& out, const EMPHeader& header)
{
    for (const HeadLine& line : headLines) {
        out << line.key;
        if (line.whole != nullptr)
            out << header.*line.whole;
        else
            out << header.*line.real;
        out << '\n';
    }
}

void writeHead(QTextStream& out, const ShiftMapRecord& record)
{
    QString stdName = record.stdFileName;
    stdName.replace(QLatin1Char('\n'), QLatin1Char(' ')); // would begin a line of the head
    out << magic << "\nRecord Date             : "
        << record.recorded.toString(QStringLiteral("yy/MM/dd hh:mm:ss.zzz")) << '\n';
    writeHeadLines(out, record.header);
    out << "Std File Name           : " << stdName << '\n'
        << "Map Height              : " << record.mapHeight << '\n';
    // As many lines as the map has rows, each with its number: deliberate, the file's known shape.
    for (int i = 0; i < record.mapHeight; ++i)
        out << "Map Width               : " << i << ' ' << record.mapWidth << '\n';
    out << headEnd << '\n';
}

/// The next value of a file; 0 past its end, nan for a word in the place of a number.
double nextValue(QTextStream& in)
{
    QString word;
    in >> word;
    if (word.isEmpty()) {
        qDebug() << "run out!";
        return 0.0;
    }
    bool isNumber = false;
    const double value = word.toDouble(&isNumber);
    return isNumber ? value : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

EMPHeader readMapHeader(QTextStream& in)
{
    EMPHeader header;
    if (in.atEnd())
        return header;
    const QString first = readLineBelow(in, longestLine);
    if (!first.startsWith(QLatin1String(magic)) && !first.startsWith(QLatin1String(oldMagic))) {
        qDebug() << "Not a emp file.";
        return header;
    }
    const bool complete = readHeadLines(in, header);
    qDebug() << "emp W" << header.width;
    qDebug() << "emp H" << header.height;
    header.isValid = complete && canHold(in, header) && hasOptics(header);
    return header;
}

AnalyzeCond mapWalk(const EMPHeader& header)
{
    // Without its area the whole image was calibrated.
    if (header.areaX0 == header.areaX1 && header.areaY0 == header.areaY1)
        return {header.width,
                header.height,
                header.halfX,
                header.halfY,
                QRectF(0, 0, header.width, header.height),
                -1,
                -1};
    const int x0 = qBound(0, header.areaX0, header.width);
    const int x1 = qBound(0, header.areaX1, header.width);
    const int y0 = qBound(0, header.areaY0, header.height);
    const int y1 = qBound(0, header.areaY1, header.height);
    if (x0 != header.areaX0 || x1 != header.areaX1 || y0 != header.areaY0 || y1 != header.areaY1)
        qDebug() << "Area of the energy map is cut to its image";
    return {header.width,
            header.height,
            header.halfX,
            header.halfY,
            QRectF(x0, y0, x1 - x0, y1 - y0),
            -1,
            -1};
}

QVector<double> readMapShifts(QTextStream& in, const EMPHeader& header, double edgeE)
{
    QVector<double> shifts(header.width * header.height);
    const double edgeAngle = angleOfEnergy(edgeE, header.spacing);
    if (edgeAngle < 0.0)
        qDebug() << "Energy map: the crystal does not reach the edge energy" << edgeE << "eV";
    int notFinite = 0;
    for (double& shift : shifts) {
        shift = edgeE - energyOfAngle(nextValue(in) + edgeAngle, header.spacing);
        if (!std::isfinite(shift)) {
            ++notFinite;
            shift = 0.0;
        }
    }
    if (notFinite > 0)
        qDebug() << "Energy map:" << notFinite << "shifts are not finite and count as 0";
    return shifts;
}

void writeShiftMap(QTextStream& out, const ShiftMapRecord& record, const ShiftAt& shiftAt)
{
    writeHead(out, record);
    const double E = record.header.stdEdgeE;
    const double d = record.header.spacing;
    logTime(QStringLiteral("EMap Write Start : "));
    const double edgeAngle = angleOfEnergy(E, d);
    for (int y = 0; y < record.imageHeight; ++y) {
        for (int x = 0; x < record.imageWidth; ++x)
            out << fieldText(angleOfEnergy(E - shiftAt(x, y), d) - edgeAngle) << ' ';
        out << '\n';
    }
    logTime(QStringLiteral("EMap Write End   : "));
}

QDateTime recordDate()
{
    const char* const variable = "SOURCE_DATE_EPOCH";
    if (qEnvironmentVariableIsSet(variable)) {
        bool isNumber = false;
        const qint64 seconds = qgetenv(variable).toLongLong(&isNumber);
        if (isNumber)
            return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
        qDebug() << variable << "is no number of seconds; the record date is the present";
    }
    return QDateTime::currentDateTime();
}

QString saveShiftMap(const QString& fname, const ShiftMapRecord& record, const ShiftAt& shiftAt)
{
    const QString name = withExtension(fname, QStringLiteral("emp"));
    const auto write = [&](QTextStream& out) { writeShiftMap(out, record, shiftAt); };
    return writeTextFile(name, write, QStringLiteral("Can not open")) ? name : QString();
}
