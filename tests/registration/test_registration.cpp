#include "registration/StackAlignment.h"
#include "support/DriftingSample.h"
#include "support/RandomStack.h"

#include <QtTest>

namespace {

constexpr double half = 0.5;

/// Edges by single pixels, as they are defined.
double plainEdge(const TiffData& image, int x, int y)
{
    const auto I = [&](int column, int row) {
        const bool inside = column >= 0 && column < image.width && row >= 0 && row < image.height;
        return inside ? image.pixel(column, row) : 0.0;
    };
    const double a = I(x + 1, y) - I(x - 1, y);
    const double b = I(x + 1, y + 1) - I(x - 1, y - 1);
    const double c = I(x + 1, y - 1) - I(x - 1, y + 1);
    const double d = I(x, y + 1) - I(x, y - 1);
    return std::max(std::abs(a + b + c), std::abs(b - c + d));
}

ProcImage madeOf(int width, int height, const std::function<double(int, int)>& f)
{
    ProcImage image;
    image.width = width;
    image.height = height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.pixels.push_back(f(x, y));
    }
    image.takeExtremes();
    return image;
}

ProductSums plainSums(const ProcImage& image, const ProcImage& reference, const QPoint& shift)
{
    ProductSums sums;
    for (int y = 0; y < reference.height; ++y) {
        for (int x = 0; x < reference.width; ++x) {
            const int fromX = x - shift.x();
            const int fromY = y - shift.y();
            if (fromX >= 0 && fromX < image.width && fromY >= 0 && fromY < image.height)
                sums.add(image.at(fromX, fromY), reference.at(x, y));
        }
    }
    return sums;
}

BitImage disc(double cx, double cy)
{
    return BitImage(madeOf(40, 30, [&](int x, int y) { return std::hypot(x - cx, y - cy) < 8.0; }),
                    half);
}

TiffStack driftingStack(bool softBeam = false)
{
    TiffStack stack;
    for (int i = 0; i < DriftingSample::images; ++i)
        addImage(stack,
                 makeImage(DriftingSample::width, DriftingSample::height, TiffData::TiffWords,
                           [&](int x, int y) { return DriftingSample::counts(i, x, y, softBeam); }),
                 DriftingSample::energy(i));
    return stack;
}

} // namespace

/// Binary images, their products, and the shifts that are found by them.
class TestRegistration : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void edgesAreThoseOfSinglePixels()
    {
        RandomCounts counts(7);
        for (const auto type : {TiffData::TiffWords, TiffData::ImgLongs, TiffData::Floats}) {
            for (const QSize& size : {QSize(13, 9), QSize(1, 5), QSize(6, 1)}) {
                const auto image = makeImage(size.width(), size.height(), type, std::ref(counts));
                const ProcImage edges = edgeImage(*image);
                double most = 0.0;
                for (int y = 0; y < size.height(); ++y) {
                    for (int x = 0; x < size.width(); ++x) {
                        QCOMPARE(edges.at(x, y), plainEdge(*image, x, y));
                        most = std::max(most, edges.at(x, y));
                    }
                }
                QCOMPARE(edges.maxV, most);
            }
        }
    }

    void aMovedImageIsReadAtItsPositions()
    {
        RandomCounts counts(3);
        const auto image = makeImage(9, 7, TiffData::TiffWords, std::ref(counts));
        for (const QPoint& shift : {QPoint(2, -3), QPoint(-4, 1), QPoint(9, 0), QPoint(0, -20)}) {
            const auto moved = image->withShift(shift);
            const ProcImage data = dataImage(*moved);
            for (int y = 0; y < 7; ++y) {
                for (int x = 0; x < 9; ++x)
                    QCOMPARE(data.at(x, y), moved->pixel(x, y));
            }
        }
    }

    void whatEqualsTheThresholdIsNotSet()
    {
        const ProcImage image = madeOf(3, 1, [](int x, int) { return x - 3.0; }); // -3, -2, -1
        QCOMPARE(binarized(image, -2.0).pixels, (std::vector<double>{0.0, 0.0, 1.0}));
        // Without a value above 0 the greatest stays at its start.
        QCOMPARE(image.maxV, std::numeric_limits<double>::min());
        QCOMPARE(image.minV, -3.0);
        QCOMPARE(thresholdBetween(100.0, 300.0, 250), 150.0);
    }

    void productsOfBitsAreThoseOfNumbers()
    {
        std::mt19937 random(11);
        for (const QSize& size : {QSize(1, 1), QSize(63, 4), QSize(64, 3), QSize(150, 5)}) {
            const auto image =
                madeOf(size.width(), size.height(), [&](int, int) { return double(random() % 2); });
            const auto reference = madeOf(size.width(), size.height(),
                                          [&](int, int) { return double(random() % 3 == 0); });
            const BitImage bits(image, half);
            const BitImage referenceBits(reference, half);
            for (int sx : {0, 1, -1, 5, -63, 64, -65, 140, -200, 2000000000}) {
                for (int sy : {0, 1, -2, 7}) {
                    const ProductSums plain = plainSums(image, reference, {sx, sy});
                    const ProductSums sums = bits.sumsWith(referenceBits, {sx, sy});
                    QCOMPARE(sums.bb, plain.bb);
                    QCOMPARE(sums.rr, plain.rr);
                    QCOMPARE(sums.br, plain.br);
                    QCOMPARE(sums.product(), plain.product());
                }
            }
        }
    }

    void aClimbEndsAtTheTopOrWhereNothingIsBetter()
    {
        const FoundShift found = climbToShift(disc(24, 11), disc(17, 15), QPoint());
        QCOMPARE(found.shift, QPoint(-7, 4));
        QCOMPARE(found.product, 1.0);
        // No overlap, and nothing set: the start is as good as any.
        QCOMPARE(climbToShift(disc(24, 11), disc(17, 15), QPoint(100, 3)).shift, QPoint(100, 3));
        QCOMPARE(climbToShift(disc(24, 11), disc(90, 90), QPoint(2, 1)).shift, QPoint(2, 1));
    }

    void aDriftingStackComesBack_data()
    {
        QTest::addColumn<int>("reference"); // -1: each against the one before
        QTest::addColumn<bool>("edges");
        QTest::newRow("to the first") << 0 << false;
        QTest::newRow("to one in the middle") << 11 << false;
        QTest::newRow("to the last, by edges") << DriftingSample::images - 1 << true;
        QTest::newRow("to the one before") << -1 << false;
        QTest::newRow("to the one before, by edges") << -1 << true;
    }

    /// The planted drift, whatever the number of threads; shifts that images already have play no
    /// part but that of the reference.
    void aDriftingStackComesBack()
    {
        QFETCH(const int, reference);
        QFETCH(const bool, edges);
        const QPoint ofReference(4, -1);
        AlignmentOrder order;
        order.images = driftingStack(edges);
        order.edges = edges;
        order.thousandths = edges ? 300 : 500;
        order.toOneBefore = reference < 0;
        const int onto = std::max(reference, 0);
        const ProcImage data =
            edges ? edgeImage(*order.images[onto]) : dataImage(*order.images[onto]);
        order.reference = BitImage(data, thresholdOf(data, order.thousandths));
        order.referenceNumber = reference;
        order.referenceShift = ofReference;
        order.images[onto] = order.images[onto]->withShift(ofReference);
        order.images[5] = order.images[5]->withShift({20, 20});
        for (const int threads : {0, 1, 3}) {
            const StackShifts found = alignStack(order, threads);
            QCOMPARE(found.otherSizes, 0);
            for (int i = 0; i < DriftingSample::images; ++i)
                QCOMPARE(found.shifts[i], DriftingSample::backTo(onto, i) + ofReference);
            QVERIFY(found.leastProduct > (edges ? 0.3 : 0.99) && found.leastProduct <= 1.0);
        }
    }

    void imagesOfAnotherSizeStay()
    {
        AlignmentOrder order;
        order.images = driftingStack().mid(0, 3);
        order.images[1] =
            makeImage(9, 9, TiffData::TiffWords, [](int x, int) { return x; })->withShift({2, 3});
        const ProcImage data = dataImage(*order.images[0]);
        order.reference = BitImage(data, thresholdOf(data, order.thousandths));
        order.referenceNumber = 0;
        const StackShifts found = alignStack(order, 2);
        QCOMPARE(found.otherSizes, 1);
        QCOMPARE(found.shifts[1], QPoint(2, 3));
        QCOMPARE(found.shifts[2], DriftingSample::backTo(0, 2));
    }
};

QTEST_APPLESS_MAIN(TestRegistration)
#include "test_registration.moc"
