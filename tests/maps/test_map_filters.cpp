#include "maps/Analyzed2DRes.h"

#include <QtTest>

#include <cmath>
#include <random>

namespace {

/// A field with its walk, seen plainly: `at` gives the value of the sample (column, row).
struct Samples
{
    AnalyzeCond ac;
    std::vector<double> values; ///< one a pixel

    int pixelX(int i) const { return ac.x0 + ac.halfX + i * ac.stepX; }
    int pixelY(int j) const { return ac.y0 + ac.halfY + j * ac.stepY; }
    bool inside(int i, int j) const
    {
        return pixelX(i) >= 0 && pixelX(i) < ac.width && pixelY(j) >= 0 && pixelY(j) < ac.height;
    }
    double at(int i, int j) const
    {
        return values.at(static_cast<std::size_t>(pixelX(i)) +
                         static_cast<std::size_t>(pixelY(j)) * static_cast<std::size_t>(ac.width));
    }
};

/// A noisy field of blocks with glitches: values near 10, some near 1000, some very negative.
Samples plant(Analyzed2DRes& map, int half, const QRectF& area, unsigned seed)
{
    Samples s{AnalyzeCond(31, 23, half, half, area, -1, -1), {}};
    map.prepare(s.ac);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> noise(9.0, 11.0);
    AnalyzeCond walk = s.ac;
    do {
        const auto dice = random() % 20;
        const double v = dice == 0 ? 1000.0 : dice == 1 ? -300.0 : noise(random);
        map.setData(walk.cx, walk.cy, half, half, v);
    } while (walk.next());
    s.values.assign(map.data(), map.data() + s.ac.width * s.ac.height);
    return s;
}

double roughness(const Samples& s, int i, int j)
{
    std::vector<double> d;
    if (s.inside(i - 1, j) && s.inside(i + 1, j))
        d.push_back(std::fabs(2 * s.at(i, j) - s.at(i - 1, j) - s.at(i + 1, j)));
    if (s.inside(i, j - 1) && s.inside(i, j + 1))
        d.push_back(std::fabs(2 * s.at(i, j) - s.at(i, j - 1) - s.at(i, j + 1)));
    if (d.empty())
        return 0.0;
    return d.size() == 2 ? (d[0] + d[1]) / 2 : d[0];
}

double meanOf(const std::vector<double>& v, double fallback)
{
    double sum = 0.0;
    for (const double x : v)
        sum += x;
    return v.empty() ? fallback : sum / static_cast<double>(v.size());
}

double plainDeglitch(const Samples& s, int i, int j, double threshold, double lo, double hi)
{
    const double v = s.at(i, j);
    if (!(roughness(s, i, j) > threshold) || !(v < lo || v > hi))
        return v;
    std::vector<double> near;
    const int around[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    for (const auto& d : around)
        if (s.inside(i + d[0], j + d[1]))
            near.push_back(s.at(i + d[0], j + d[1]));
    return meanOf(near, v);
}

double plainDeglitch2(const Samples& s, int i, int j, double mean, double limit)
{
    if (!(std::fabs(s.at(i, j) - mean) > limit))
        return s.at(i, j);
    std::vector<double> near;
    for (int dx = -1; dx <= 1; ++dx)
        for (int dy = -1; dy <= 1; ++dy)
            if ((dx != 0 || dy != 0) && s.inside(i + dx, j + dy) &&
                std::fabs(s.at(i + dx, j + dy) - mean) < limit)
                near.push_back(s.at(i + dx, j + dy));
    return meanOf(near, 0.0);
}

void addFields()
{
    QTest::addColumn<int>("half");
    QTest::addColumn<QRectF>("area");
    QTest::newRow("pixels") << 0 << QRectF(0, 0, 31, 23);
    QTest::newRow("blocks of 3 by 3") << 1 << QRectF(0, 0, 31, 23);
    QTest::newRow("blocks of an inner area") << 2 << QRectF(3, 2, 20, 15);
    QTest::newRow("one row") << 0 << QRectF(0, 0, 31, 1);
    QTest::newRow("one position") << 0 << QRectF(4, 4, 1, 1);
}

} // namespace

class TestMapFilters : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false")); }
    void deglitchEqualsItsPlainForm_data() { addFields(); }
    void deglitchEqualsItsPlainForm();
    void deglitch2EqualsItsPlainForm_data() { addFields(); }
    void deglitch2EqualsItsPlainForm();
    void deglitchTakesAwayAPlantedPixel();
    void deglitch2WithoutACommonLevelGivesZeros();
    void showsAndKeepsTheProcessedFieldOnlyOnDemand();
};

void TestMapFilters::deglitchEqualsItsPlainForm()
{
    QFETCH(int, half);
    QFETCH(QRectF, area);
    for (const double ratio : {0.1, 0.3, 0.9}) {
        Analyzed2DRes map(QStringLiteral("m"));
        const Samples s = plant(map, half, area, 7);
        map.setDeglitchConds(1.5, ratio);
        map.deglitch();
        double sum = 0.0;
        for (int j = 0; j < s.ac.rows(); ++j)
            for (int i = 0; i < s.ac.columns(); ++i)
                sum += roughness(s, i, j);
        const double threshold = 1.5 * (sum / (s.ac.rows() * s.ac.columns()));
        const double range = (map.max - map.min) * ratio;
        double lowest = 1e300;
        for (int j = 0; j < s.ac.rows(); ++j) {
            for (int i = 0; i < s.ac.columns(); ++i) {
                const double v =
                    plainDeglitch(s, i, j, threshold, map.min + range, map.max - range);
                QCOMPARE(map.procData()[s.pixelY(j) * 31 + s.pixelX(i)], v);
                QCOMPARE(map.data()[s.pixelY(j) * 31 + s.pixelX(i)], s.at(i, j));
                lowest = std::min(lowest, v);
            }
        }
        QCOMPARE(map.procMin, lowest);
    }
}

void TestMapFilters::deglitch2EqualsItsPlainForm()
{
    QFETCH(int, half);
    QFETCH(QRectF, area);
    Analyzed2DRes map(QStringLiteral("m"));
    const Samples s = plant(map, half, area, 11);
    map.deglitch2(40.0);
    std::vector<double> near;
    for (int j = 0; j < s.ac.rows(); ++j)
        for (int i = 0; i < s.ac.columns(); ++i)
            if (std::fabs(s.at(i, j)) < 40.0)
                near.push_back(s.at(i, j));
    const double mean = meanOf(near, 0.0);
    double highest = -1e300;
    for (int j = 0; j < s.ac.rows(); ++j) {
        for (int i = 0; i < s.ac.columns(); ++i) {
            const double v = plainDeglitch2(s, i, j, mean, 40.0);
            QCOMPARE(map.procData()[s.pixelY(j) * 31 + s.pixelX(i)], v);
            highest = std::max(highest, v);
        }
    }
    QCOMPARE(map.procMax, highest);
}

void TestMapFilters::deglitchTakesAwayAPlantedPixel()
{
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(AnalyzeCond(9, 9, 0, 0, QRectF(0, 0, 9, 9), -1, -1));
    for (int i = 0; i < 81; ++i)
        map.setData(i % 9, i / 9, 0, 0, 1.0 + 0.01 * i);
    map.setData(4, 4, 0, 0, 500.0);
    // The glitch is four times as rough as the neighbours that feel it, and near 40 times the mean.
    map.setDeglitchConds(20.0, 0.1);
    map.deglitch();
    QVERIFY(std::fabs(map.procData()[40] - 1.4) < 1e-12);
    QVERIFY(map.procMax < 2.0);
    QCOMPARE(map.max, 500.0);
}

void TestMapFilters::deglitch2WithoutACommonLevelGivesZeros()
{
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(AnalyzeCond(3, 3, 0, 0, QRectF(0, 0, 3, 3), -1, -1));
    for (int i = 0; i < 9; ++i)
        map.setData(i % 3, i / 3, 0, 0, 50.0 + i);
    map.deglitch2(40.0);
    for (int i = 0; i < 9; ++i)
        QCOMPARE(map.procData()[i], 0.0);
}

void TestMapFilters::showsAndKeepsTheProcessedFieldOnlyOnDemand()
{
    Analyzed2DRes map(QStringLiteral("m"));
    plant(map, 0, QRectF(0, 0, 31, 23), 3);
    map.genImg();
    const QImage before = map.img()->copy();
    map.deglitch2(40.0);
    QCOMPARE(*map.img(), before);
    map.selectProcImg(true);
    QVERIFY(*map.img() != before);
    map.copyProc2Data();
    QCOMPARE(map.max, map.procMax);
    QVERIFY(std::equal(map.data(), map.data() + 31 * 23, map.procData()));
    QVERIFY(map.useProc);
}

QTEST_GUILESS_MAIN(TestMapFilters)
#include "test_map_filters.moc"
