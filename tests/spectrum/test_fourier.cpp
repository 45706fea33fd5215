#include "spectrum/Fourier.h"
#include "spectrum/Spectrum.h"

#include <QtTest>

#include <random>

/// Transforms against their plain sums.
class TestFourier : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// And back again gives the values times the size.
    void equalsThePlainSums()
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> value(-2, 3);
        Fourier fourier;
        for (const int n : {1, 7, 64, 30}) {
            fourier.setSize(n);
            std::vector<double> values(static_cast<size_t>(n));
            for (double& v : values)
                v = value(random);
            fourier.forward(values.data());
            fourier.backward(fourier.forwardOut());
            for (int k = 0; k < n; ++k) {
                Fourier::Complex sum;
                for (int i = 0; i < n; ++i)
                    sum += values[size_t(i)] * std::polar(1.0, -2.0 * M_PI * i * k / n);
                QVERIFY(std::abs(fourier.forwardOut()[k] - sum) < 1e-9);
                QVERIFY(qAbs(fourier.magnitudes()[k] - std::abs(sum)) < 1e-9);
                QVERIFY(std::abs(fourier.backwardOut()[k] - n * values[size_t(k)]) < 1e-9);
            }
        }
    }

    void aShortCurveIsFilledUp()
    {
        Fourier fourier;
        fourier.setSize(4);
        const double before[] = {9, 9, 9, 9};
        fourier.forward(before);
        Spectrum s;
        s.append(8979, 2);
        s.append(8980, 1);
        fourier.forward(s);
        QCOMPARE(fourier.magnitudes()[0], 3.0);
        QCOMPARE(fourier.magnitudes()[2], 1.0);
        for (int i = 0; i < 9; ++i)
            s.append(8981 + i, 100);
        s.points.resize(9); // longer than the transform
        s.points[2].setY(0);
        s.points[3].setY(-3);
        fourier.forward(s);
        QCOMPARE(fourier.magnitudes()[0], 0.0);
    }

    void withoutASizeThereIsNothing()
    {
        Fourier fourier;
        const auto isNothing = [&] {
            const double value = 1;
            fourier.forward(&value);
            return fourier.size() == 0 && !fourier.magnitudes() && !fourier.forwardOut() &&
                   !fourier.backwardOut();
        };
        QVERIFY(isNothing());
        for (const int n : {0, -3}) {
            fourier.setSize(8);
            QCOMPARE(fourier.size(), 8);
            fourier.setSize(n);
            QVERIFY(isNothing());
        }
    }
};

QTEST_APPLESS_MAIN(TestFourier)
#include "test_fourier.moc"
