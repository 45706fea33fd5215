#pragma once

#include "analysis/Analyzer.h"
#include "app/Body.h"
#include "support/ImageFiles.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

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
        for (int i = 0; i < energies; ++i) {
            const double E = firstEnergy + energyStep * i;
            i1.append(writeImage(QStringLiteral("i1_%1.img").arg(i, 3, 10, QLatin1Char('0')),
                                 [=](int x, int y) {
                                     const double f = fraction(x, y);
                                     const double mu = f * mu0(E) + (1 - f) * mu1(E);
                                     return 4e9 * std::exp(-mu);
                                 }));
            i0.append(writeImage(QStringLiteral("i0_%1.img").arg(i, 3, 10, QLatin1Char('0')),
                                 [](int, int) { return 4e9; }));
        }
        references << writeReference(QStringLiteral("a.dat"), mu0)
                   << writeReference(QStringLiteral("b.dat"), mu1);
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

    QString filePath(const QString& name) const { return dir.filePath(name); }

    QTemporaryDir dir;
    QStringList i1;
    QStringList i0;
    QStringList references;

private:
    static double edge(double E) { return 0.5 * (1.0 + std::tanh((E - 8980.0) / 0.5)); }

    QString writeImage(const QString& name, const PixelFunction& f)
    {
        const QString path = dir.filePath(name);
        writeBytes(path, imgBytes(width, height, "BytesPerPixel=4,ExposureTime=20 ms,", 4, f));
        return path;
    }

    QString writeReference(const QString& name, double (*mu)(double))
    {
        QString text;
        QTextStream out(&text);
        out.setRealNumberPrecision(17);
        for (int i = 0; i < energies; ++i) {
            const double E = firstEnergy + energyStep * i;
            out << E << ' ' << mu(E) << '\n';
        }
        const QString path = dir.filePath(name);
        writeBytes(path, text.toUtf8());
        return path;
    }
};

/// Drives a main window as a batch does: commands by text, each waited for by its ticket.
class BodyDriver
{
public:
    explicit BodyDriver(Body& body)
        : body_(body)
        , ends_(&body, &Body::finishBatchExec)
    {
    }

    /// Runs one command and waits for its report; false when none comes in time.
    bool run(const QString& text, int waitMs = 10000)
    {
        CmdLine line(text);
        line.ticket = ++ticket_;
        body_.execCmdSlot(line, false);
        QElapsedTimer timer;
        timer.start();
        while (!reported(ticket_) && timer.elapsed() < waitMs)
            QTest::qWait(2);
        return reported(ticket_);
    }

    bool runAll(const QStringList& lines)
    {
        for (const QString& line : lines) {
            if (!run(line))
                return false;
        }
        return true;
    }

    /// Energies, stacks and references of the experiment.
    bool load(const SmallExperiment& e)
    {
        const QString all = QStringLiteral(" new ") + e.dir.path() + QStringLiteral("/ ");
        QStringList lines;
        for (const QString& stack : {QStringLiteral("i1"), QStringLiteral("i0")}) {
            lines << QStringLiteral("eng_calc_base_%1 %2").arg(stack).arg(e.firstEnergy)
                  << QStringLiteral("eng_calc_delta_%1 %2").arg(stack).arg(e.energyStep)
                  << QStringLiteral("eng_calc_even_in_eng_%1 1").arg(stack)
                  << QStringLiteral("load_%1_files_of_pattern").arg(stack) + all + stack +
                         QStringLiteral("_*.img");
        }
        for (int r = 0; r < e.references.size(); ++r)
            lines << QStringLiteral("analyzer_set_LCF_std %1 0 0 %2").arg(r).arg(e.references[r]);
        lines << QStringLiteral("Use_I0 1") << QStringLiteral("set_band_w 0")
              << QStringLiteral("set_band_h 0");
        return runAll(lines);
    }

private:
    bool reported(int ticket) const
    {
        for (const QList<QVariant>& end : ends_) {
            if (end[1].toInt() == ticket)
                return true;
        }
        return false;
    }

    Body& body_;
    QSignalSpy ends_;
    int ticket_ = 0;
};
