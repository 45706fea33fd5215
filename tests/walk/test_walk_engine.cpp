#include "analysis/LcfFixtures.h"
#include "analysis/lcf/LcfWalk.h"
#include "calibration/CalibWalk.h"
#include "common/InstructionSet.h"
#include "maps/Analyzed2DRes.h"
#include "support/RandomStack.h"
#include "walk/Walk.h"

#include <QtTest>

#include <cstring>

namespace {

constexpr int width = 26;
constexpr int height = 9;
constexpr int energies = 70;

/// What a walk fills, as bytes.
struct Filled
{
    QVector<QByteArray> fields;
    QStringList texts;

    bool operator==(const Filled& o) const { return fields == o.fields && texts == o.texts; }
};

QByteArray bytesOf(const double* values, int count)
{
    return {reinterpret_cast<const char*>(values), count * int(sizeof(double))};
}

/// Both analyses over one source.
class Walks
{
public:
    explicit Walks(const SharedSource& source, const QString& rules = {})
        : source_(source)
        , area_(width, height, source->block.halfX, source->block.halfY,
                QRectF(1, 0, width + 9, height + 4), -1, -1)
    {
        area_.cutToImage();
        request_ = fourRows();
        request_.inWalk = true;
        request_.ownWeights = rules.contains("own");
        request_.method = rules.contains("old")    ? LcfMethod::OldLcf
                          : rules.contains("mlcf") ? LcfMethod::Mlcf
                                                   : LcfMethod::Lcf;
        request_.sElm = source->elm;
        calibration_.method = CalibMethod::InnerProduct;
        calibration_.range = 6.0;
        calibration_.backgroundMode = source->background;
        calibration_.sElm = source->elm;
        for (auto& map : maps_)
            map = std::make_unique<Analyzed2DRes>(QStringLiteral("m"));
        shifts_.prepare(area_);
        for (auto& map : maps_)
            map->prepare(area_);
    }

    WalkOrder order()
    {
        WalkOrder order{source_, area_, {}};
        const LcfSink::Maps maps{rows_,
                                 {maps_[0].get(), maps_[1].get(), maps_[2].get()},
                                 {maps_[3].get(), maps_[4].get(), maps_[5].get()},
                                 maps_[6].get(),
                                 &outcomes_};
        order.jobs.push_back({std::make_unique<LcfKernel>(request_, rows_),
                              std::make_unique<LcfSink>(request_, maps)});
        order.jobs.push_back(
            {std::make_unique<CalibKernel>(
                 comparedStandard(request_.rows.first().spectrum, calibration_), calibration_),
             std::make_unique<CalibSink>(shifts_, *maps_[7], statistics_)});
        return order;
    }

    /// Position by position, by the plain form of each spectrum.
    Filled plain()
    {
        const WalkOrder walk = order();
        WalkRuns runs(area_);
        while (!runs.atEnd()) {
            const WalkRun run = runs.take(1);
            for (const WalkJob& job : walk.jobs) {
                const XafsSpectrum s =
                    source_->spectrum(run.first.cx, run.first.cy, job.kernel->stage());
                TileResult result(job.kernel->values(), 1);
                job.kernel->plain({*source_, run.first.cx, run.first.cy, s}, 0, result);
                job.sink->take(run, result);
            }
        }
        return filled();
    }

    Filled filled()
    {
        Filled all;
        for (const auto& map : maps_) {
            all.fields << bytesOf(map->data(), width * height);
            all.texts << QString::number(map->min, 'g', 17) << QString::number(map->max, 'g', 17);
        }
        all.fields << bytesOf(shifts_.shifts.constData(), width * height);
        all.texts << outcomes_.text() << statistics_.outcomes.text()
                  << QString::number(statistics_.mean, 'g', 17);
        return all;
    }

private:
    const SharedSource source_;
    AnalyzeCond area_;
    const QVector<int> rows_{0, 1, 3};
    LcfRequest request_;
    CalibConditions calibration_;
    std::unique_ptr<Analyzed2DRes> maps_[8];
    ShiftMap shifts_;
    OutcomeCounts outcomes_;
    CalibStatistics statistics_;
};

/// Counts behind a sample whose thickness and edge differ from pixel to pixel; some pixels are dead
/// or saturated, and float ones hold a nan.
SharedSource sourceOf(const QString& rules)
{
    auto source = std::make_shared<WalkSource>();
    RandomCounts noise(5, 60);
    const bool floats = rules.contains("float");
    const double beamCounts = rules.contains("few counts") ? 900.0 : 40000.0;
    const auto type = floats ? TiffData::Floats : TiffData::TiffWords;
    for (int i = 0; i < energies; ++i) {
        const double E = 8850.0 + 5.0 * i;
        const auto sample = [&](int x, int y) {
            if (x == 4)
                return y % 2 ? 0.0 : 65535.0;
            if (floats && x == 7)
                return qQNaN();
            const double mu = edgeShape(E, 8992 + 0.2 * x - 0.3 * y, 0.02 * x + 0.3, 9.0);
            return beamCounts * std::exp(-mu) + noise(x, y);
        };
        addImage(source->i1, makeImage(width, height, type, sample), E);
        const auto beam = [&](int x, int y) { return beamCounts + 90 * x + noise(x, y); };
        if (!rules.contains("between") || i % 3 == 0)
            addImage(source->i0, makeImage(width, height, type, beam),
                     rules.contains("between") ? E - 1.5 : E);
    }
    BlockConditions& c = source->block;
    c.imageWidth = width;
    c.imageHeight = height;
    c.useI0 = !rules.contains("no I0");
    c.fluorescence = rules.contains("fluorescence");
    c.halfX = c.halfY = rules.contains("blocks") ? 2 : 0;
    if (rules.contains("dark")) {
        c.dark = makeImage(width, height, TiffData::TiffWords, [](int x, int) { return 30 + x; });
        c.darkExposure = c.i1Exposure = 20.0;
        c.i0Exposure = 10.0;
        c.i1DarkAreaOn = c.i0DarkAreaOn = true;
        c.i1DarkAvg.fill(11.0, energies);
        c.i0DarkAvg.fill(7.0, energies);
    }
    c.totalI0Loaded = rules.contains("total");
    for (int i = 0; c.totalI0Loaded && i < energies; ++i)
        c.totalI0.append(i, 41000.0 + i);
    source->elm.use = rules.contains("suggested");
    source->elm.edgeE = 8992.0;
    source->elm.thJump = 2.0;
    if (rules.contains("nan window"))
        source->elm.preEnd = qQNaN();
    source->background = rules.contains("Victoreen") ? VictLine::Victoreen : VictLine::Straight;
    if (rules.contains("shifts")) {
        ShiftMap map;
        map.prepare({width, height, 0, 0, QRectF(0, 0, width, height), -1, -1});
        for (int k = 0; k < width * height; ++k)
            map.shifts[k] = k % 11 == 3 ? qQNaN() : 0.3 * (k % 7) - 1.0;
        source->shifts = map.field({2, -1});
    }
    return source;
}

} // namespace

/// The engine of the walks against the plain loop, position by position.
class TestWalkEngine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anyThreadsAndTilesGiveThePlainBytes_data()
    {
        QTest::addColumn<QString>("rules");
        QTest::addColumn<int>("mostPlain"); // [%] of the positions
        for (const auto& row : {std::pair("straight", 20),
                                std::pair("Victoreen own", 20),
                                std::pair("suggested between", 20),
                                std::pair("Victoreen suggested dark", 20),
                                std::pair("fluorescence blocks", 20),
                                std::pair("total blocks shifts", 20),
                                std::pair("Victoreen shifts own", 20),
                                std::pair("no I0 dark own", 20),
                                std::pair("float shifts between", 20),
                                std::pair("float Victoreen blocks", 50),
                                std::pair("few counts own", 20),
                                std::pair("few counts suggested shifts", 20),
                                std::pair("few counts Victoreen", 20),
                                std::pair("old few counts Victoreen own", 20),
                                std::pair("old suggested Victoreen shifts", 20),
                                std::pair("old no I0 dark between", 20),
                                std::pair("mlcf few counts Victoreen", 20),
                                std::pair("mlcf few counts suggested", 20),
                                std::pair("mlcf Victoreen shifts own", 20),
                                std::pair("mlcf few counts shifts", 20),
                                std::pair("suggested nan window", 100),
                                std::pair("Victoreen suggested nan window", 100)})
            QTest::newRow(row.first) << QString(row.first) << row.second;
    }

    void anyThreadsAndTilesGiveThePlainBytes()
    {
        QFETCH(QString, rules);
        QFETCH(int, mostPlain);
        const SharedSource source = sourceOf(rules);
        const Filled plain = Walks(source, rules).plain();
        QVERIFY(plain.texts.filter("fitted").size() > 0);
        for (const InstructionSet set : instructionSets()) {
            useInstructionSet(set);
            for (const int threads : {1, 2, 3, 16}) {
                for (const int lanes : {1, 5, tileLanes}) {
                    Walks walks(source, rules);
                    const WalkShares shares = runWalk(walks.order(), threads, lanes);
                    const QString how = QString("%1, %2 threads, %3 lanes, %4 of %5 plain")
                                            .arg(nameOf(set))
                                            .arg(threads)
                                            .arg(lanes)
                                            .arg(shares.plainPositions)
                                            .arg(shares.positions);
                    QVERIFY2(walks.filled() == plain, qPrintable(how));
                    QVERIFY2(shares.plainPositions <= mostPlain * shares.positions / 100,
                             qPrintable(how));
                }
            }
        }
    }

    /// Beside an event loop, two at a time on one pool; a stop tells nothing more.
    void walksTakeTurnsAndStopAtOnce()
    {
        const SharedSource source = sourceOf("straight");
        const Filled plain = Walks(source).plain();
        WalkPool pool(2);
        Walks first(source);
        Walks second(source);
        Walks third(source);
        Walk a(first.order(), pool, 3);
        Walk b(second.order(), pool, 3);
        auto c = std::make_unique<Walk>(third.order(), pool, 1);
        const QSignalSpy doneA(&a, &Walk::done);
        const QSignalSpy doneB(&b, &Walk::done);
        const QSignalSpy doneC(c.get(), &Walk::done);
        int taken = 0;
        connect(c.get(), &Walk::taken, this, [&] {
            if (++taken == 4)
                c->stop();
        });
        for (Walk* walk : {&a, &b, c.get()})
            walk->start();
        QTRY_VERIFY(doneA.size() == 1 && doneB.size() == 1);
        QVERIFY(first.filled() == plain && second.filled() == plain);
        QTRY_COMPARE(taken, 4);
        c.reset();
        QTest::qWait(20);
        QVERIFY(taken == 4 && doneA.size() == 1);
    }
};

QTEST_GUILESS_MAIN(TestWalkEngine)
#include "test_walk_engine.moc"
