#pragma once

#include "support/ImageFiles.h"

#include <QTemporaryDir>

#include <cmath>

/// A small measurement with planted fractions, as files: two references of equal edge estimate and
/// line gap, stacks of I1 and I0, all noiseless but for the rounding to 16 bits.
class SmallExperiment
{
public:
    static constexpr int width = 12;
    static constexpr int height = 7;
    static constexpr int energies = 61;
    static constexpr double firstEnergy = 8920.0;
    static constexpr double energyStep = 2.0;

    SmallExperiment()
    {
        QByteArray table[2];
        for (int i = 0; i < energies; ++i) {
            const double E = firstEnergy + energyStep * i;
            const QString name = QString::number(1000 + i) + ".img";
            i1 << write("i1_" + name, image([E](int x, int y) {
                            const double f = fraction(x, y);
                            return 4e9 * std::exp(-f * mu0(E) - (1 - f) * mu1(E));
                        }));
            i0 << write("i0_" + name, image([](int, int) { return 4e9; }));
            for (const int r : {0, 1})
                table[r] += QByteArray::number(E) + ' ' +
                            QByteArray::number(r == 0 ? mu0(E) : mu1(E), 'g', 17) + '\n';
        }
        references << write("a.dat", table[0]) << write("b.dat", table[1]);
    }

    /// Planted share of reference 0.
    static double fraction(int x, int y) { return 0.1 + 0.06 * x + 0.02 * y; }

    /// Edges that differ by a bump just above the edge alone, so that both lines of any mixture are
    /// the same and the planted shares come back but for the rounding of the pixels.
    static double mu0(double E) { return 0.2 + edge(E); }
    static double mu1(double E)
    {
        const double t = E - 8982.0;
        return 0.2 + edge(E) + 0.3 * std::exp(-t * t / 0.32);
    }

    /// Path of a file of the folder, written anew.
    QString write(const QString& name, const QByteArray& bytes) const
    {
        return writeBytes(dir.filePath(name), bytes) ? dir.filePath(name) : QString();
    }

    /// The commands that load energies, stacks and references, one pixel a block.
    QStringList loadingLines() const
    {
        QStringList lines{"Use_I0 1", "set_band_w 0", "set_band_h 0"};
        for (const QString& stack : {QStringLiteral("i1"), QStringLiteral("i0")})
            lines << "eng_calc_base_" + stack + " 8920"
                  << "eng_calc_delta_" + stack + " 2"
                  << "eng_calc_even_in_eng_" + stack + " 1"
                  << QStringLiteral("load_%1_files_of_pattern new %2/ %1_*.img")
                         .arg(stack, dir.path());
        for (int r = 0; r < references.size(); ++r)
            lines << QStringLiteral("analyzer_set_LCF_std %1 0 0 %2").arg(r).arg(references[r]);
        return lines;
    }

    QTemporaryDir dir;
    QStringList i1;
    QStringList i0;
    QStringList references;

private:
    static double edge(double E) { return 0.5 * (1.0 + std::tanh((E - 8980.0) / 0.5)); }

    static QByteArray image(const PixelFunction& f)
    {
        return imgBytes(width, height, "BytesPerPixel=4,ExposureTime=20 ms,", 4, f);
    }
};
