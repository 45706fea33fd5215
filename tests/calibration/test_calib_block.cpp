#include "calibration/CalibBlock.h"

#include "ReferenceShapes.h"
#include "maps/Analyzed2DRes.h"
#include "support/LogCapture.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

namespace {

/// The scan of a species that a pixel sees whose energies lie higher by `shift`.
Spectrum scan(int species, double first, double step, int count, double shift)
{
    Spectrum s;
    for (int i = 0; i < count; ++i) {
        const double E = first + step * i;
        s.append(E, referenceAbsorption(Difficulty::Easy, species, E - shift));
    }
    return s;
}

XafsSpectrum normalised(const Spectrum& s)
{
    return {s, "standard", VictLine::Straight, 0.0, SuggestElm()};
}

/// A standard from a file is finer than the images' scan and reaches beyond it.
XafsSpectrum fineStandard(int species)
{
    return normalised(scan(species, 8928.0, 0.25, 521, 0.0));
}

struct Errors
{
    double worst = 0.0;
    double rms = 0.0;
};

/// What the calibration makes of shifts planted evenly over 3 eV. [eV]
Errors errorsOf(int species, double step, const XafsSpectrum& standard, CalibMethod method)
{
    CalibConditions conditions;
    conditions.method = method;
    constexpr int shifts = 231;
    Errors errors;
    double squares = 0.0;
    for (int i = 0; i < shifts; ++i) {
        const double planted = -1.5 + 0.013 * i;
        const Spectrum block = scan(species, 8948.0, step, qRound(80.0 / step) + 1, planted);
        const double error = blockShift(block, standard, conditions).shift - planted;
        errors.worst = std::max(errors.worst, std::abs(error));
        squares += error * error;
    }
    errors.rms = std::sqrt(squares / shifts);
    return errors;
}

} // namespace

/// The shift of a block against planted ones, and the statistics of a calibration.
class TestCalibBlock : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plantedShiftsComeBack_data()
    {
        QTest::addColumn<int>("species");
        QTest::addColumn<double>("step");
        for (const double step : {1.0, 0.4}) {
            QTest::addRow("reduced, %g eV", step) << 0 << step;
            QTest::addRow("metal, %g eV", step) << 1 << step;
            QTest::addRow("oxide, %g eV", step) << 2 << step;
        }
    }

    /// The search visits shifts 0.1 eV apart and counts from the mid points' difference. So where
    /// that is off by half a step, as the oxide's is, a perfect product leaves 0.05 eV at each
    /// position.
    void plantedShiftsComeBack()
    {
        QFETCH(int, species);
        QFETCH(double, step);
        const auto product =
            errorsOf(species, step, fineStandard(species), CalibMethod::InnerProduct);
        QVERIFY2(product.worst <= 0.06, qPrintable(QString::number(product.worst)));
        QVERIFY2(product.rms <= (species == 2 ? 0.05 : 0.035),
                 qPrintable(QString::number(product.rms)));
        // The smoothing before the mid point spans five points, so it compares like with like only
        // for a standard that was scanned with the same step.
        const XafsSpectrum standard = normalised(scan(species, 8948.0, step, 201, 0.0));
        const auto middle = errorsOf(species, step, standard, CalibMethod::MidPoint);
        QVERIFY2(middle.rms <= step / 3, qPrintable(QString::number(middle.rms)));
    }

    void anUnlikeStepBiasesTheMidPointAlone()
    {
        // The metal's edge is straight enough for the mid point of a finer standard.
        QVERIFY(errorsOf(1, 1.0, fineStandard(1), CalibMethod::MidPoint).rms < 1.0 / 3);
        const auto middle = errorsOf(0, 1.0, fineStandard(0), CalibMethod::MidPoint);
        QVERIFY(middle.rms > 0.5 && middle.worst < 0.8);
    }

    void theShiftIsThatOfTheWholeSpectrum()
    {
        const XafsSpectrum standard = fineStandard(1);
        CalibConditions c;
        const Spectrum raw = scan(0, 8948.0, 0.7, 110, 0.8);
        const XafsSpectrum whole(raw, "whole", c.backgroundMode, 0.0, c.sElm);
        QCOMPARE(blockShift(raw, standard, c).shift, whole.midx - standard.midx);
        c.method = CalibMethod::InnerProduct;
        c.range = 12.0;
        c.step = 0.5;
        c.minStep = 0.01;
        QCOMPARE(blockShift(raw, standard, c).shift,
                 whole.findBestShift(standard, 12.0, 0.5, 0.01));
        c.minStep = 0.6;
        QCOMPARE(blockShift(raw, standard, c).shift, 0.0);
    }

    /// Positions that are not fitted have no shift, by either method.
    void failedEdgesHaveNoShift()
    {
        const XafsSpectrum standard = fineStandard(1);
        for (const CalibMethod method : {CalibMethod::MidPoint, CalibMethod::InnerProduct}) {
            CalibConditions c;
            c.method = method;
            QVERIFY(blockShift(Spectrum(), standard, c).outcome == Outcome::NoPoints);
            c.sElm.use = true;
            c.sElm.edgeE += 30.0;
            const BlockShift failed = blockShift(scan(0, 8900.0, 0.7, 250, 0.8), standard, c);
            QVERIFY(failed.outcome == Outcome::OutsideWindow);
            QCOMPARE(failed.shift, 0.0);
        }
    }

    /// Noisy Victoreen lines cross behind the edge; as they are, some shifts are off by eV.
    void heldCurvesAreCompared()
    {
        std::mt19937 random(5);
        std::normal_distribution<double> noise(0.0, 0.05);
        const XafsSpectrum standard = normalised(scan(1, 8900.0, 0.5, 700, 0.0));
        CalibConditions c;
        c.method = CalibMethod::InnerProduct;
        c.backgroundMode = VictLine::Victoreen;
        double worst[2] = {};
        int held = 0;
        for (int i = 0; i < 200; ++i) {
            Spectrum s = scan(1, 8930.0, 1.0, 270, 0.3);
            for (QPointF& p : s.points)
                p.setY(p.y() + noise(random));
            for (const bool hold : {false, true}) {
                c.holdGap = hold;
                const BlockShift found = blockShift(s, standard, c);
                held += found.gapHeld ? 1 : 0;
                QVERIFY(hold || !found.gapHeld);
                if (found.fitted())
                    worst[hold] = std::max(worst[hold], std::abs(found.shift - 0.3));
            }
        }
        QVERIFY2(held > 10 && worst[1] < 0.5 * worst[0],
                 qPrintable(QString("%1: %2 %3").arg(held).arg(worst[0]).arg(worst[1])));
    }

    void statisticsOfTheMap()
    {
        // Blocks of 3x3 in the area (1, 0)-(7, 9) of a map 9 wide and 7 high: two in a row, and the
        // last row's centres lie outside, where the map reads as 0.
        const AnalyzeCond walk(9, 7, 1, 1, QRectF(1, 0, 6, 9), -1, -1);
        const BlockShift found[] = {
            {1.5, Outcome::Fitted, true},     {7.0, Outcome::NoStep, false},
            {-2.5, Outcome::Fitted, false},   {3.0, Outcome::Fitted, false},
            {qInf(), Outcome::Fitted, false}, {4.0, Outcome::Fitted, false}};
        Analyzed2DRes map("map");
        map.prepare(walk);
        CalibStatistics statistics;
        AnalyzeCond at = walk;
        for (const BlockShift& f : found) {
            const bool counts = f.fitted() && std::isfinite(f.shift);
            QCOMPARE(statistics.take({at.cx, at.cy}, f), counts);
            if (counts)
                map.setData(at.cx, at.cy, 1, 1, f.shift);
            at.next();
        }
        const LogCapture log;
        statistics.close(walk, map);
        QCOMPARE(statistics.count, 4);
        QCOMPARE(QPointF(statistics.min, statistics.max), QPointF(-2.5, 4.0));
        QCOMPARE(statistics.mean, 1.5);
        QCOMPARE(statistics.sigma, std::sqrt((0.0 + 16.0 + 2.25 + 2.25) / 4));
        // Of -2.5, 1.5, 3 and 4, and of their distances 4.75, 0.75, 0.75 and 1.75.
        QCOMPARE(QPointF(statistics.median, statistics.mad), QPointF(2.25, 1.25));
        QCOMPARE(log.linesWith("1 shifts are not finite"), 1);
        QCOMPARE(statistics.outcomes.text(),
                 QString("fitted 5 (gap held 1), step not above 0 1; lines cross in the fitting "
                         "range: narrow it, widen the pre-edge range or use straight lines"));
    }

    void statisticsOfNothing()
    {
        const Analyzed2DRes map("map");
        CalibStatistics statistics;
        statistics.take({0, 0}, {});
        statistics.close(AnalyzeCond(1, 1, 0, 0, QRectF(0, 0, 1, 1), -1, -1), map);
        QVERIFY(statistics.count == 0 && std::isnan(statistics.mean));
        QVERIFY(std::isnan(statistics.sigma) && std::isnan(statistics.min));
        QVERIFY(std::isnan(statistics.median) && std::isnan(statistics.mad));
    }
};

QTEST_APPLESS_MAIN(TestCalibBlock)
#include "test_calib_block.moc"
