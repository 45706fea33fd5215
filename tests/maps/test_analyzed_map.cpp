#include "common/ColorScale.h"
#include "maps/Analyzed2DRes.h"
#include "support/ImageFiles.h"

#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <random>

using Positions = QVector<QPoint>;
using Values = std::vector<double>;

namespace {
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int highest = std::numeric_limits<int>::max();

/// A map of one value a pixel, in row order.
void fill(Analyzed2DRes& map, int w, int h, const QVector<double>& values)
{
    map.prepare(AnalyzeCond(w, h, 0, 0, QRectF(0, 0, w, h), -1, -1));
    for (int i = 0; i < values.size(); ++i)
        map.setData(i % w, i / w, 0, 0, values[i]);
}

QVector<int> savedBy(Analyzed2DRes& map, bool fixed, double lo, double hi, bool asAnalyzed)
{
    const QScopedArrayPointer<quint16> saved(map.tiffDataForSave(fixed, lo, hi, asAnalyzed));
    return saved ? QVector<int>(saved.data(), saved.data() + map.savedSamples) : QVector<int>();
}

QByteArray greyRow(Analyzed2DRes& map, int y)
{
    return {reinterpret_cast<const char*>(map.img()->constScanLine(y)), map.img()->width()};
}

const Positions four{{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
const Positions eight{{-1, -1}, {-1, 0}, {-1, 1}, {0, -1}, {0, 1}, {1, -1}, {1, 0}, {1, 1}};

/// The samples of a walk by column and row.
struct Samples
{
    AnalyzeCond ac;
    Values field; ///< one value a pixel
    Positions all;

    std::size_t pixel(const QPoint& p) const
    {
        const int x = ac.x0 + ac.halfX + p.x() * ac.stepX;
        const int y = ac.y0 + ac.halfY + p.y() * ac.stepY;
        return x >= 0 && x < 31 && y >= 0 && y < 23 ? std::size_t(y * 31 + x) : field.size();
    }
    double at(const QPoint& p) const { return field[pixel(p)]; }

    /// Values of the neighbours that lie in the image.
    Values near(const QPoint& p, const Positions& steps) const
    {
        Values found;
        for (const QPoint& d : steps)
            if (pixel(p + d) < field.size())
                found.push_back(at(p + d));
        return found;
    }
};

double meanOf(const Values& v, double fallback)
{
    return v.empty() ? fallback : std::accumulate(v.begin(), v.end(), 0.0) / double(v.size());
}

/// A noisy field of blocks with glitches: values near 10, some near 1000, some very negative.
Samples plant(Analyzed2DRes& map, int half, const QRectF& area)
{
    AnalyzeCond walk(31, 23, half, half, area, -1, -1);
    map.prepare(walk);
    std::mt19937 random(7);
    Samples s{walk, {}, {}};
    do {
        const auto dice = random() % 20;
        const double v = 9.0 + double(random() % 2000) / 1000.0;
        map.setData(walk.cx, walk.cy, half, half, dice == 0 ? 1000.0 : dice == 1 ? -300.0 : v);
        s.all.append({s.all.size() % walk.columns(), s.all.size() / walk.columns()});
    } while (walk.next());
    s.field.assign(map.data(), map.data() + 31 * 23);
    return s;
}

double roughness(const Samples& s, const QPoint& p)
{
    Values d;
    for (const Values& v : {s.near(p, four.mid(0, 2)), s.near(p, four.mid(2, 2))})
        if (v.size() == 2)
            d.push_back(std::fabs(2 * s.at(p) - v[0] - v[1]));
    return meanOf(d, 0.0);
}
} // namespace

/// The walk over an area and the map it fills.
class TestAnalyzedMap : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// A sample of jumps near 1 and beside it noise that passed for an edge: the shares of the
    /// sample span the colours. The values stay as they are.
    void faintPositionsTakeNoColours()
    {
        constexpr int side = 40;
        const auto inSample = [](int i) { return i % side < side / 2; };
        QVector<double> jumps, shares;
        for (int i = 0; i < side * side; ++i) {
            jumps << (inSample(i) ? 0.8 + 0.01 * (i % 7) : 0.02 * (i % 5 - 2));
            shares << (inSample(i) ? 0.1 + 0.01 * (i % 50) : double(i % 41 - 20));
        }
        Analyzed2DRes jump("jump"), share("share");
        fill(jump, side, side, jumps);
        fill(share, side, side, shares);
        share.setDisplay({{RangeRule::Percent1, std::nullopt}, true});
        share.genImg();
        QVERIFY(share.scale().max > 1.0);
        share.setFaint(faintPositions({&jump}));
        share.genImg();
        QVERIFY(share.scale().min >= 0.1 && share.scale().max <= 0.6);
        QVERIFY(share.scale().max - share.scale().min > 0.4);
        QCOMPARE(share.valueAt(side - 1, 0), shares[side - 1]);
        QVERIFY(!faintPositions({}));
    }

    void initTestCase() { QLoggingCategory::setFilterRules("*.debug=false"); }

    void walksThePositionsOfAnArea()
    {
        const auto check = [](QSize half, const QRectF& area, int step, const Positions& expected) {
            AnalyzeCond ac(20, 10, half.width(), half.height(), area, step, step);
            QCOMPARE(ac.columns() * ac.rows(), expected.size());
            Positions seen;
            do {
                QCOMPARE(ac.newLine, ac.cx == expected.first().x());
                seen.append({ac.cx, ac.cy});
            } while (ac.next() && seen.size() < 100);
            QCOMPARE(seen, expected);
        };
        check({2, 1}, {0, 0, 13, 4}, -1, {{2, 1}, {7, 1}, {12, 1}}); // the last one overhangs
        check({1, 0}, {0, 0, 4, 1}, 3, {{1, 0}}); // a centre at the end is left out
        check({1, 1}, {2, 2, 4, 4}, 2, {{3, 3}, {5, 3}, {3, 5}, {5, 5}});
        check({1, 1}, {4, 5, 0, 0}, -1, {{5, 6}}); // an empty area
        check({0, 0}, {5.9, 3.9, -3, -1}, -1, {{2, 2}, {3, 2}, {4, 2}});
        check({0, 0}, {-1.5, -0.5, 2.7, 1}, -1, {{-1, 0}, {0, 0}});
    }

    void endsWhateverIsTyped()
    {
        const QRectF wild(1e300, noNumber, 3, -HUGE_VAL);
        for (const int half : {-1, 0, highest}) {
            for (const int step : {-1, 0, highest}) {
                AnalyzeCond ac(5, 5, half, half, half == 0 ? wild : QRectF(0, 0, 5, 5), step, step);
                int count = 1;
                while (ac.next() && count <= 36)
                    ++count;
                QVERIFY(count <= 36);
            }
        }
    }

    void storesBlocksClippedAndKeepsTheFirstExtremes()
    {
        Analyzed2DRes map("m");
        fill(map, 4, 3, {});
        map.setData(3, 0, -1, 1, 5.0);
        map.setData(0, 2, 0, 0, -1.0);
        map.setData(1, 1, 0, 0, 5.0);
        map.setData(9, 9, 1, 1, -1.0);
        QCOMPARE(QVector<double>(map.data(), map.data() + 12),
                 (QVector<double>{0, 0, 5, 5, 0, 5, 5, 5, -1, 0, 0, 0}));
        QCOMPARE(QLine(map.maxX, map.maxY, map.minX, map.minY), QLine(3, 0, 0, 2));
        map.setData(-5, 0, 1, 1, 80.0); // out of the image, yet counted: deliberate
        QVERIFY(map.max == 80.0 && map.valueAt(-1, 0) == 0.0);
    }

    /// Also of the same number of pixels, for which the memory is kept.
    void aNewFillingBeginsWithZeros()
    {
        const auto zeros = [](const Analyzed2DRes& map) {
            return std::count(map.data(), map.data() + 12, 0.0) == 12;
        };
        Analyzed2DRes map("m");
        const std::vector<std::function<void()>> writes{
            [&map] { map.setData(1, 0, 0, -1, 5.0); },
            [&map] { map.setData(3, highest, 0, highest, 5.0); },
            [&map] {
                map.setData(0, 2, 9, 0, 5.0);
                map.leaveOut(1, 1, 0, 0);
            },
            [&map] {
                map.setData(1, 0, 9, 0, 5.0);
                map.deglitch(); // makes values in the row below
                QVERIFY(map.procData()[4] > 0.0);
                map.copyProc2Data();
            }};
        for (const auto& write : writes) {
            fill(map, 4, 3, {});
            QVERIFY(zeros(map) && !map.whyNotSaved(false).isEmpty());
            write();
            QVERIFY(!zeros(map));
            fill(map, 3, 4, {});
            QVERIFY(zeros(map) && !map.isLeftOut(1, 1));
        }
    }

    void paintsInItsScaleAndColours()
    {
        Analyzed2DRes map("m");
        fill(map, 3, 2, {0, 1, 2, 2, 1, 0});
        QSignalSpy scales(&map, &Analyzed2DRes::scaleChanged);
        map.setScale(0.0, 4.0);
        QCOMPARE(scales.takeFirst(), (QVariantList{0.0, 2.0}));
        QCOMPARE(greyRow(map, 0), QByteArray("\0\x80\xff", 3));
        QCOMPARE(greyRow(map, 1), QByteArray("\xff\x80\0", 3));
        map.setFixedScale(true);
        QCOMPARE(scales.takeFirst(), (QVariantList{0.0, 4.0}));
        QCOMPARE(greyRow(map, 0), QByteArray("\0\x40\x80", 3));
        map.deglitch2(1.5); // 2 stands out: near 1 on its left
        map.selectProcImg(true);
        QVERIFY(scales.isEmpty());
        QCOMPARE(greyRow(map, 0), QByteArray("\0\x40\x80", 3));
        ColorScale hot;
        hot.chooseRamp(HotRamp);
        theColorBar = &hot;
        map.genImg();
        map.img();
        theColorBar = nullptr;
        QVERIFY(map.img()->format() == QImage::Format_RGB888 && qGray(map.img()->pixel(0, 0)) == 0);
    }

    void savesValuesOfAnyKindAsPixels()
    {
        Analyzed2DRes map("m");
        fill(map, 4, 1, {noNumber, HUGE_VAL, -HUGE_VAL, 1.0});
        QVERIFY(std::isnan(map.valueAt(0, 0)));
        QCOMPARE(savedBy(map, true, 0.0, 2.0, true), (QVector<int>{0, 0, 0, 32767}));
        QCOMPARE(savedBy(map, true, 0.0, 2.0, false), (QVector<int>{0, 0, 0, 32767}));
        // Pixels out of scale wrap, deliberately; 1e30 * 65535 is a multiple of 65536.
        fill(map, 5, 1, {0.0, 1.0, 1.0 + 2.0 / 65535, -1.0 / 65535, 1e30});
        QCOMPARE(savedBy(map, true, 0.0, 1.0, false), (QVector<int>{0, 65535, 1, 65535, 0}));
    }

    void savesPositionsInTheirScale()
    {
        Analyzed2DRes map("m");
        map.prepare(AnalyzeCond(6, 6, 1, 1, QRectF(0, 0, 6, 6), -1, -1));
        for (int i = 0; i < 4; ++i)
            map.setData(1 + i % 2 * 3, 1 + i / 2 * 3, 1, 1, 1 << i);
        QCOMPARE(savedBy(map, false, 2.0, 6.0, true), (QVector<int>{0, 9362, 28086, 65535}));
        QCOMPARE(savedBy(map, true, 2.0, 6.0, true), (QVector<int>{0, 0, 32767, 65535}));
        map.prepare(AnalyzeCond(2, 1, 0, 0, QRectF(-1, 0, 4, 1), -1, -1)); // past the image: zero
        map.setData(0, 0, 0, 0, 1.0);
        QCOMPARE(savedBy(map, true, 0.0, 1.0, true), (QVector<int>{0, 65535, 0, 0}));
        map.prepare(AnalyzeCond(2, 1, 0, 0, QRectF(-1e9, -1e9, 2e9, 2e9), -1, -1));
        QVERIFY(map.tiffDataForSave(true, 0.0, 1.0, true) == nullptr);
    }

    void writesText()
    {
        Analyzed2DRes map("m");
        map.prepare(AnalyzeCond(4, 2, 0, 0, QRectF(1, 0, 2, 2), -1, -1));
        const double values[] = {0.1, -3e-20, noNumber, 1234567.875};
        for (int i = 0; i < 4; ++i)
            map.setData(1 + i % 2, i / 2, 0, 0, values[i]);
        map.deglitch();
        map.selectProcImg(true); // text is of the field as analysed all the same
        const QTemporaryDir dir;
        const QFileInfo fi(dir.filePath("m.dat"));
        for (const int i : {0, 1, 2, 3}) {
            QByteArray text = i / 2 == 1 ? "1 0 0.1\n2 0 -3e-20\n1 1 nan\n2 1 1234567.875\n"
                                         : "\n0.1 -3e-20\nnan 1234567.875\n";
            QVERIFY(map.saveAsText(fi, i % 2 == 0, i % 2 == 1, i / 2 == 1));
            QCOMPARE(bytesOf(fi.filePath()), i % 2 == 1 ? text.replace(' ', ',') : text);
        }
    }

    /// Which are formed in parts, several at a time.
    void writesTheTextOfLargeMapsInTheOrderOfTheWalk()
    {
        Analyzed2DRes map("m");
        AnalyzeCond walk(631, 300, 1, 0, QRectF(-3, 20, 640, 290), 2, 1);
        map.prepare(walk);
        QString rows;
        QString points;
        do {
            map.setData(walk.cx, walk.cy, 0, 0, 1.0 / (walk.cx + 631 * walk.cy));
            const QString value =
                QString::number(map.valueAt(walk.cx, walk.cy), 'g', QLocale::FloatingPointShortest);
            rows += (walk.newLine ? '\n' : ' ') + value;
            points += QStringLiteral("%1 %2 ").arg(walk.cx).arg(walk.cy) + value + '\n';
        } while (walk.next());
        const QTemporaryDir dir;
        const QFileInfo fi(dir.filePath("m.dat"));
        QVERIFY(map.saveAsText(fi, true, false, false));
        QVERIFY(bytesOf(fi.filePath()) == rows.toLatin1() + '\n');
        QVERIFY(map.saveAsText(fi, true, false, true));
        QVERIFY(bytesOf(fi.filePath()) == points.toLatin1());
    }

    void copiesAFinishedMapWholeAndElseItsSettings()
    {
        Analyzed2DRes map("m");
        fill(map, 5, 2, {0, 1, 2, 3, 4, 4, 4, 4, 4, 4});
        Analyzed2DRes copy("c"); // without a walk nothing harms it
        copy.setData(0, 0, 1, 1, 3.0);
        copy.deglitch();
        copy.deglitch2(40.0);
        copy.copyProc2Data();
        copy.setFixedScale(true);
        QVERIFY(copy.img()->isNull() && !copy.data() && !copy.tiffDataForSave(false, 0, 1, false));
        fill(copy, 3, 1, {1, 2, 3});
        copy.genImg();
        copy.copyFrom(&map); // without a picture
        QVERIFY(!copy.data() && !copy.img() && !copy.imgValid && copy.max == 4.0);
        copy.setFixedScale(true); // paints although there is no field
        map.setScale(0.0, 4.0);
        map.deglitch2(2.5);
        map.selectProcImg(true);
        map.selectProcImg(false);
        copy.copyFrom(&map);
        map.clear();
        QVERIFY(!map.img() && !map.data() && !map.imgValid && map.min > map.max);
        copy.copyFrom(nullptr);
        QVERIFY(copy.name == "m" && copy.valueAt(3, 0) == 3.0 && copy.procData());
        // 10 of the 16 bytes of the padded picture come along: deliberate.
        QCOMPARE(greyRow(copy, 0), QByteArray("\0\x40\x80\xc0\xff", 5));
        QCOMPARE(greyRow(copy, 1), QByteArray("\xff\xff\0\0\0", 5));
    }

    /// And the processed field is shown and kept on demand alone.
    void filtersEqualTheirPlainForms()
    {
        for (const QRectF& area : {QRectF(0, 0, 31, 23), QRectF(3, 2, 20, 15), QRectF(0, 0, 31, 1)})
            checkFilters(area);
    }

    /// Rows of six values, and what the filters make of them.
    void leavesOutWhatIsNotFinite_data()
    {
        QTest::addColumn<QVector<double>>("values");
        QTest::addColumn<QVector<double>>("first");
        QTest::addColumn<QVector<double>>("second");
        const auto row = [](const char* name, const QVector<double>& values,
                            const QVector<double>& first, const QVector<double>& second) {
            QTest::newRow(name) << values << first << second;
        };
        row("infinite", {1, 1, HUGE_VAL, 1, 3, 1}, {1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 3, 1});
        row("nan beside a peak", {1, 1, 1, 5, noNumber, 1}, {1, 1, 3, 5, 3, 1}, {1, 1, 1, 1, 1, 1});
        row("alone", {1, noNumber, noNumber, noNumber, 2, 2}, {1, 1, noNumber, 2, 2, 2},
            {1, 1, 0, 2, 2, 2});
        row("none finite", QVector<double>(6, -HUGE_VAL), QVector<double>(6, -HUGE_VAL),
            QVector<double>(6, 0.0));
    }

    void leavesOutWhatIsNotFinite()
    {
        QFETCH(QVector<double>, values);
        QFETCH(QVector<double>, first);
        QFETCH(QVector<double>, second);
        Analyzed2DRes map("m");
        fill(map, 6, 1, values);
        const auto processed = [&map] { return Values(map.procData(), map.procData() + 6); };
        checkRange(values, map.min, map.max);
        map.setDeglitchConds(1.5, 0.4);
        map.deglitch();
        checkSame(processed(), first);
        checkRange(first, map.procMin, map.procMax);
        map.deglitch2(3.0);
        checkSame(processed(), second);
        checkRange(second, map.procMin, map.procMax);
    }

    void aProcessedFieldThatWasNeverMadeIsNeitherShownNorSaved()
    {
        Analyzed2DRes map("m");
        const auto showsAsAnalysed = [&map] {
            map.selectProcImg(true);
            return !map.useProc() && !map.procData() && map.shownValueAt(1, 0) == 9.0 &&
                   map.scale().max == 9.0 && greyRow(map, 0) == QByteArray("\0\xff\0", 3) &&
                   savedBy(map, false, 0, 0, false) == QVector<int>({0, 65535, 0});
        };
        fill(map, 3, 1, {1, 9, 1});
        QVERIFY(showsAsAnalysed());
        map.copyProc2Data();
        QCOMPARE(map.valueAt(1, 0), 9.0);
        map.deglitch2(4.0);
        map.selectProcImg(true);
        Analyzed2DRes copy("c");
        copy.copyFrom(&map);
        QVERIFY(copy.useProc() && copy.shownValueAt(1, 0) == 1.0);
        QCOMPARE(savedBy(copy, false, 0, 0, false), savedBy(map, false, 0, 0, false));
        copy.clear();
        QVERIFY(!copy.useProc() && !copy.procData());
        fill(map, 3, 1, {1, 9, 1}); // the next walk
        map.genImg();
        QVERIFY(showsAsAnalysed());
    }

    void aFailedPositionIsStoredAsZeroAndIsNoExtreme()
    {
        Analyzed2DRes map("m");
        fill(map, 3, 2, {4, 5, 6, 4, 5, 6});
        map.leaveOut(0, 1, -1, 0);
        QCOMPARE(QVector<double>(map.data(), map.data() + 6), (QVector<double>{4, 5, 6, 0, 0, 6}));
        QVERIFY(map.min == 4.0 && map.max == 6.0);
        // Nor do the filters take it in, replace it, or let it into their extremes.
        map.deglitch2(40.0);
        QVERIFY(map.procMin == 4.0 && map.procMax == 6.0 && map.procData()[3] == 0.0);
    }

private:
    static void checkSame(const Values& found, const QVector<double>& expected)
    {
        for (int i = 0; i < expected.size(); ++i) {
            const double v = found[std::size_t(i)];
            QVERIFY2(v == expected[i] || (std::isnan(v) && std::isnan(expected[i])),
                     qPrintable(QStringLiteral("%1: %2").arg(i).arg(v)));
        }
    }

    /// The extremes are those of the finite values.
    static void checkRange(const QVector<double>& values, double lowest, double highest)
    {
        double low = 1e300;
        double high = -1e300;
        for (const double v : values) {
            low = std::isfinite(v) ? std::min(low, v) : low;
            high = std::isfinite(v) ? std::max(high, v) : high;
        }
        QCOMPARE(lowest, low);
        QCOMPARE(highest, high);
    }

    static void checkFilters(const QRectF& area)
    {
        Analyzed2DRes map("m");
        const Samples s = plant(map, area.height() > 1 ? 1 : 0, area);
        double rough = 0.0;
        Values common;
        for (const QPoint& p : s.all) {
            rough += roughness(s, p);
            if (std::fabs(s.at(p)) < 40.0)
                common.push_back(s.at(p));
        }
        const double threshold = 1.5 * (rough / s.all.size());
        const double mean = meanOf(common, 0.0);
        const double range = (map.max - map.min) * 0.3;
        map.genImg();
        const QImage before = map.img()->copy();
        map.setDeglitchConds(1.5, 0.3);
        map.deglitch();
        const Values first(map.procData(), map.procData() + 31 * 23);
        map.deglitch2(40.0);
        double highest = -1e300;
        for (const QPoint& p : s.all) {
            const double v = s.at(p);
            const bool glitch =
                roughness(s, p) > threshold && (v < map.min + range || v > map.max - range);
            QCOMPARE(first[s.pixel(p)], glitch ? meanOf(s.near(p, four), v) : v);
            Values usual;
            for (const double n : s.near(p, eight))
                if (std::fabs(n - mean) < 40.0)
                    usual.push_back(n);
            const double two = std::fabs(v - mean) > 40.0 ? meanOf(usual, 0.0) : v;
            QCOMPARE(map.procData()[s.pixel(p)], two);
            QCOMPARE(map.data()[s.pixel(p)], v);
            highest = std::max(highest, two);
        }
        QCOMPARE(map.procMax, highest);
        QCOMPARE(*map.img(), before);
        map.selectProcImg(true);
        QVERIFY(*map.img() != before);
        map.copyProc2Data();
        QVERIFY(map.max == highest && std::equal(map.data(), map.data() + 713, map.procData()));
    }
};

QTEST_GUILESS_MAIN(TestAnalyzedMap)
#include "test_analyzed_map.moc"
