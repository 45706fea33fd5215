#include "PlainAnalysis.h"

#include "support/TiffPixels.h"

#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {
/// Constant and slope of the least-squares line through the points from one energy to another.
QPointF lineThrough(const plain::Curve& curve, double from, double to)
{
    double n = 0.0, sx = 0.0, sy = 0.0, sxx = 0.0, sxy = 0.0;
    for (const QPointF& p : curve) {
        const double weight = p.x() >= from && p.x() < to ? 1.0 : 0.0;
        const double x = weight * p.x();
        n += weight;
        sx += x;
        sy += weight * p.y();
        sxx += x * x;
        sxy += x * p.y();
    }
    const double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
    return {(sy - slope * sx) / n, slope};
}

double valueAt(const plain::Curve& curve, double energy)
{
    int i = 1;
    while (i < curve.size() - 1 && curve[i].x() < energy)
        ++i;
    const QPointF slope = curve[i] - curve[i - 1];
    return curve[i - 1].y() + slope.y() * (energy - curve[i - 1].x()) / slope.x();
}

/// Sums over squares of `side` pixels, in rows, with the dark level of the image's corner off.
QVector<double> netSums(const QString& fname, int darkSize, int side)
{
    Tags tags;
    const QVector<quint16> image = tiffPixels(fname, tags);
    const int width = int(tags[0]);
    double dark = 0.0;
    for (int i = 0; i < darkSize * darkSize; ++i)
        dark += double(image[i / darkSize * width + i % darkSize]) / (darkSize * darkSize);
    const int columns = width / side;
    QVector<double> sums(image.size() / (side * side), -dark * side * side);
    for (int i = 0; i < image.size(); ++i)
        sums[i / width / side * columns + i % width / side] += image[i];
    return sums;
}

/// The absorption spectrum of each square.
QVector<plain::Curve> squareSpectra(const QString& folder, const QString& stack,
                                    const QVector<double>& energies, int darkSize, int side)
{
    const QDir dir(folder + QStringLiteral("/images"));
    QVector<plain::Curve> spectra;
    for (QString name : dir.entryList({stack + QStringLiteral("_*.tif")}, QDir::Files)) {
        const QVector<double> i1 = netSums(dir.filePath(name), darkSize, side);
        const QVector<double> i0 = netSums(
            dir.filePath(name.replace(0, stack.size(), QStringLiteral("i0"))), darkSize, side);
        spectra.resize(i1.size());
        for (int b = 0; b < i1.size(); ++b)
            spectra[b].append(QPointF(energies[spectra[b].size()],
                                      i0[b] * i1[b] > 0.0 ? std::log(i0[b] / i1[b]) : 1.0));
    }
    return spectra;
}

plain::Curve movedDown(plain::Curve curve, double shift)
{
    for (QPointF& p : curve)
        p.rx() -= shift;
    return curve;
}

double squaresBetween(const plain::Curve& curve, const plain::Curve& standard, double shift)
{
    double sum = 0.0;
    for (const QPointF& p : curve)
        sum += std::pow(p.y() - valueAt(standard, p.x() - shift), 2);
    return sum;
}
} // namespace

plain::Curve plain::readReference(const QString& fname)
{
    QFile file(fname);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream in(&file);
    const bool angles = in.readLine().startsWith(QLatin1String("9809"));
    double spacing = 0.0;
    Curve curve;
    while (!in.atEnd()) {
        const QStringList items = in.readLine().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const double x = items.value(angles ? 1 : 0).toDouble();
        if (items.contains(QStringLiteral("D=")))
            spacing = items[items.indexOf(QStringLiteral("D=")) + 1].toDouble();
        else if (x > 0.0 && (!angles || items.size() == 5))
            curve.append(
                angles ? QPointF(12398.424360387684 / (2.0 * spacing * std::sin(x * M_PI / 180.0)),
                                 std::log(items[3].toDouble() / items[4].toDouble()))
                       : QPointF(x, items[1].toDouble()));
    }
    std::sort(curve.begin(), curve.end(),
              [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    return curve;
}

plain::Curve plain::normalised(const Curve& curve, double* edgeStep, const EdgeRange& range)
{
    int best = 2; // left of the steepest rise of the five-point mean
    for (int i = 2; i + 3 < curve.size(); ++i)
        if (curve[i].x() > range.from && curve[i].x() < range.to &&
            curve[i + 3].y() - curve[i - 2].y() > curve[best + 3].y() - curve[best - 2].y())
            best = i;
    const double edge = curve[best].x();
    const QPointF pre = lineThrough(curve, 0.0, edge - range.gap);
    const QPointF gap = lineThrough(curve, edge + range.gap, 1e9) - pre;
    const auto at = [](const QPointF& line, double x) { return line.x() + line.y() * x; };
    if (edgeStep != nullptr)
        *edgeStep = at(gap, edge);
    Curve result;
    for (const QPointF& p : curve)
        result.append(QPointF(p.x(), (p.y() - at(pre, p.x())) / at(gap, p.x())));
    return result;
}

namespace {
/// The normalised references of the species of an experiment's folder.
QVector<plain::Curve> references(const QString& folder)
{
    QVector<plain::Curve> found;
    for (const QFileInfo& file : QDir(folder + QStringLiteral("/references"))
                                     .entryInfoList({QStringLiteral("species-*")}, QDir::Files))
        found.append(plain::normalised(plain::readReference(file.filePath())));
    return found;
}

/// Weights of the references in the least-squares sense; all curves normalised.
QVector<double> weights(const plain::Curve& sample, const QVector<plain::Curve>& references)
{
    const int n = references.size();
    QVector<QVector<double>> a(n, QVector<double>(n + 1, 0.0)); // the right side is the last column
    for (const QPointF& p : sample) {
        QVector<double> row;
        for (const plain::Curve& reference : references)
            row.append(valueAt(reference, p.x()));
        row.append(p.y());
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= n; ++j)
                a[i][j] += row[i] * row[j];
    }
    for (int k = 0; k < n; ++k) {
        for (int i = 0; i < n; ++i) {
            const double factor = i == k ? 0.0 : a[i][k] / a[k][k];
            for (int j = k; j <= n; ++j)
                a[i][j] -= factor * a[k][j];
        }
    }
    QVector<double> found;
    for (int k = 0; k < n; ++k)
        found.append(a[k][n] / a[k][k]);
    return found;
}

/// Energy by which a curve lies above a standard in the least-squares sense, within 2 eV; both
/// normalised.
double shiftOf(const plain::Curve& curve, const plain::Curve& standard)
{
    double shift = -2.0;
    for (double s = -2.0; s < 2.1; s += 0.5)
        if (squaresBetween(curve, standard, s) < squaresBetween(curve, standard, shift))
            shift = s;
    for (int round = 0; round < 6; ++round) { // Gauss and Newton's steps
        double product = 0.0;
        double squares = 0.0;
        for (const QPointF& p : curve) {
            const double E = p.x() - shift;
            const double slope = (valueAt(standard, E + 0.1) - valueAt(standard, E - 0.1)) / 0.2;
            product += slope * (valueAt(standard, E) - p.y());
            squares += slope * slope;
        }
        shift += product / squares;
    }
    return shift;
}
} // namespace

plain::Maps plain::analyse(const QString& folder, const QVector<double>& energies, int darkSize,
                           int side)
{
    const auto sample = squareSpectra(folder, QStringLiteral("i1"), energies, darkSize, side);
    const auto foil = squareSpectra(folder, QStringLiteral("std"), energies, darkSize, side);
    const QVector<Curve> standards = references(folder);
    Maps maps;
    for (int b = 0; b < sample.size(); ++b) {
        const double shift = shiftOf(normalised(foil[b]), standards[1]);
        maps[{QStringLiteral("shift"), 0}].append(shift);
        double edgeStep = 0.0;
        const Curve spectrum = normalised(sample[b], &edgeStep);
        const QVector<double> raw = weights(spectrum, standards);
        const QVector<double> w = weights(movedDown(spectrum, shift), standards);
        for (int r = 0; r < w.size(); ++r) {
            maps[{QStringLiteral("raw"), r}].append(raw[r]);
            maps[{QStringLiteral("ratio"), r}].append(w[r]);
            maps[{QStringLiteral("dmut"), r}].append(w[r] * edgeStep);
        }
    }
    return maps;
}
