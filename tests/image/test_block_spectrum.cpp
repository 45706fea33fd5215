#include "common/PortableMath.h"
#include "image/BlockSpectrum.h"
#include "image/EnergyOrder.h"
#include "image/ImagePicture.h"
#include "support/RandomStack.h"

#include <QtTest>

#include <cmath>

namespace {
const TiffData::PixelType types[] = {TiffData::TiffWords, TiffData::ImgWords, TiffData::ImgLongs,
                                     TiffData::Floats};

double plainPixel(const TiffData& image, int x, int y)
{
    x -= image.shiftX;
    y -= image.shiftY;
    if (x < 0 || y < 0 || x >= image.width || y >= image.height)
        return 0.0;
    if (image.pixelType == TiffData::Floats)
        return double(image.row<float>(y)[x]);
    return image.pixelType == TiffData::ImgLongs ? image.row<quint32>(y)[x]
                                                 : image.row<quint16>(y)[x];
}

double plainSum(const TiffData& image, int x, int y, int halfX, int halfY)
{
    double sum = 0.0;
    for (int yy = y - std::abs(halfY); yy <= y + std::abs(halfY); ++yy) {
        for (int xx = x - std::abs(halfX); xx <= x + std::abs(halfX); ++xx)
            sum += plainPixel(image, xx, yy);
    }
    return sum;
}

/// The block spectrum written down step by step, without any of the shared helpers.
Spectrum plainSpectrum(const StackPair& stacks, const BlockConditions& c, int x, int y)
{
    Spectrum spectrum;
    if (x < 0 || y < 0 || x >= c.imageWidth || y >= c.imageHeight)
        return spectrum;
    const double n = (2.0 * c.halfX + 1) * (2.0 * c.halfY + 1);
    const auto sumOf = [&](const SharedImage& image) {
        return plainSum(*image, x, y, c.halfX, c.halfY);
    };
    const double dark = c.dark ? sumOf(c.dark) / c.darkExposure : 0.0;
    // Any number that goes with each I0 image, on the line through two of them.
    const auto atEnergy = [&](double E, const std::function<double(int)>& valueOf) {
        const TiffStack& s = stacks.i0;
        QVector<int> order;
        for (int i = 0; i < s.size(); ++i)
            order.append(i);
        std::stable_sort(order.begin(), order.end(),
                         [&s](int a, int b) { return s[a]->energy < s[b]->energy; });
        if (s.size() == 1)
            return valueOf(0);
        int low = 0;
        while (low < s.size() - 2 && E >= s[order[low + 1]]->energy)
            ++low;
        const double e1 = s[order[low]]->energy;
        const double e2 = s[order[low + 1]]->energy;
        const double s1 = valueOf(order[low]);
        const double s2 = valueOf(order[low + 1]);
        return e1 == e2 ? 0.5 * (s1 + s2) : (s2 - s1) / (e2 - e1) * (E - e1) + s1;
    };
    const auto i0At = [&](double E) {
        if (stacks.i0.isEmpty())
            return 1.0 - (0.0 + dark * c.i0Exposure);
        const double area0 =
            atEnergy(E, [&](int i) { return c.i0DarkAreaOn ? c.i0DarkAvg.value(i) * n : 0.0; });
        return atEnergy(E, [&](int i) { return sumOf(stacks.i0[i]); }) -
               (area0 + dark * c.i0Exposure);
    };
    for (int i = 0; i < stacks.i1.size(); ++i) {
        const double area1 = c.i1DarkAreaOn ? c.i1DarkAvg.value(i) * n : 0.0;
        const double i1 = sumOf(stacks.i1[i]) - (area1 + dark * c.i1Exposure);
        double i0 = n;
        if (c.totalI0Loaded)
            i0 = c.totalI0.points.value(i).y();
        else if (c.useI0)
            i0 = i0At(stacks.i1[i]->energy);
        const double mu = c.fluorescence ? i1 / i0 : i0 * i1 > 0.0 ? portable::log(i0 / i1) : 1.0;
        spectrum.append(stacks.i1[i]->energy, mu);
    }
    return spectrum;
}

bool same(const Spectrum& a, const Spectrum& b)
{
    const auto samePoint = [](const QPointF& p, const QPointF& q) {
        return p.x() == q.x() && (p.y() == q.y() || (std::isnan(p.y()) && std::isnan(q.y())));
    };
    return std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                      samePoint) &&
           a.xMin == b.xMin && a.xMax == b.xMax && a.yMin == b.yMin && a.yMax == b.yMax;
}
} // namespace

/// Pixels, their sums and the spectra made of them, against plain forms.
class TestBlockSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void blockSumsAreThoseOfPlainLoops()
    {
        std::mt19937 random(11);
        RandomCounts counts(3);
        const auto below = [&random](int n) { return int(random() % unsigned(n)); };
        for (int round = 0; round < 1200; ++round) {
            const auto image = makeImage(23, 17, types[round % 4], counts);
            image->shiftX = below(9) - 4;
            image->shiftY = below(9) - 4;
            const int x = below(40) - 8;
            const int y = below(30) - 6;
            const int halfX = below(9) - 4;
            const int halfY = below(9) - 4;
            const int step = below(3) + 1;
            QVERIFY(image->blockSum(x, y, halfX, halfY) == plainSum(*image, x, y, halfX, halfY));
            double sums[7];
            image->blockSums(x, step, 7, y, halfX, halfY, sums);
            for (int k = 0; k < 7; ++k)
                QVERIFY(sums[k] == plainSum(*image, x + k * step, y, halfX, halfY));
        }
        const auto image = makeImage(3, 3, TiffData::TiffWords, [](int, int) { return 2.0; });
        QCOMPARE(image->blockSum(1, 1, INT_MAX, INT_MIN), 18.0);
        QCOMPARE(image->blockSum(INT_MIN, INT_MAX, 1, 1), 0.0);
        QCOMPARE(TiffData().blockSum(0, 0, 3, 3), 0.0);
        // Columns and rows 1..2 after the numbers are cut.
        image->row<quint16>(2)[2] = 8;
        QCOMPARE(image->areaMean(QRectF(1.9, 1.2, 1.7, 1.5)), 3.5);
        QCOMPARE(image->areaMean(QRectF(1, 1, -2, 2)), 0.0);
        QCOMPARE(image->areaMean(QRectF(qQNaN(), -1e300, 1e300, 1e300)), 0.0);
    }

    void pictureFollowsTheScale()
    {
        RandomCounts counts(5);
        ColorScale scale;
        scale.lowHandle = 0.2;
        scale.highHandle = 0.7;
        ImagePicture picture;
        for (const TiffData::PixelType type : types) {
            const int side = type == TiffData::ImgWords ? 300 : 20; // by table, and value by value
            scale.chooseRamp(type == TiffData::ImgWords ? HotRamp : GreyRamp);
            const int size = bytesPerPixel(scale.imageFormat);
            const std::shared_ptr<TiffData> image = makeImage(side, side, type, counts);
            image->shiftX = type == TiffData::ImgWords ? 0 : 2;
            picture.show(image, scale);
            const double range = image->maxVal - image->minVal;
            for (int i = 0; i < side * side; ++i) {
                uchar expected[3] = {};
                scale.mapValue((image->pixel(i % side, i / side) - image->minVal) / range,
                               expected);
                const uchar* shown = picture.picture()->constScanLine(i / side) + i % side * size;
                QVERIFY(std::equal(expected, expected + size, shown));
            }
        }
    }

    void everyRuleAgreesWithThePlainForm()
    {
        const QString allRules[] = {"",
                                    "useI0",
                                    "useI0 dark",
                                    "useI0 area",
                                    "dark area",
                                    "useI0 dark area",
                                    "useI0 fluorescence",
                                    "total",
                                    "useI0 short",
                                    "useI0 shifted",
                                    "useI0 vanished"};
        for (int n = 0; n < 11 * 4; ++n) {
            const QString rules = allRules[n / 4];
            const int i0Images = n % 4 == 3 ? 7 : n % 4;
            // I0 energies lie between and beyond those of I1.
            RandomCounts counts(17);
            TiffStack i1;
            TiffStack i0;
            for (int i = 0; i < 12; ++i) {
                auto image = makeImage(40, 12, types[n % 3 + 1], counts);
                image->shiftX = rules.contains("shifted") ? i - 4 : 0;
                image->shiftY = rules.contains("shifted") ? 2 - i : 0;
                addImage(i1, std::move(image), 9000.0 + 2.5 * i);
            }
            // The seven of them in no order, two of one energy.
            const double i0Energies[] = {9003, 9007, 9011, 9007, 9024, 9015, 9000.5};
            for (int i = 0; i < i0Images; ++i)
                addImage(i0, makeImage(40, 12, types[n % 3 + 1], counts), i0Energies[i]);
            const SharedImage dark =
                makeImage(40, 12, TiffData::TiffWords, [](int x, int y) { return 20 + x + y; });
            BlockConditions c;
            c.imageWidth = 40;
            c.imageHeight = 12;
            c.halfX = n % 3;
            c.halfY = 2 - c.halfX;
            c.useI0 = rules.contains("useI0");
            c.fluorescence = rules.contains("fluorescence");
            c.dark = rules.contains("dark") ? dark : nullptr;
            c.i1Exposure = 2 * (c.darkExposure = 30.0);
            c.i1DarkAreaOn = c.i0DarkAreaOn =
                rules.contains(QRegularExpression("area|short|vanished"));
            for (int i = 0; i < (rules.contains("short") ? 4 : 12); ++i) {
                c.i1DarkAvg.append(rules.contains("vanished") ? 30000.0 : 3.25 * i);
                c.i0DarkAvg.append(100.0 - i);
            }
            c.totalI0Loaded = rules.contains("total");
            for (int i = 0; i < 9; ++i)
                c.totalI0.append(i, 1e5 + i);
            const StackPair stacks{i1, i0};
            BlockSpectra blocks(stacks, c);
            for (int y = 0; y < 12; y += 3) {
                const BlockSpectra::BlockRun run{0, 1, c.imageWidth, y};
                QVERIFY(blocks.areInside(run) && !blocks.areInside({-2, 1, 45, y}));
                std::vector<double> mu(blocks.energies().size() * laneStride);
                blocks.formMu(run, mu.data());
                for (int x = -2; x < 43; ++x) {
                    const Spectrum plain = plainSpectrum(stacks, c, x, y);
                    QVERIFY2(same(rawXafs(stacks, c, x, y), plain), qPrintable(rules));
                    if (x < 0 || x >= run.count)
                        continue;
                    Spectrum ofRun;
                    ofRun.setPoints(blocks.curveOf(mu.data() + x));
                    QVERIFY2(same(ofRun, plain), qPrintable(rules));
                }
            }
            QVERIFY(rawI1(i1, c, -1, 0).isEmpty() && rawI1(i1, c, 0, 12).isEmpty());
            QCOMPARE(rawI1(i1, c, 5, 6).y(2), plainSum(*i1[2], 5, 6, c.halfX, c.halfY));
        }
    }

    void plantedStacksGiveTheirValues()
    {
        TiffStack stack;
        for (const double v : {2.0, 1.0, 6.0})
            addImage(stack, makeImage(1, 1, TiffData::TiffWords, [v](int, int) { return 100 * v; }),
                     10 * v);
        const auto sumAt = [&stack](double E) {
            return stackBlockSum(stack, energyOrder(stack), E, 0, 0, 0, 0);
        };
        QVERIFY(sumAt(15) == 150 && sumAt(20) == 200 && sumAt(80) == 800 && sumAt(-10) == -100);
        // Without I0 the block is held against its pixels, all of them even at the edge; counts
        // that the dark area takes away give 1.
        BlockConditions c;
        c.imageWidth = c.imageHeight = c.halfX = 1;
        c.i1DarkAreaOn = true;
        c.i1DarkAvg = {200.0, 0.0, 0.0};
        const Spectrum spectrum = rawXafs({stack, {}}, c, 0, 0);
        QVERIFY(spectrum.y(1) == portable::log(3.0 / 100.0) && spectrum.y(0) == 1.0);
    }

    void stacksThatDoNotRiseAreTold()
    {
        const double nan = qQNaN();
        const struct
        {
            QVector<double> energies;
            QPoint falls;
            QPoint equal;
        } rows[] = {{{}, {-1, -1}, {-1, -1}},         {{1, 2, 3}, {-1, -1}, {-1, -1}},
                    {{1, 3, 2, 0}, {1, 2}, {-1, -1}}, {{1, 2, 2, 3}, {-1, -1}, {1, 2}},
                    {{2, 1, 3, 2}, {0, 1}, {0, 3}},   {{1, nan, 3}, {0, 1}, {-1, -1}}};
        for (const auto& row : rows) {
            TiffStack stack;
            for (const double E : row.energies)
                addImage(stack, std::make_unique<TiffData>(), E);
            const ImagePair falls = fallingPair(stack);
            const ImagePair equal = equalPair(stack);
            QCOMPARE(QPoint(falls.first, falls.second), row.falls);
            QCOMPARE(QPoint(equal.first, equal.second), row.equal);
        }
    }
};

QTEST_GUILESS_MAIN(TestBlockSpectrum)
#include "test_block_spectrum.moc"
