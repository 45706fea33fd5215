#include "LcfFixtures.h"
#include "PlantedWalk.h"

#include "analysis/residual/ResidualSection.h"
#include "analysis/residual/ResidualWalk.h"
#include "maps/MapBook.h"

#include <QLineEdit>
#include <QtTest>

namespace {

const QSize size(18, 7);

PlantedWalk walkOf(const SharedSource& source, double energy, double factor, Analyzed2DRes& jump,
                   Analyzed2DRes& rest)
{
    return {source,
            QRectF({}, size),
            std::make_shared<ResidualKernel>(energy, factor),
            [&] { return std::make_unique<ResidualSink>(jump, rest); },
            {&jump, &rest}};
}

/// An element that absorbs `below` times its jump before the edge, and falls with the energy; and
/// the rest of the sample, as thick as the column says.
double mixture(double E, int x, double jump, double below)
{
    const double thickness = jump * (1.0 - 2e-4 * (E - 9000.0));
    return thickness * (below + (E > 9000.0 ? 1.0 : 0.0)) + 0.02 * x + 1e-5 * (E - 9000.0);
}

} // namespace

/// The residual absorption, as a walk and as a part of the panel.
class TestResidual : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Both lines are straight, so they are found as planted and hold far away from the scan.
    void theRestOfAMixtureComesBack()
    {
        const auto jumpOf = [](int y) { return 0.3 + 0.05 * y; };
        const auto source = plantedSource(size, scanEnergies(140), [&](double E, int x, int y) {
            return mixture(E, x, jumpOf(y), 0.4);
        });
        Analyzed2DRes jump("j"), rest("r");
        walkOf(source, 8800.0, 0.4, jump, rest).run();
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                QVERIFY(std::abs(jump.valueAt(x, y) - 1.04 * jumpOf(y)) < 1e-4);
                QVERIFY(std::abs(rest.valueAt(x, y) - (0.02 * x - 0.002)) < 1e-4);
            }
        }
    }

    /// Energies where lines are bent and where they are not.
    void lanesGiveThePlainBytes_data()
    {
        QTest::addColumn<int>("background");
        QTest::addColumn<double>("energy");
        for (const double E : {8200.0, 8985.0, 9150.0}) {
            QTest::addRow("straight %g", E) << int(VictLine::Straight) << E;
            QTest::addRow("Victoreen %g", E) << int(VictLine::Victoreen) << E;
        }
    }
    void lanesGiveThePlainBytes()
    {
        QFETCH(int, background);
        QFETCH(double, energy);
        RandomCounts counts(3, 1000);
        const auto source = plantedSource(size, scanEnergies(140), [&](double E, int x, int y) {
            const double tilt = 2e-5 * (x - 9) * (E - 9000.0);
            return mixture(E, x, 0.05 * y, 0.4) + 0.3 + (E > 9000.0 ? tilt : -tilt) +
                   2e-4 * counts(x, y);
        });
        source->background = background;
        Analyzed2DRes jump("j"), rest("r");
        const QString difference = walkOf(source, energy, 1.5, jump, rest).differenceOfLanes();
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void shownSpectraTakeTheirShiftTwice()
    {
        Spectrum mu;
        for (const double E : scanEnergies(140))
            mu.append(E, mixture(E, 0, 0.5, 1.0));
        const XafsSpectrum plain(mu, "s", VictLine::Straight, 0.0, {});
        XafsSpectrum shifted = plain;
        shifted.isShifted = true;
        shifted.eShift = 10.0;
        ResidualKernel at(9000.0, 1.0);
        QCOMPARE(at.shown(shifted).values, ResidualKernel(8980.0, 1.0).shown(plain).values);
        QVERIFY(at.shown(plain).values != at.shown(shifted).values);
        QCOMPARE(int(at.shown(XafsSpectrum()).outcome), int(Outcome::NoPoints));
    }

    void theRatioCountsFromTheLeastRest()
    {
        Analyzed2DRes jump("j"), rest("r"), ratio("q");
        const auto fill = [&](const QRectF& part, double least) {
            const AnalyzeCond area(4, 3, 0, 0, part, -1, -1);
            for (Analyzed2DRes* map : {&jump, &rest, &ratio})
                map->prepare(area);
            AnalyzeCond at = area;
            at.start();
            do {
                jump.setData(at.cx, at.cy, 0, 0, 0.5);
                rest.setData(at.cx, at.cy, 0, 0, least + at.cx);
            } while (at.next());
            fillResidualRatio(jump, rest, ratio);
        };
        fill(QRectF(0, 0, 4, 3), 0.25);
        QCOMPARE(ratio.valueAt(0, 2), 0.0);
        QCOMPARE(ratio.valueAt(3, 0), 3.0 / 3.5);
        // The pixels that were not reached hold the least rest, 0.
        fill(QRectF(1, 1, 2, 2), 0.25);
        QCOMPARE(ratio.valueAt(1, 1), 1.25 / 1.75);
        QVERIFY(std::isnan(ratio.valueAt(0, 0)));
        QVERIFY(ratio.min == 1.25 / 1.75 && ratio.max == 2.25 / 2.75);
        // Unless the others are less: then they count from those.
        fill(QRectF(1, 1, 2, 2), -3.0);
        QCOMPARE(ratio.valueAt(0, 0), 1.0);
    }

    void commandsFillTheFields()
    {
        ResidualSection section;
        const SectionConditions before = section.conditions({});
        const QSignalSpy again(&section, &ResidualSection::askReanalyze);
        section.setRaEnergy(28984.375);
        section.setRaFactor(0.4);
        QCOMPARE(section.findChild<QLineEdit*>("RAAtEV")->text(), QString("28984.375"));
        QCOMPARE(section.conditions({}).numbers, (QVector<double>{28984.375, 0.4}));
        QVERIFY(!(section.conditions({}) == before) && again.size() == 2);
    }
};

QTEST_MAIN(TestResidual)
#include "test_residual.moc"
