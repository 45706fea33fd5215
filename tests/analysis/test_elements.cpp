#include "analysis/elements/ElementsWalk.h"

#include "common/InstructionSet.h"
#include "maps/Analyzed2DRes.h"
#include "support/RandomStack.h"
#include "walk/WalkEngine.h"

#include <QtTest>

namespace {

constexpr int width = 21;
constexpr int height = 6;
constexpr double iron = 7112.0;
constexpr double copper = 8979.0;

/// A jump of size 1 that rises over 10 eV round its middle.
double ramp(double E, double middle)
{
    return qBound(0.0, (E - middle + 5.0) / 10.0, 1.0);
}

double ironJump(int x)
{
    return 0.06 * x;
}

double ironMiddle(int y)
{
    return iron - 0.25 - 0.5 * y;
}

/// Both edges behind one another, and a plateau of 0.25 from 7135 to 7145 eV, behind where the
/// jump of iron is read.
double absorptionAt(double E, int x, int y)
{
    const double plateau = E > 7135.0 && E < 7145.0 ? 0.25 : 0.0;
    return 0.3 + ironJump(x) * ramp(E, ironMiddle(y)) + plateau + 0.4 * ramp(E, copper);
}

/// Scans of both edges by 1 eV. With `withNan` the last column is dead or no number.
SharedSource sourceOf(double noise, bool withNan)
{
    auto source = std::make_shared<WalkSource>();
    RandomCounts random(7, 1000);
    QVector<double> energies;
    for (const double edge : {iron, copper}) {
        for (double E = edge - 41.0; E < edge + 42.0; E += 1.0)
            energies << E;
    }
    for (const double E : energies) {
        const auto sample = [&](int x, int y) {
            if (withNan && x == width - 1)
                return y % 2 ? qQNaN() : 0.0;
            return 1e6 * std::exp(-absorptionAt(E, x, y) + noise * random(x, y) / 1000.0);
        };
        addImage(source->i1, makeImage(width, height, TiffData::Floats, sample), E);
        addImage(source->i0,
                 makeImage(width, height, TiffData::Floats, [](int, int) { return 1e6; }), E);
    }
    source->block.imageWidth = width;
    source->block.imageHeight = height;
    source->block.useI0 = true;
    return source;
}

ElementConditions bothElements()
{
    ElementConditions c;
    c.rows = {{"Fe-K", iron, 20, 0.1, 7136, 7144, false, true, 1.0},
              {"Cu-K", copper, 20, 0.1, 8900, 8950, false, true, 1.0}};
    c.bgJump = -1.0;
    c.bgDE = -2.0;
    c.bgRoi = -3.0;
    return c;
}

/// The maps of a walk over one source.
class Maps
{
public:
    Maps(const SharedSource& source, const ElementConditions& conditions)
        : source_(source)
        , conditions_(conditions)
        , area_(width, height, 0, 0, QRectF(0, 0, width, height), -1, -1)
    {
        area_.cutToImage();
        for (int i = 0; i < conditions.rows.size() * elementMaps + 2; ++i) {
            maps_.push_back(std::make_unique<Analyzed2DRes>("m"));
            maps_.back()->prepare(area_);
        }
    }

    WalkOrder order() const
    {
        ElementsSink::Maps maps{{}, &correlation(), &threshold()};
        for (std::size_t i = 0; i + 2 < maps_.size(); ++i)
            maps.elements << maps_[i].get();
        WalkOrder order{source_, area_, {}};
        order.jobs.push_back({std::make_unique<ElementsKernel>(conditions_),
                              std::make_unique<ElementsSink>(conditions_, maps, 0.625)});
        return order;
    }

    QByteArray walk(int threads, int lanes, WalkShares* shares = nullptr) const
    {
        const WalkShares done = runWalk(order(), threads, lanes);
        if (shares)
            *shares = done;
        return bytes();
    }

    /// Position by position.
    QByteArray plain() const
    {
        const WalkOrder walk = order();
        WalkRuns runs(area_);
        while (!runs.atEnd()) {
            const WalkRun run = runs.take(1);
            const XafsSpectrum s = source_->spectrum(run.first.cx, run.first.cy, Stage::Mu);
            TileResult result(walk.jobs[0].kernel->values(), 1);
            walk.jobs[0].kernel->plain({*source_, run.first.cx, run.first.cy, s}, 0, result);
            walk.jobs[0].sink->take(run, result);
        }
        return bytes();
    }

    Analyzed2DRes& at(int map, int row) const
    {
        return *maps_[std::size_t(map * conditions_.rows.size() + row)];
    }
    Analyzed2DRes& correlation() const { return *maps_[maps_.size() - 2]; }
    Analyzed2DRes& threshold() const { return *maps_.back(); }

private:
    QByteArray bytes() const
    {
        QByteArray all;
        for (const auto& map : maps_)
            all.append(reinterpret_cast<const char*>(map->data()), width * height * 8);
        return all;
    }

    const SharedSource source_;
    const ElementConditions conditions_;
    AnalyzeCond area_;
    std::vector<std::unique_ptr<Analyzed2DRes>> maps_;
};

Spectrum curveOf(const QVector<QPointF>& points)
{
    Spectrum s;
    s.setPoints(points);
    return s;
}

bool isNear(double a, double b, double within = 2e-6)
{
    return std::abs(a - b) < within;
}

} // namespace

/// The jumps of elements in a scan over several edges, and the panel of their rows.
class TestElements : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plantedJumpsComeBack()
    {
        ElementConditions c = bothElements();
        c.target = 1;
        c.correlationThreshold = 0.9;
        const Maps maps(sourceOf(0.0, false), c);
        maps.walk(2, tileLanes);
        for (int x = 0; x < width; ++x) {
            const int y = x % height;
            const bool found = x > 1;
            const double jump = found ? ironJump(x) : -1.0;
            const double shift = std::floor(ironMiddle(y)) + 0.5 - iron;
            const double roi = ironJump(x) + 0.25;
            const double expected[2][elementMaps] = {
                {jump, jump / 0.4, found ? 0.3 + jump : -1.0, found ? 0.3 : -1.0,
                 found ? shift : -2.0, found ? roi : -3.0, found ? roi / jump : -3.0},
                {0.4, 1.0, 0.7 + ironJump(x), 0.3 + ironJump(x), 0.0, 0.0, 0.0}};
            for (int row = 0; row < 2; ++row) {
                for (int map = 0; map < elementMaps; ++map) {
                    const double v = maps.at(map, row).valueAt(x, y);
                    const bool crossing = row == 1 && map == 4; // rises through its middle there
                    QVERIFY2(isNear(v, expected[row][map], crossing ? 0.51 : 2e-6),
                             qPrintable(QString("%1 of row %2 at %3").arg(map).arg(row).arg(x)));
                    QCOMPARE(maps.at(map, row).isWithoutEdge(x, y), row == 0 && !found);
                }
            }
            const double r = jump / 0.4;
            const double alike = (r + 1.0) / std::sqrt((r * r + 1.0) * 2.0);
            QVERIFY(isNear(maps.correlation().valueAt(x, y), alike));
            QVERIFY(isNear(maps.threshold().valueAt(x, y), alike < 0.9 ? 0.0 : alike));
        }
    }

    /// Iron alone takes part: where it is missing there is nothing to correlate.
    void aPositionWithoutCorrelationKeepsTheLastOne()
    {
        ElementConditions c = bothElements();
        c.rows[1].use = false;
        c.rows[0].stdRatio = 2.0;
        c.bgJump = 0.0;
        const Maps maps(sourceOf(0.0, false), c);
        maps.walk(1, 5);
        const auto at = [&](int x, int y) { return maps.correlation().valueAt(x, y); };
        QVERIFY(at(0, 0) == 0.625 && at(1, 0) == 0.625 && isNear(at(2, 0), 1.0));
        QVERIFY(isNear(at(0, 1), 1.0) && maps.correlation().isWithoutEdge(0, 1));
        QCOMPARE(maps.threshold().valueAt(0, 0), 0.0);
        // A target without a jump divides nothing.
        QVERIFY(isNear(maps.at(1, 1).valueAt(0, 0), 0.4));
        QVERIFY(isNear(maps.at(1, 1).valueAt(10, 0), 0.4 / 0.6));

        // Anew from the ratios: none is 0 now, and both rows take part.
        c.rows[1].use = true;
        c.rows[0].stdRatio = 1.0;
        c.rows[1].stdRatio = 0.4 / 0.6;
        maps.correlation().setData(0, 0, 0, 0, 50.0);
        correlateMaps(c, {&maps.at(1, 0), &maps.at(1, 1)}, maps.correlation(), maps.threshold());
        QVERIFY(isNear(at(10, 3), 1.0) && at(20, 3) < 0.97 && maps.correlation().max < 1.001);
        QVERIFY(maps.threshold().valueAt(10, 3) == at(10, 3));
        QCOMPARE(maps.threshold().valueAt(20, 3), 0.0);
        c.rows[0].use = c.rows[1].use = false;
        correlateMaps(c, {&maps.at(1, 0), &maps.at(1, 1)}, maps.correlation(), maps.threshold());
        QVERIFY(at(10, 3) == 0.0 && maps.correlation().isWithoutEdge(10, 3));
    }

    void anyThreadsAndTilesGiveThePlainBytes()
    {
        ElementConditions c = bothElements();
        c.target = 2;
        c.rows << ElementRow{"outside", 9300, 25, -5, 7000, 7000, true, true, 0.5}
               << ElementRow{"reversed", iron, -15, -3, 7140, 7130, false, true, 0.5}
               << ElementRow{"no number", qQNaN(), 10, 0.1, 7100, qQNaN(), false, false, 1.0}
               << ElementRow{"below 0", iron, 30, 0.02, 7075, 7080, true, true, 2.0}
               << ElementRow{"first", 7071, 0, -1, 0, 1e9, false, true, 2.0};
        const SharedSource source = sourceOf(0.1, true);
        const QByteArray plain = Maps(source, c).plain();
        for (const InstructionSet set : instructionSets()) {
            useInstructionSet(set);
            for (const int threads : {1, 3}) {
                for (const int lanes : {1, 5, tileLanes}) {
                    WalkShares shares;
                    QVERIFY(Maps(source, c).walk(threads, lanes, &shares) == plain);
                    // A row that is no number leaves nothing to the lane form.
                    QCOMPARE(shares.plainPositions, shares.positions);
                }
            }
        }
        c.rows.removeAt(4);
        for (const bool fluorescence : {false, true}) {
            auto other = std::make_shared<WalkSource>(*source);
            other->block.fluorescence = fluorescence; // nan stays nan there
            const QByteArray withNumbers = Maps(other, c).plain();
            for (const InstructionSet set : instructionSets()) {
                useInstructionSet(set);
                WalkShares shares;
                QVERIFY(Maps(other, c).walk(2, 7, &shares) == withNumbers);
                QCOMPARE(shares.plainPositions, qint64(fluorescence ? height / 2 : 0));
            }
        }
    }

    /// A rise through 0.5 three times: at 101.5, 103.5 and 105.5 eV.
    void noisyEdgesAndRegionsBelowZero()
    {
        QVector<QPointF> points;
        const double values[] = {0.0, 0.0, 1.0, 0.0, 1.0, 0.0, 1.0, 1.0, 1.0, -2.0, -2.0};
        for (int i = 0; i < 11; ++i)
            points << QPointF(100.0 + i, values[i]);
        ElementConditions c;
        c.bgRoi = 7.0;
        c.rows = {{"X-K", 104.0, 4.0, 0.5, 108.0, 110.0, false, false, 1.0}};
        ElementValues v = analyzeElements(curveOf(points), c).first();
        QVERIFY(v.jump == 1.0 && v.shift == -0.5 && v.roi == -0.5 && v.roiRatio == -0.5);
        c.rows[0].noNeg = true;
        v = analyzeElements(curveOf(points), c).first();
        QVERIFY(v.roi == 7.0 && v.roiRatio == 7.0 && v.shift == -0.5);
        c.rows[0].threshold = 1.0; // a jump just as high is none
        v = analyzeElements(curveOf(points), c).first();
        QVERIFY(v.jump == 0.0 && v.roi == 7.0 && v.rawJump == 1.0);

        // Of a shifted curve the jump is read one shift higher than crossings are.
        Spectrum shifted = curveOf(points);
        shifted.isShifted = true;
        shifted.eShift = 1.0;
        c.rows[0].threshold = -9.0;
        v = analyzeElements(shifted, c).first();
        QCOMPARE(v.rawJump, -2.0 - 1.0);
        for (const int n : {0, 1}) {
            v = analyzeElements(curveOf(points.mid(0, n)), c).first();
            QVERIFY(v.rawJump == 0.0 && v.shift == 0.0 && std::isnan(v.roiRatio));
        }
    }
};

QTEST_MAIN(TestElements)
#include "test_elements.moc"
