#include "image/BlockSpectrum.h"
#include "support/RandomStack.h"

#include <QtTest>

#include <cmath>

namespace {

/// The block spectrum written down step by step, without any of the shared helpers.
Spectrum plainSpectrum(const StackPair& stacks, const BlockConditions& c, int x, int y)
{
    Spectrum spectrum;
    if (x < 0 || y < 0 || x >= c.imageWidth || y >= c.imageHeight)
        return spectrum;
    const double n = (2.0 * c.halfX + 1) * (2.0 * c.halfY + 1);
    const auto sumOf = [&](const TiffData* image) {
        double sum = 0.0;
        for (int yy = y - c.halfY; yy <= y + c.halfY; ++yy) {
            for (int xx = x - c.halfX; xx <= x + c.halfX; ++xx)
                sum += image->pixel(xx, yy);
        }
        return sum;
    };
    const auto i0At = [&](double E) {
        const TiffStack& s = stacks.i0;
        if (s.isEmpty())
            return 1.0;
        if (s.size() == 1)
            return sumOf(s[0]);
        int low = 0;
        while (low < s.size() - 2 && E >= s[low + 1]->energy)
            ++low;
        const double e1 = s[low]->energy;
        const double e2 = s[low + 1]->energy;
        const double s1 = sumOf(s[low]);
        const double s2 = sumOf(s[low + 1]);
        return e1 == e2 ? 0.5 * (s1 + s2) : (s2 - s1) / (e2 - e1) * (E - e1) + s1;
    };
    const double darkSum = c.dark ? sumOf(c.dark) / c.darkExposure : 0.0;
    for (int i = 0; i < stacks.i1.size(); ++i) {
        double d1 = c.dark ? darkSum * c.i1Exposure : 0.0;
        double d0 = c.dark ? darkSum * c.i0Exposure : 0.0;
        if (c.i1DarkAreaOn)
            d1 = (i < c.i1DarkAvg.size() ? c.i1DarkAvg[i] : 0.0) * n + d1;
        if (c.i0DarkAreaOn)
            d0 = (i < c.i0DarkAvg.size() ? c.i0DarkAvg[i] : 0.0) * n + d0;
        const double i1 = sumOf(stacks.i1[i]) - d1;
        double i0 = c.useI0 ? i0At(stacks.i1[i]->energy) - d0 : n;
        if (c.totalI0Loaded)
            i0 = i < c.totalI0.points.size() ? c.totalI0.points[i].y() : 0.0;
        double mu = 1.0;
        if (c.fluorescence)
            mu = i1 / i0;
        else if (i0 * i1 > 0.0)
            mu = std::log(i0 / i1);
        spectrum.append(stacks.i1[i]->energy, mu);
    }
    return spectrum;
}

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool same(const Spectrum& a, const Spectrum& b)
{
    if (a.points.size() != b.points.size())
        return false;
    for (int i = 0; i < a.points.size(); ++i) {
        if (!same(a.points[i].x(), b.points[i].x()) || !same(a.points[i].y(), b.points[i].y()))
            return false;
    }
    return same(a.xMin, b.xMin) && same(a.xMax, b.xMax) && same(a.yMin, b.yMin) &&
           same(a.yMax, b.yMax);
}

/// Stacks of 40 by 12 pixels with I0 energies between and beyond those of I1.
struct Experiment
{
    Experiment(int i1Images, int i0Images, TiffData::PixelType type)
    {
        RandomCounts counts(17);
        for (int i = 0; i < i1Images; ++i)
            i1.add(makeImage(40, 12, type, counts), 9000.0 + 2.5 * i);
        for (int i = 0; i < i0Images; ++i)
            i0.add(makeImage(40, 12, type, counts), 9003.0 + 4.0 * i);
        dark = makeImage(40, 12, type, [](int x, int y) { return 20.0 + x + y; });
        conditions.imageWidth = 40;
        conditions.imageHeight = 12;
    }

    OwnedStack i1;
    OwnedStack i0;
    std::unique_ptr<TiffData> dark;
    BlockConditions conditions;
};

} // namespace

/// Every rule of the block spectrum against a plain form of it, position by position and by rows.
class TestBlockSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyRuleAgreesWithThePlainForm_data();
    void everyRuleAgreesWithThePlainForm();
    void shiftedImagesAgreeWithThePlainForm();
    void vanishedCountsGiveOne();
    void withoutI0TheBlockIsHeldAgainstItsPixels();
    void outsideTheImageTheSpectrumIsEmpty();
    void rawI1IsThePlainSum();
};

void TestBlockSpectrum::everyRuleAgreesWithThePlainForm_data()
{
    QTest::addColumn<int>("i0Images");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("half");
    QTest::addColumn<QString>("rules");
    const QStringList rules{"",          "useI0",           "useI0 dark",          "useI0 area",
                            "dark area", "useI0 dark area", "useI0 fluorescence", "total",
                            "useI0 short"};
    const int types[] = {TiffData::TiffWords, TiffData::ImgLongs, TiffData::Floats};
    int n = 0;
    for (const QString& rule : rules) {
        for (const int i0Images : {0, 1, 2, 7}) {
            const int half = n % 3;
            QTest::addRow("%s, %d I0 images, half width %d", qPrintable(rule), i0Images, half)
                << i0Images << types[n % 3] << half << rule;
            ++n;
        }
    }
}

void TestBlockSpectrum::everyRuleAgreesWithThePlainForm()
{
    QFETCH(int, i0Images);
    QFETCH(int, type);
    QFETCH(int, half);
    QFETCH(QString, rules);
    Experiment e(12, i0Images, TiffData::PixelType(type));
    BlockConditions& c = e.conditions;
    c.halfX = half;
    c.halfY = 2 - half;
    c.useI0 = rules.contains(QLatin1String("useI0"));
    c.fluorescence = rules.contains(QLatin1String("fluorescence"));
    if (rules.contains(QLatin1String("dark"))) {
        c.dark = e.dark.get();
        c.darkExposure = 30.0;
        c.i1Exposure = 50.0;
        c.i0Exposure = 70.0;
    }
    const int averages = rules.contains(QLatin1String("short")) ? 4 : 12;
    if (rules.contains(QLatin1String("area")) || averages == 4) {
        c.i1DarkAreaOn = c.i0DarkAreaOn = true;
        for (int i = 0; i < averages; ++i) {
            c.i1DarkAvg.append(3.25 * i);
            c.i0DarkAvg.append(100.0 - i);
        }
    }
    if (rules.contains(QLatin1String("total"))) {
        c.totalI0Loaded = true;
        for (int i = 0; i < 9; ++i)
            c.totalI0.append(i, 1e5 + i);
    }
    const StackPair stacks{e.i1.images, e.i0.images};
    BlockSpectra blocks(stacks, c);
    for (int y = 0; y < 12; y += 3) {
        const QVector<Spectrum> row = blocks.row(-2, 1, 45, y);
        for (int k = 0; k < row.size(); ++k) {
            const Spectrum plain = plainSpectrum(stacks, c, k - 2, y);
            QVERIFY(same(row[k], plain));
            QVERIFY(same(rawXafs(stacks, c, k - 2, y), plain));
        }
    }
}

void TestBlockSpectrum::shiftedImagesAgreeWithThePlainForm()
{
    Experiment e(9, 9, TiffData::TiffWords);
    for (int i = 0; i < 9; ++i) {
        e.i1.images[i]->shiftX = i - 4;
        e.i1.images[i]->shiftY = 2 - i;
    }
    e.conditions.useI0 = true;
    e.conditions.halfX = 1;
    const StackPair stacks{e.i1.images, e.i0.images};
    BlockSpectra blocks(stacks, e.conditions);
    const QVector<Spectrum> row = blocks.row(0, 3, 14, 5);
    for (int k = 0; k < row.size(); ++k)
        QVERIFY(same(row[k], plainSpectrum(stacks, e.conditions, 3 * k, 5)));
}

void TestBlockSpectrum::vanishedCountsGiveOne()
{
    OwnedStack i1;
    OwnedStack i0;
    for (const double counts : {0.0, 50.0, 100.0})
        i1.add(makeImage(1, 1, TiffData::TiffWords, [=](int, int) { return counts; }), counts);
    BlockConditions c;
    c.imageWidth = c.imageHeight = 1;
    c.i1DarkAreaOn = true;
    c.i1DarkAvg = {0.0, 60.0, 0.0};
    const Spectrum spectrum = rawXafs({i1.images, i0.images}, c, 0, 0);
    QCOMPARE(spectrum.y(0), 1.0);
    QCOMPARE(spectrum.y(1), 1.0);
    QCOMPARE(spectrum.y(2), std::log(1.0 / 100.0));
}

void TestBlockSpectrum::withoutI0TheBlockIsHeldAgainstItsPixels()
{
    OwnedStack i1;
    OwnedStack i0;
    i1.add(makeImage(3, 3, TiffData::TiffWords, [](int, int) { return 5.0; }), 1.0);
    BlockConditions c;
    c.imageWidth = c.imageHeight = 3;
    c.halfX = c.halfY = 1;
    QCOMPARE(rawXafs({i1.images, i0.images}, c, 1, 1).y(0), std::log(9.0 / 45.0));
    // A block that hangs over the edge sums less, but is still held against its full size.
    QCOMPARE(rawXafs({i1.images, i0.images}, c, 0, 0).y(0), std::log(9.0 / 20.0));
}

void TestBlockSpectrum::outsideTheImageTheSpectrumIsEmpty()
{
    Experiment e(3, 0, TiffData::TiffWords);
    const StackPair stacks{e.i1.images, e.i0.images};
    for (const QPoint& p : {QPoint(-1, 0), QPoint(0, -1), QPoint(40, 0), QPoint(0, 12)}) {
        QVERIFY(rawXafs(stacks, e.conditions, p.x(), p.y()).isEmpty());
        QVERIFY(rawI1(e.i1.images, e.conditions, p.x(), p.y()).isEmpty());
    }
}

void TestBlockSpectrum::rawI1IsThePlainSum()
{
    Experiment e(3, 0, TiffData::TiffWords);
    e.conditions.halfX = 2;
    const Spectrum spectrum = rawI1(e.i1.images, e.conditions, 5, 6);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(spectrum.y(i), e.i1.images[i]->blockSum(5, 6, 2, 0));
}

QTEST_GUILESS_MAIN(TestBlockSpectrum)
#include "test_block_spectrum.moc"
