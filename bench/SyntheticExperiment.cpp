#include "SyntheticExperiment.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

#include <cmath>
#include <cstdint>

namespace {

constexpr double edge = 8984.0;
constexpr double i0Counts = 40000.0;

/// A fast reproducible value in 0..1 for a pixel of an image.
double noise(std::uint32_t image, std::uint32_t pixel)
{
    std::uint32_t h = image * 0x9E3779B1U ^ pixel * 0x85EBCA77U;
    h ^= h >> 15;
    h *= 0x2C1B3C6DU;
    h ^= h >> 12;
    return double(h) / 4294967296.0;
}

std::unique_ptr<TiffData> image(int number, bool sample)
{
    const double E = synthetic::firstEnergy + synthetic::energyStep * number;
    double mu[synthetic::references];
    for (int r = 0; r < synthetic::references; ++r)
        mu[r] = synthetic::referenceMu(r, E);
    auto data = std::make_unique<TiffData>();
    data->allocate(synthetic::side, synthetic::side, TiffData::TiffWords);
    for (int y = 0; y < synthetic::side; ++y) {
        quint16* row = data->row<quint16>(y);
        const double b = double(y) / synthetic::side;
        for (int x = 0; x < synthetic::side; ++x) {
            const double a = double(x) / synthetic::side;
            const double absorption =
                sample ? 0.6 * (a * mu[0] + (1 - a) * b * mu[1] + (1 - a) * (1 - b) * mu[2]) : 0.0;
            const auto seed = std::uint32_t(2 * number + (sample ? 1 : 0));
            const double scatter = noise(seed, std::uint32_t(y * synthetic::side + x)) - 0.5;
            row[x] = quint16(i0Counts * std::exp(-absorption) + 300.0 * scatter);
        }
        data->noteExtremes(y);
    }
    data->energy = E;
    return data;
}

} // namespace

double synthetic::referenceMu(int r, double E)
{
    const double t = E - edge;
    const double step = 0.5 + std::atan(t / 1.5) / 3.14159265358979;
    const double line = 0.4 * r * std::exp(-(t - 6.0) * (t - 6.0) / (8.0 + 4.0 * r));
    return 0.3 - 1e-4 * t + step + line;
}

std::unique_ptr<TiffData> synthetic::i1Image(int number)
{
    return image(number, true);
}

std::unique_ptr<TiffData> synthetic::i0Image(int number)
{
    return image(number, false);
}

StackPair synthetic::stacks()
{
    static TiffStack i1;
    static TiffStack i0;
    for (int i = i1.size(); i < energies; ++i) {
        i1.append(i1Image(i));
        i0.append(i0Image(i));
    }
    return {i1, i0};
}

BlockConditions synthetic::conditions(int half)
{
    BlockConditions c;
    c.halfX = c.halfY = half;
    c.imageWidth = c.imageHeight = side;
    c.useI0 = true;
    return c;
}

QString synthetic::writeReference(const QString& folder, int r)
{
    QString name = QDir(folder).filePath(QStringLiteral("ref%1.dat").arg(r));
    QFile file(name);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream out(&file);
        out.setRealNumberPrecision(17);
        for (int i = 0; i < energies; ++i) {
            const double E = firstEnergy + energyStep * i;
            out << E << ' ' << referenceMu(r, E) << '\n';
        }
    }
    return name;
}

QVector<LcfReferenceData> synthetic::referenceRows()
{
    QVector<LcfReferenceData> rows;
    for (int r = 0; r < references; ++r) {
        Spectrum curve;
        for (int i = 0; i < energies; ++i) {
            const double E = firstEnergy + energyStep * i;
            curve.append(E, referenceMu(r, E));
        }
        LcfReferenceData row;
        row.spectrum = XafsSpectrum(curve, QStringLiteral("ref"), VictLine::Straight, 0.0, {});
        row.spectrum.isShifted = true;
        row.active = true;
        rows.append(row);
    }
    rows.append(LcfReferenceData());
    return rows;
}
