#include "LcfFixtures.h"
#include "PlantedWalk.h"

#include "analysis/dedge/DEdgeSection.h"
#include "calibration/ShiftMap.h"
#include "common/Fault.h"
#include "support/ImageFiles.h"

#include <QFrame>
#include <QLineEdit>
#include <QtTest>

namespace {

constexpr double edgeE = 8990.0;
const QSize size(20, 6);

double planted(int x, int y)
{
    return 0.13 * x - 0.4 * y;
}

/// One column is dead. The shifts of the map lie within those planted.
std::shared_ptr<WalkSource> sourceOf(double noise, int background)
{
    RandomCounts counts(3, 1000);
    const auto source = plantedSource(size, scanEnergies(140), [&](double E, int x, int y) {
        const double random = noise * (counts(x, y) / 1000.0 - 0.5);
        return x == 5 ? random : edgeShape(E, edgeE + planted(x, y), 0.8, 9.0) + random;
    });
    source->elm.edgeE = edgeE;
    source->background = background;
    ShiftMap map;
    map.prepare({size.width(), size.height(), 0, 0, QRectF({}, size), -1, -1});
    for (int k = 0; k < map.shifts.size(); ++k)
        map.shifts[k] = 0.1 * (k % 5);
    source->shifts = map.field({0, 0});
    return source;
}

PlantedWalk walkOf(const SharedSource& source, bool isMidPoint, Analyzed2DRes& map)
{
    DEdgeConditions c;
    c.isMidPoint = isMidPoint;
    c.edgeE = source->elm.edgeE;
    c.comparison = edgeSpectrum(scanEnergies(160), edgeE, 0.8, 9.0);
    return {source,
            QRectF({}, size),
            std::make_shared<DEdgeKernel>(c),
            [&map] { return std::make_unique<DEdgeSink>(map); },
            {&map}};
}

} // namespace

/// The shift of the edge, as a walk and as a part of the panel.
class TestDEdge : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plantedShiftsComeBack()
    {
        const auto source = sourceOf(0.0, VictLine::Straight);
        Analyzed2DRes mid("m"), compared("c");
        walkOf(source, true, mid).run();
        walkOf(source, false, compared).run();
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const XafsSpectrum s = source->spectrum(x, y, Stage::Curve);
                const bool fitted = s.outcome == Outcome::Fitted;
                QCOMPARE(fitted, x != 5);
                QCOMPARE(mid.isLeftOut(x, y), !fitted);
                QCOMPARE(mid.valueAt(x, y), fitted ? s.midx - s.eOffset - edgeE : 0.0);
                if (fitted)
                    QVERIFY(std::abs(compared.valueAt(x, y) + s.eOffset - planted(x, y)) < 0.1);
            }
        }
    }

    void failedEdgesAreNoExtremes()
    {
        // All shifts lie well above the 0 of the column that is dead.
        const auto source = sourceOf(0.0, VictLine::Straight);
        source->elm.edgeE = edgeE - 50.0;
        Analyzed2DRes map("m");
        walkOf(source, true, map).run();
        QVERIFY(map.min > 40.0 && map.valueAt(5, 2) == 0.0);
    }

    void lanesGiveThePlainBytes_data()
    {
        QTest::addColumn<int>("background");
        QTest::addColumn<bool>("isMidPoint");
        QTest::newRow("straight, mid point") << int(VictLine::Straight) << true;
        QTest::newRow("straight, comparison") << int(VictLine::Straight) << false;
        QTest::newRow("Victoreen, comparison") << int(VictLine::Victoreen) << false;
    }
    void lanesGiveThePlainBytes()
    {
        QFETCH(int, background);
        QFETCH(bool, isMidPoint);
        Analyzed2DRes map("m");
        const PlantedWalk walk = walkOf(sourceOf(0.3, background), isMidPoint, map);
        const QString difference = walk.differenceOfLanes();
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    /// Without a comparison spectrum nothing is compared, whatever was tried to load one.
    void theComparisonNeedsASpectrum()
    {
        DEdgeSection section;
        const auto* const box = section.findChild<QFrame*>("DEdgeCWSelectBox");
        const QSignalSpy again(&section, &DEdgeSection::askReanalyze);
        QVERIFY(section.notReady({}).isEmpty() && !box->isEnabled());
        section.setDEdgeMode(1);
        QVERIFY(box->isEnabled());
        QCOMPARE(section.notReady({}).log,
                 QString("dEdge is left out, no comparison spectrum is loaded"));
        const FaultCollector faults;
        section.setDEdgeMode(2);
        section.setComparisonFile(dir_.filePath("none.dat"));
        QCOMPARE(faults.faults().size(), 2);
        QVERIFY(faults.faults().last().contains("none.dat") && !section.notReady({}).isEmpty());

        QByteArray text;
        for (const double E : scanEnergies(160))
            text += QByteArray::number(E, 'f', 3) + " " +
                    QByteArray::number(edgeShape(E, edgeE, 0.8, 9.0), 'g', 12) + "\n";
        QVERIFY(writeBytes(dir_.filePath("a.dat"), text));
        section.setComparisonFile(dir_.filePath("a.dat"));
        QVERIFY(section.notReady({}).isEmpty());
        QCOMPARE(section.files(), QStringList{dir_.filePath("a.dat")});
        QCOMPARE(again.size(), 2);
        section.show(section.kernel({})->shown(edgeSpectrum(scanEnergies(90), edgeE + 3, 1, 9, 1)));
        QVERIFY(std::abs(section.findChild<QLineEdit*>("DispDEdge")->text().toDouble() - 2) < 0.2);
    }

    void conditionsTellWhatTheMapDependsOn()
    {
        DEdgeSection section;
        SpectraInfo there;
        there.elm.edgeE = edgeE;
        const SectionConditions mid = section.conditions(there);
        there.elm.edgeE += 1.0;
        QVERIFY(!(section.conditions(there) == mid));
        section.setDEdgeMode(1);
        const SectionConditions compared = section.conditions(there);
        there.elm.edgeE += 1.0;
        QVERIFY(section.conditions(there) == compared);
    }

private:
    const QTemporaryDir dir_;
};

QTEST_MAIN(TestDEdge)
#include "test_dedge.moc"
