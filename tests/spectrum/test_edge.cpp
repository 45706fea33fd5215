#include "spectrum/PlainHeld.h"

#include <QtTest>

#include <random>

Q_DECLARE_METATYPE(Spectrum)

namespace {

/// A scan from `first` to `last` in steps of `step` over an edge at 8985 eV of the given height.
Spectrum scan(double first, double last, double step, double height, double noise = 0.0)
{
    std::mt19937 random(7);
    std::normal_distribution<double> grain(0.0, 1.0);
    Spectrum s;
    for (double E = first; E <= last; E += step) {
        const double rise = 0.5 * (1.0 + std::tanh((E - 8985.0) / 1.5));
        s.append(E, 0.3 - 1e-4 * (E - 8985.0) + height * rise + noise * grain(random));
    }
    return s;
}

/// Spectra as pixels give them: a step of a third on noise, of which a Victoreen line makes what it
/// will some 300 eV further up.
XafsSpectrum noisyScan(std::mt19937& random, int mode, bool shifted)
{
    std::normal_distribution<double> noise(0.0, random() % 2 == 0 ? 0.02 : 0.15);
    Spectrum s;
    s.isShifted = shifted;
    s.eShift = shifted ? 2.3 : 0.0;
    for (int i = 0; i < 200; ++i) {
        const double E = 8900.0 + 2.0 * i;
        s.append(E, 0.4 + 0.3 / (1.0 + std::exp(8985.0 - E)) + noise(random));
    }
    return XafsSpectrum(s, "pixel", mode, 0.7, SuggestElm());
}

} // namespace

/// Whether there is an edge, and what of a spectrum can be compared.
class TestEdge : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everySpectrumHasAnOutcome_data()
    {
        QTest::addColumn<Spectrum>("curve");
        QTest::addColumn<double>("suggested"); // edge [eV], 0 without a suggestion
        QTest::addColumn<double>("threshold");
        QTest::addColumn<Outcome>("expected");
        const Spectrum good = scan(8900, 9100, 1, 0.5);
        Spectrum notANumber = good;
        notANumber.points[150].setY(qQNaN());
        QTest::newRow("edge") << good << 0.0 << 1.0 << Outcome::Fitted;
        QTest::newRow("suggested edge") << good << 8984.0 << 1.0 << Outcome::Fitted;
        QTest::newRow("nothing") << Spectrum() << 0.0 << 1.0 << Outcome::NoPoints;
        QTest::newRow("two points") << scan(8980, 8981, 1, 0.5) << 0.0 << 1.0 << Outcome::NoPreEdge;
        QTest::newRow("starts at the edge")
            << scan(8978, 9100, 1, 0.5) << 0.0 << 1.0 << Outcome::NoPreEdge;
        QTest::newRow("ends at the edge")
            << scan(8900, 8993, 1, 0.5) << 0.0 << 1.0 << Outcome::NoPostEdge;
        QTest::newRow("no pre-edge and outside the window: the first counts")
            << scan(8978, 9100, 1, 0.5) << 9050.0 << 1.0 << Outcome::NoPreEdge;
        QTest::newRow("nan") << notANumber << 0.0 << 1.0 << Outcome::NoStep;
        QTest::newRow("beside the window") << good << 9008.0 << 1.0 << Outcome::OutsideWindow;
        QTest::newRow("drowned") << scan(8900, 9100, 1, 0.1, 0.02) << 8984.0 << 10.0
                                 << Outcome::TooNoisy;
        QTest::newRow("noisy without a threshold in force")
            << scan(8900, 9100, 1, 0.1, 0.02) << 0.0 << 10.0 << Outcome::Fitted;
    }

    void everySpectrumHasAnOutcome()
    {
        QFETCH(Spectrum, curve);
        QFETCH(double, suggested);
        QFETCH(double, threshold);
        QFETCH(Outcome, expected);
        SuggestElm elm;
        elm.use = suggested > 0.0;
        elm.edgeE = suggested;
        elm.thJump = threshold;
        const XafsSpectrum s(curve, "test", VictLine::Straight, 0.0, elm);
        QCOMPARE(outcomeText(s.outcome), outcomeText(expected));
        QVERIFY(expected == Outcome::Fitted ? s.dMut > 0.0 : !(s.dMut > 0.0));
    }

    /// Noise without an edge: what is found of one must not be fitted when it can't be.
    void misplacedEdgesAreTold()
    {
        std::mt19937 random(3);
        std::normal_distribution<double> noise(0.0, 0.05);
        int told[outcomeKinds] = {};
        for (int round = 0; round < 400; ++round) {
            Spectrum s;
            for (int i = 0; i < 60; ++i)
                s.append(8950.0 + i, 0.5 + 0.002 * i + noise(random));
            const XafsSpectrum x(s, "flat", VictLine::Straight, 0.0, SuggestElm());
            ++told[int(x.outcome)];
            if (x.outcome == Outcome::Fitted)
                QVERIFY(x.dMut > 0.0 && x.midx >= s.xMin && x.midx <= s.xMax);
        }
        QVERIFY(told[int(Outcome::NoStep)] > 0 && told[int(Outcome::OutsideScan)] > 0);
    }

    /// Moving the lines past each other would turn a misplaced edge into a small step.
    void linesThatCrossAtTheEdgeStayCrossed()
    {
        Spectrum falling;
        for (double E = 8900.0; E <= 9100.0; E += 1.0)
            falling.append(E, E < 8985.0 ? 1.0 + 1e-4 * E : 0.6 - 1e-4 * E);
        XafsSpectrum s =
            XafsSpectrum::unnormalized(falling, "falling", VictLine::Straight, 0.0, {});
        s.fitLines(8985.0, VictLine::Straight);
        const double gap = (0.6 - 1e-4 * 8985.0) - (1.0 + 1e-4 * 8985.0);
        QVERIFY(std::abs(s.post.plainAt(8985.0) - s.pre.plainAt(8985.0) - 2.1 * gap) < 1e-9);
    }

    void heldValuesAreThoseOfThePlainRule_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("shifted");
        QTest::newRow("Victoreen") << int(VictLine::Victoreen) << false;
        QTest::newRow("Victoreen shifted") << int(VictLine::Victoreen) << true;
        QTest::newRow("straight") << int(VictLine::Straight) << false;
    }

    void heldValuesAreThoseOfThePlainRule()
    {
        QFETCH(int, mode);
        QFETCH(bool, shifted);
        std::mt19937 random(11);
        int states[3] = {};
        for (int round = 0; round < 600; ++round) {
            const XafsSpectrum s = noisyScan(random, mode, shifted);
            const ReadRange read = round % 3 == 0 ? ReadRange() : ReadRange{8920.0, 9060.0};
            const HeldGap gap(s, read);
            const PlainHeld plain(s, read.from, read.to);
            QCOMPARE(int(gap.state()), int(plain.state));
            const Spectrum curve = gap.curve();
            int firstHeld = -1;
            for (int i = 0; i < curve.size(); ++i) {
                QCOMPARE(curve.y(i), plain.y[i]);
                if (firstHeld < 0 && i > s.edgeIndex &&
                    curve.y(i) != s.doubleNormalizedPreBase.y(i))
                    firstHeld = i;
            }
            if (firstHeld >= 0)
                QVERIFY(gap.logText().startsWith(
                    QString("gap held above %1 eV").arg(curve.x(firstHeld), 0, 'f', 1)));
            ++states[gap.state()];
        }
        QVERIFY(states[HeldGap::Sound] > 0);
        // Straight lines are bent away from each other: there is next to nothing to hold.
        QVERIFY(mode == VictLine::Straight
                    ? states[HeldGap::Held] < 60
                    : states[HeldGap::Held] > 60 && states[HeldGap::Unsound] > 0);
    }
};

QTEST_APPLESS_MAIN(TestEdge)
#include "test_edge.moc"
