#include "spectrum/ReferenceFile.h"

#include "common/Bragg.h"
#include "common/CappedLine.h"

#include <QTextStream>

#include <cmath>

namespace {
constexpr int longestLine = 64 * 1024;
constexpr double defaultSpacing = 3.13553; // Si(111) [angstrom]

QString nextLine(QTextStream& in)
{
    return readLineBelow(in, longestLine);
}

/// Reads up to the line "Offset" and returns the lattice spacing told on the way.
double readHeader(QTextStream& in)
{
    double spacing = defaultSpacing;
    while (!in.atEnd()) {
        const QStringList fields = nextReferenceFields(in);
        if (fields.isEmpty())
            continue;
        if (fields.first() == QLatin1String("Offset"))
            break;
        for (int i = 0; i + 1 < fields.size(); ++i) {
            if (fields.at(i) == QLatin1String("D="))
                spacing = fields.at(i + 1).toDouble();
        }
    }
    return spacing;
}

void readScan(QTextStream& in, ReferenceFile& file)
{
    const double spacing = readHeader(in);
    while (!in.atEnd()) {
        const QStringList fields = nextReferenceFields(in);
        if (fields.size() < 5)
            continue;
        const double E = energyOfAngle(fields.at(1).toDouble(), spacing);
        const double i0 = fields.at(3).toDouble();
        const double i1 = fields.at(4).toDouble();
        file.mu.append(E, i0 * i1 > 0.0 ? std::log(i0 / i1) : 1.0);
        file.i0.append(E, i0);
        file.i1.append(E, i1);
    }
}

void readSimple(QTextStream& in, ReferenceFile& file)
{
    while (!in.atEnd()) {
        const QStringList fields = nextReferenceFields(in);
        if (fields.size() < 2 || fields.first().startsWith(QLatin1Char('#')))
            continue;
        file.mu.append(fields.at(0).toDouble(), fields.at(1).toDouble());
    }
}
} // namespace

QStringList nextReferenceFields(QTextStream& in)
{
    return nextLine(in).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool is9809(QTextStream& in)
{
    in.seek(0);
    return nextLine(in).simplified().startsWith(QLatin1String("9809"));
}

ReferenceFile readReferenceFile(QTextStream& in)
{
    ReferenceFile file;
    file.is9809 = is9809(in);
    in.seek(0);
    if (file.is9809)
        readScan(in, file);
    else
        readSimple(in, file);
    return file;
}
