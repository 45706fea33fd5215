#include "common/PortableMath.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double pi = 3.14159265358979323846;

using Function = double (*)(double);
using LongFunction = long double (*)(long double);
using Random = std::mt19937_64;
using Arguments = std::function<double(Random&)>;

double share(Random& random)
{
    return double(random() >> 11) * 0x1p-53;
}

/// A number near the place, by chance at any distance from half of it down to the last digits.
double around(double place, Random& random)
{
    return place * (1.0 + (share(random) - 0.5) * std::ldexp(1.0, -int(random() % 52)));
}

double ulpsOff(double found, long double truth)
{
    const int exponent = std::max(std::ilogb(truth), std::numeric_limits<double>::min_exponent - 1);
    return double(std::abs(found - truth) * std::ldexp(1.0L, 52 - exponent));
}

/// Largest error over the arguments [ulp]. The true value is asked for where the C library, a
/// form of its own whose errors stay below 0.6 ulp, gives another double: that is ten times as
/// fast, and leaves no larger error out.
double largestError(Function own, Function library, LongFunction truth, const Arguments& arguments)
{
    constexpr int count = 3500000;
    Random random(5);
    double largest = 0.0;
    for (int i = 0; i < count; ++i) {
        const double x = arguments(random);
        const double found = own(x);
        if (found != library(x))
            largest = std::max(largest, ulpsOff(found, truth(x)));
    }
    return largest;
}

/// The results' bits, mixed to one number.
quint64 mixedBits(Function own, const Arguments& arguments)
{
    Random random(7);
    quint64 mixed = 0;
    for (int i = 0; i < 100000; ++i)
        mixed = (mixed ^ portable::bitsOf(own(arguments(random)))) * 0x9e3779b97f4a7c15;
    return mixed;
}

double anyPositive(Random& random)
{
    return portable::fromBits(random() % 0x7ff0000000000000);
}

double nearOne(Random& random)
{
    return around(1.0, random);
}

double nearPowersOfTwo(Random& random)
{
    return around(std::ldexp(1.0, int(random() % 2000) - 1000), random);
}

double subnormal(Random& random)
{
    return portable::fromBits(random() % 0x0010000000000000);
}

double braggAngle(Random& random)
{
    return (share(random) - 0.5) * pi;
}

double manyTurns(Random& random)
{
    return (share(random) - 0.5) * 2e5;
}

double nearQuarterTurns(Random& random)
{
    return around(double(random() % 690000) * (pi / 2), random);
}

double sineOfAnySize(Random& random)
{
    const double size = portable::fromBits(random() % 0x3ff0000000000001);
    return random() % 2 ? size : -size;
}

double evenSine(Random& random)
{
    return (share(random) - 0.5) * 2.0;
}

double nearSeams(Random& random)
{
    const double seams[] = {0.5, 0.975, 1.0};
    return std::min(1.0, around(seams[random() % 3], random));
}

} // namespace

/// The program's own elementary functions.
class TestPortableMath : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void errorsStayBelowOneUlp()
    {
        const Function log = [](double x) { return portable::log(x); };
        const Function libraryLog = [](double x) { return std::log(x); };
        const Function librarySin = [](double x) { return std::sin(x); };
        const Function libraryAsin = [](double x) { return std::asin(x); };
        const struct
        {
            const char* name;
            Function own;
            Function library;
            LongFunction truth;
            Arguments arguments;
            quint64 mixed; ///< of the build that was held against long double first
        } rows[] = {
            {"log", log, libraryLog, logl, anyPositive, 0x39c4ba139c50a007},
            {"log near 1", log, libraryLog, logl, nearOne, 0x14684a27dabfd615},
            {"log near powers of two", log, libraryLog, logl, nearPowersOfTwo, 0x82e4a2e19b71d06a},
            {"log of subnormal", log, libraryLog, logl, subnormal, 0x36111ba829df1382},
            {"sin", portable::sin, librarySin, sinl, braggAngle, 0x698ef5632745ccd2},
            {"sin of turns", portable::sin, librarySin, sinl, manyTurns, 0x65e8e449da944098},
            {"sin at quarters", portable::sin, librarySin, sinl, nearQuarterTurns,
             0x8996fbbe262bb7fa},
            {"asin by bits", portable::asin, libraryAsin, asinl, sineOfAnySize, 0xcb5574c04cc391ed},
            {"asin", portable::asin, libraryAsin, asinl, evenSine, 0xf9f218871b5ddfc3},
            {"asin near seams", portable::asin, libraryAsin, asinl, nearSeams, 0x33a5f184d5c68b40},
        };
        for (const auto& row : rows) {
            const double error = largestError(row.own, row.library, row.truth, row.arguments);
            QVERIFY2(error < 1.0, qPrintable(QString("%1: %2 ulp").arg(row.name).arg(error)));
            // Every compiler, every processor and every build gets the same bits.
            QVERIFY2(mixedBits(row.own, row.arguments) == row.mixed, row.name);
        }
    }

    void whatIsNoNumberIsAnsweredByRule()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double smallest = std::numeric_limits<double>::denorm_min();
        for (const double zero : {0.0, -0.0}) {
            QCOMPARE(portable::log(zero), -infinity);
            QCOMPARE(std::signbit(portable::sin(zero)), std::signbit(zero));
            QCOMPARE(std::signbit(portable::asin(zero)), std::signbit(zero));
        }
        QVERIFY(portable::log(1.0) == 0.0 && portable::log(infinity) == infinity);
        QVERIFY(portable::sin(-smallest) == -smallest && portable::asin(smallest) == smallest);
        QVERIFY(portable::asin(1.0) == pi / 2 && portable::asin(-1.0) == -pi / 2);
        for (const double x : {-smallest, -1.0, -infinity, nan})
            QVERIFY(std::isnan(portable::log(x)));
        for (const double x : {infinity, -infinity, nan})
            QVERIFY(std::isnan(portable::sin(x)));
        for (const double x : {1.0 + 1e-15, -1.0 - 1e-15, infinity, -infinity, nan})
            QVERIFY(std::isnan(portable::asin(x)));
    }

    void theSineOfAFarAngleIsThatOfAnAngleNextToIt()
    {
        Random random(9);
        for (int i = 0; i < 20000; ++i) {
            const double x = std::ldexp(1.0 + share(random), int(random() % 1003) + 20);
            const double toNext = std::nextafter(x, infinity) - x;
            const long double off = std::abs(portable::sin(x) - sinl(x));
            QVERIFY(off <= 0.5 * toNext + 1e-15 && std::abs(portable::sin(x)) <= 1.0);
            QVERIFY(portable::sin(-x) == -portable::sin(x));
        }
    }
};

QTEST_GUILESS_MAIN(TestPortableMath)
#include "test_portable_math.moc"
