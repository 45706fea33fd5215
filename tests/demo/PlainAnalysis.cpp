#include "PlainAnalysis.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>
#include <QtEndian>

#include <tiffio.h>

#include <cmath>

namespace {
QVector<double> readTiff(const QString& fname, QSize* size)
{
    TIFF* tiff = TIFFOpen(QFile::encodeName(fname).constData(), "r");
    if (tiff == nullptr) {
        return {};
    }
    uint32_t width = 0;
    uint32_t height = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    *size = QSize(static_cast<int>(width), static_cast<int>(height));
    QVector<double> pixels;
    QVector<quint16> row(static_cast<int>(TIFFScanlineSize(tiff)) / 2);
    for (uint32_t y = 0; y < height; ++y) {
        TIFFReadScanline(tiff, row.data(), y, 0);
        for (int x = 0; x < size->width(); ++x) {
            pixels.append(row[x]);
        }
    }
    TIFFClose(tiff);
    return pixels;
}

QVector<double> readImg(const QByteArray& bytes, QSize* size)
{
    const auto word = [&bytes](int offset) {
        return static_cast<int>(qFromLittleEndian<quint16>(bytes.constData() + offset));
    };
    const int commentSize = word(2);
    *size = QSize(word(4), word(6));
    const int pixelSize = bytes.mid(64, commentSize).contains("BytesPerPixel=4,") ? 4 : 2;
    const char* pixel = bytes.constData() + 64 + commentSize;
    const int count = size->width() * size->height();
    QVector<double> pixels;
    if (bytes.size() != 64 + commentSize + count * pixelSize) {
        return pixels;
    }
    for (int i = 0; i < count; ++i, pixel += pixelSize) {
        pixels.append(pixelSize == 4 ? static_cast<double>(qFromLittleEndian<quint32>(pixel))
                                     : static_cast<double>(qFromLittleEndian<quint16>(pixel)));
    }
    return pixels;
}

QVector<double> readBrnx(const QByteArray& bytes, QSize* size)
{
    QVector<double> pixels;
    for (const QByteArray& line : bytes.split('\n')) {
        const QList<QByteArray> items = line.split(' ');
        if (line.startsWith("# RANGE_X1")) {
            size->setWidth(items[3].toInt());
        } else if (line.startsWith("# RANGE_Y1")) {
            size->setHeight(items[3].toInt());
        } else if (!line.startsWith('#') && items.size() == 3) {
            pixels.append(static_cast<float>(items[2].toDouble() * 500.0));
        }
    }
    return pixels;
}

struct Line
{
    double constant;
    double slope;
    double at(double x) const { return constant + slope * x; }
};

/// Least-squares line through the points from `first` to before `last`, taken about their mean.
Line lineThrough(const plain::Curve& curve, int first, int last)
{
    double meanX = 0.0;
    double meanY = 0.0;
    for (int i = first; i < last; ++i) {
        meanX += curve[i].x() / (last - first);
        meanY += curve[i].y() / (last - first);
    }
    double xx = 0.0;
    double xy = 0.0;
    for (int i = first; i < last; ++i) {
        xx += (curve[i].x() - meanX) * (curve[i].x() - meanX);
        xy += (curve[i].x() - meanX) * (curve[i].y() - meanY);
    }
    return {meanY - xy / xx * meanX, xy / xx};
}

/// Index left of the steepest rise of the five-point mean.
int steepest(const plain::Curve& curve)
{
    int best = 2;
    double bestRise = 0.0;
    for (int i = 2; i + 3 < curve.size(); ++i) {
        const double rise = curve[i + 3].y() - curve[i - 2].y();
        if (rise > bestRise) {
            bestRise = rise;
            best = i;
        }
    }
    return best;
}

int firstAtOrAbove(const plain::Curve& curve, double energy)
{
    int i = 0;
    while (i < curve.size() && curve[i].x() < energy) {
        ++i;
    }
    return i;
}

/// Sums of blocks side by side, walking by rows of blocks.
QVector<double> blockSums(const QVector<double>& image, const QSize& size, int halfWidth)
{
    const int step = 2 * halfWidth + 1;
    QVector<double> sums;
    for (int y0 = 0; y0 + halfWidth < size.height(); y0 += step) {
        for (int x0 = 0; x0 + halfWidth < size.width(); x0 += step) {
            double sum = 0.0;
            for (int y = y0; y < qMin(y0 + step, size.height()); ++y) {
                for (int x = x0; x < qMin(x0 + step, size.width()); ++x) {
                    sum += image[y * size.width() + x];
                }
            }
            sums.append(sum);
        }
    }
    return sums;
}

/// Block sums of an image with the dark level of its corner taken off.
QVector<double> netSums(const QString& fname, int darkSize, int halfWidth)
{
    QSize size;
    const QVector<double> image = plain::readImage(fname, &size);
    double dark = 0.0;
    for (int y = 0; y < darkSize; ++y) {
        for (int x = 0; x < darkSize; ++x) {
            dark += image[y * size.width() + x] / (darkSize * darkSize);
        }
    }
    const int side = 2 * halfWidth + 1;
    QVector<double> sums = blockSums(image, size, halfWidth);
    for (double& sum : sums) {
        sum -= dark * side * side;
    }
    return sums;
}

QVector<plain::Curve> blockSpectra(const QString& folder, const QString& suffix, double firstEnergy,
                                   double energyStep, int darkSize, int halfWidth)
{
    const QDir dir(folder + QStringLiteral("/images"));
    const QStringList files = dir.entryList({QStringLiteral("i1_*.") + suffix}, QDir::Files);
    QVector<plain::Curve> spectra;
    for (int e = 0; e < files.size(); ++e) {
        QString i0Name = files[e];
        i0Name.replace(1, 1, QLatin1Char('0'));
        const QVector<double> i1 = netSums(dir.filePath(files[e]), darkSize, halfWidth);
        const QVector<double> i0 = netSums(dir.filePath(i0Name), darkSize, halfWidth);
        spectra.resize(i1.size());
        for (int b = 0; b < i1.size(); ++b) {
            const double mu = i0[b] * i1[b] > 0.0 ? std::log(i0[b] / i1[b]) : 1.0;
            spectra[b].append(QPointF(firstEnergy + energyStep * e, mu));
        }
    }
    return spectra;
}

/// Solves a symmetric positive definite system by elimination.
QVector<double> solved(QVector<QVector<double>> a, QVector<double> b)
{
    const int n = b.size();
    for (int k = 0; k < n; ++k) {
        for (int i = 0; i < n; ++i) {
            if (i == k) {
                continue;
            }
            const double factor = a[i][k] / a[k][k];
            for (int j = k; j < n; ++j) {
                a[i][j] -= factor * a[k][j];
            }
            b[i] -= factor * b[k];
        }
    }
    for (int k = 0; k < n; ++k) {
        b[k] /= a[k][k];
    }
    return b;
}
} // namespace

QVector<double> plain::readImage(const QString& fname, QSize* size)
{
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.readAll();
    if (bytes.startsWith("II")) {
        return readTiff(fname, size);
    }
    if (bytes.startsWith("IM")) {
        return readImg(bytes, size);
    }
    return bytes.startsWith("#BRNX-CTImg") ? readBrnx(bytes, size) : QVector<double>();
}

plain::Curve plain::readReference(const QString& fname)
{
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {};
    }
    QTextStream in(&file);
    const bool angles = in.readLine().startsWith(QLatin1String("9809"));
    bool inData = !angles;
    double spacing = 0.0;
    Curve curve;
    while (!in.atEnd()) {
        const QStringList items = in.readLine().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (!inData) {
            const int key = items.indexOf(QStringLiteral("D="));
            spacing = key < 0 ? spacing : items[key + 1].toDouble();
            inData = !items.isEmpty() && items[0] == QLatin1String("Offset");
        } else if (angles && items.size() == 5) {
            const double angle = items[1].toDouble() * 3.1415926535 / 180.0;
            curve.append(QPointF(12398.424360387684 / (2.0 * spacing * std::sin(angle)),
                                 std::log(items[3].toDouble() / items[4].toDouble())));
        } else if (!angles && !items[0].startsWith(QLatin1Char('#'))) {
            curve.append(QPointF(items[0].toDouble(), items[1].toDouble()));
        }
    }
    return curve;
}

plain::Curve plain::normalised(const Curve& curve, double* edgeStep)
{
    const double edge = curve[steepest(curve)].x();
    const Line pre = lineThrough(curve, 0, firstAtOrAbove(curve, edge - 10.0));
    const Line post = lineThrough(curve, firstAtOrAbove(curve, edge + 10.0), curve.size());
    if (edgeStep != nullptr) {
        *edgeStep = post.at(edge) - pre.at(edge);
    }
    Curve result;
    for (const QPointF& p : curve) {
        const double gap = post.at(p.x()) - pre.at(p.x());
        result.append(QPointF(p.x(), (p.y() - pre.at(p.x())) / gap));
    }
    return result;
}

double plain::valueAt(const Curve& curve, double energy)
{
    const int above = qBound(1, firstAtOrAbove(curve, energy), curve.size() - 1);
    const QPointF& p = curve[above - 1];
    const QPointF& q = curve[above];
    return p.y() + (q.y() - p.y()) * (energy - p.x()) / (q.x() - p.x());
}

QVector<double> plain::weights(const Curve& sample, const QVector<Curve>& references)
{
    const int n = references.size();
    QVector<QVector<double>> a(n, QVector<double>(n, 0.0));
    QVector<double> b(n, 0.0);
    QVector<double> row(n);
    for (const QPointF& p : sample) {
        for (int i = 0; i < n; ++i) {
            row[i] = valueAt(references[i], p.x());
        }
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                a[i][j] += row[i] * row[j];
            }
            b[i] += row[i] * p.y();
        }
    }
    return solved(a, b);
}

plain::Maps plain::analyse(const QString& folder, const QString& suffix, double firstEnergy,
                           double energyStep, int darkSize, int halfWidth,
                           const QVector<Curve>& references)
{
    Maps maps;
    maps.ratio.resize(references.size());
    maps.dmut.resize(references.size());
    for (const Curve& spectrum :
         blockSpectra(folder, suffix, firstEnergy, energyStep, darkSize, halfWidth)) {
        double edgeStep = 0.0;
        const QVector<double> w = weights(normalised(spectrum, &edgeStep), references);
        for (int r = 0; r < w.size(); ++r) {
            maps.ratio[r].append(w[r]);
            maps.dmut[r].append(w[r] * edgeStep);
        }
    }
    return maps;
}
