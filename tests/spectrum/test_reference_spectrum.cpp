#include "spectrum/ReferenceSpectrum.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

Q_DECLARE_METATYPE(EdgeHint)

namespace {

constexpr double edgeE = 7112.0;

/// A foil: an edge of a few eV, and 100 eV above it a slower rise of a similar height.
double foil(double E)
{
    const double edge = 0.5 + std::atan((E - edgeE) / 1.2) / M_PI;
    const double wiggle = 0.5 + std::atan((E - edgeE - 100.0) / 12.0) / M_PI;
    return 2.0 - 2e-4 * (E - 7000.0) + edge + 0.8 * wiggle;
}

/// Energies in two regions: fine steps across the edge, coarse ones elsewhere.
QVector<double> energies(double fine, double coarse)
{
    QVector<double> list;
    for (double E = 7000.0; E<7500.0; E += E> edgeE - 20.0 && E < edgeE + 30.0 ? fine : coarse)
        list.append(E);
    return list;
}

EdgeHint hint(double E, bool applied)
{
    EdgeHint h;
    h.elm.use = true;
    h.elm.edgeE = E;
    h.elm.thJump = 1e9;
    h.applied = applied;
    return h;
}

} // namespace

/// Spectra from files as references and standard: what is told of their edge, and how they are
/// normalised.
class TestReferenceSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void doubtfulEdgesAreTold_data()
    {
        QTest::addColumn<QVector<double>>("grid");
        QTest::addColumn<EdgeHint>("given");
        QTest::addColumn<QString>("doubt");
        const QVector<double> even = energies(1.0, 1.0);
        const QVector<double> uneven = energies(0.25, 8.0);
        QVector<double> doubled = even;
        doubled.insert(300, doubled[299] + 1e-6); // on the rise of the wiggle
        QTest::newRow("even steps") << even << EdgeHint() << "";
        QTest::newRow("nearly one energy twice") << doubled << EdgeHint() << "";
        QTest::newRow("uneven steps") << uneven << EdgeHint() << "uneven steps: use Suggest Elm.";
        QTest::newRow("suggested, not applied")
            << uneven << hint(edgeE, false) << "uneven steps: use Suggest Elm.";
        QTest::newRow("suggested and applied") << uneven << hint(edgeE, true) << "";
        QTest::newRow("another suggested")
            << even << hint(edgeE + 25.0, false) << "the suggested edge is at 7137.0 eV";
        QTest::newRow("another applied")
            << uneven << hint(edgeE + 100.0, true) << "the suggested edge is at 7212.0 eV";
    }

    void doubtfulEdgesAreTold()
    {
        QFETCH(QVector<double>, grid);
        QFETCH(EdgeHint, given);
        QFETCH(QString, doubt);
        const LogCapture log;
        ReferenceSpectrum reference;
        reference.setHint(given);
        const QString name = write(grid);
        QCOMPARE(reference.load(name, VictLine::Straight), QString());
        const SteepestRises rises = steepestRises(reference.spectrum());
        QVERIFY(std::abs(rises.perEV - edgeE) < 2.0);
        const QStringList doubts = reference.doubts();
        // A wiggle that is taken for the edge may leave none that can be used.
        const bool failed = reference.spectrum().outcome != Outcome::Fitted;
        QCOMPARE(doubts.filter("no edge that can be trusted").size(), failed ? 1 : 0);
        QCOMPARE(doubts.size(), (doubt.isEmpty() ? 0 : 1) + (failed ? 1 : 0));
        QVERIFY(doubts.join('\n').contains(doubt));
        for (const QString& told : doubts)
            QCOMPARE(log.linesWith(name + ": " + told), 1);
    }

    void nothingThatRisesIsDoubted()
    {
        Spectrum flat;
        for (int i = 0; i < 9; ++i)
            flat.append(i, -i);
        const XafsSpectrum s(flat, {}, VictLine::Straight, 0.0, {});
        QVERIFY(edgeDoubts(steepestRises(s), hint(100.0, false)).isEmpty());
        QVERIFY(edgeDoubts(steepestRises({}), {}).isEmpty());
        // A suggestion that is no number is no other one at each look.
        QVERIFY(hint(qQNaN(), true).isLike(hint(qQNaN(), true)));
    }

    /// Whatever came before, the curves are those of a spectrum made at once, without the
    /// threshold.
    void isNormalizedAnewFromFreshLines()
    {
        ReferenceSpectrum reference;
        reference.setShift(1.5);
        QVERIFY(reference.load(write(energies(0.25, 8.0)), VictLine::Straight).isEmpty());
        QVERIFY(std::abs(reference.spectrum().midx - edgeE) > 50.0);
        const QVector<QPointF> whole = reference.spectrum().doubleNormalizedPreBase.points;
        for (const int mode : {VictLine::Victoreen, VictLine::Straight}) {
            reference.setMode(mode);
            QVERIFY(reference.setHint(hint(edgeE, true)));
            SuggestElm elm = hint(edgeE, true).elm;
            elm.thJump = 0.0;
            XafsSpectrum unshifted = reference.spectrum();
            unshifted.isShifted = false;
            const XafsSpectrum plain(unshifted, {}, mode, 1.5, elm);
            const XafsSpectrum& s = reference.spectrum();
            QCOMPARE(s.doubleNormalizedPreBase.points, plain.doubleNormalizedPreBase.points);
            QVERIFY(s.midx == plain.midx && std::abs(s.midx - edgeE) < 3.0 && s.dMut > 0.5);
            QVERIFY(s.eShift == 1.5 && s.eOffset == 1.5 && s.isShifted);
            QVERIFY(!reference.setHint(hint(edgeE, true)));
            QVERIFY(reference.setHint(hint(edgeE, false)));
        }
        QCOMPARE(reference.spectrum().doubleNormalizedPreBase.points, whole);
    }

    void tooFewPointsAreRefused()
    {
        ReferenceSpectrum reference;
        QVERIFY(reference.load(write({7000, 7100, 7200}), VictLine::Straight).isEmpty());
        QVERIFY(!reference.load(write({7000, 7100, 7100}), VictLine::Straight).isEmpty());
        QVERIFY(reference.isEmpty() && reference.doubts().isEmpty());
    }

private:
    QString write(const QVector<double>& grid)
    {
        QByteArray text;
        for (const double E : grid)
            text +=
                QByteArray::number(E, 'g', 17) + ' ' + QByteArray::number(foil(E), 'g', 17) + '\n';
        const QString name = dir_.filePath("foil.dat");
        return writeBytes(name, text) ? name : QString();
    }

    const QTemporaryDir dir_;
};

QTEST_APPLESS_MAIN(TestReferenceSpectrum)
#include "test_reference_spectrum.moc"
