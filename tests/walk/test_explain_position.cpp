#include "analysis/LcfFixtures.h"
#include "analysis/lcf/LcfWalk.h"
#include "common/FieldText.h"
#include "support/RandomStack.h"
#include "walk/ExplainPosition.h"

#include <QtTest>

namespace {

constexpr int energies = 60;

/// Noiseless images with dark, dark areas, I0 between the energies of I1, and a shift.
WalkSource source()
{
    WalkSource s;
    for (int i = 0; i < energies; ++i) {
        const double E = 8900.0 + 4.0 * i;
        const double mu = edgeShape(E, 8990.0, 1.2, 15.0);
        addImage(s.i1,
                 makeImage(8, 6, TiffData::Floats,
                           [mu](int x, int y) { return 5e4 * std::exp(-mu) + 30.0 + x + 7 * y; }),
                 E);
        s.block.i1DarkAvg << 2.0 + 0.1 * i;
        s.block.i0DarkAvg << 3.0 + 0.2 * i;
    }
    for (int i = 0; i < energies; i += 3)
        addImage(s.i0,
                 makeImage(8, 6, TiffData::Floats, [i](int x, int) { return 5e4 + 11 * i + x; }),
                 8901.0 + 4.0 * i);
    s.block.dark = makeImage(8, 6, TiffData::Floats, [](int x, int y) { return 4.0 + x + y; });
    s.block.darkExposure = 50;
    s.block.i1Exposure = 20;
    s.block.i0Exposure = 10;
    s.block.i1DarkAreaOn = s.block.i0DarkAreaOn = s.block.useI0 = true;
    s.block.imageWidth = 8;
    s.block.imageHeight = 6;
    s.block.halfX = 1;
    s.shifts.values.fill(0.25, 48);
    s.shifts.size = {8, 6};
    return s;
}

QVector<QVector<double>> tableOf(const QString& text)
{
    QVector<QVector<double>> table;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith('#'))
            continue;
        QVector<double> row;
        for (const QString& cell : line.split(' ', Qt::SkipEmptyParts))
            row << cell.toDouble();
        table << row;
    }
    return table;
}

bool says(const QString& text, const QString& name, double value)
{
    const QRegularExpression line("^# " + QRegularExpression::escape(name) + " +: " +
                                      QRegularExpression::escape(shortestText(value)) + "$",
                                  QRegularExpression::MultilineOption);
    return line.match(text).hasMatch();
}

} // namespace

/// The text that explains a position, against the plain forms and by its own sums.
class TestExplainPosition : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// At the image's corner, where the block reaches beyond it.
    void theTableCanBeCheckedByHand()
    {
        const WalkSource s = source();
        const XafsSpectrum plain = s.spectrum(0, 5, Stage::Shown);
        const auto table = tableOf(explainPosition(s, 0, 5, {}));
        QCOMPARE(table.size(), energies);
        for (int i = 0; i < energies; ++i) {
            const QVector<double>& row = table.at(i);
            QCOMPARE(row.size(), 11);
            QCOMPARE(row.at(2), row.at(1) - 0.25);
            // What stands in the row makes up its absorption and its normalised value.
            QCOMPARE(std::log((row.at(5) - row.at(6)) / (row.at(3) - row.at(4))), plain.y(i));
            QVERIFY(row.at(7) == plain.y(i));
            QVERIFY(row.at(8) == plain.preAt(plain.x(i)) && row.at(9) == plain.postAt(plain.x(i)));
            QVERIFY(row.at(10) == plain.doubleNormalizedPreBase.y(i));
        }
    }

    void linesEdgeAndKernelsAreThoseOfThePlainForms()
    {
        const WalkSource s = source();
        LcfRequest request = fourRows();
        request.inWalk = true;
        const auto kernel = std::make_shared<LcfKernel>(request, QVector<int>{0, 1, 3});
        const QString text = explainPosition(s, 4, 2, {{"fit", kernel}});
        const XafsSpectrum plain = s.spectrum(4, 2, Stage::Curve);
        for (const VictLine* line : {&plain.pre, &plain.post})
            QVERIFY(says(text, "slope", line->slope) && says(text, "c0", line->c0));
        QVERIFY(says(text, "midx [eV]", plain.midx) && says(text, "dMut", plain.dMut));
        TileResult result(kernel->values(), 1);
        kernel->plain({s, 4, 2, plain}, 0, result);
        QVERIFY(result.value(3, 0) != 0.0);
        const QStringList names = kernel->valueNames();
        for (int i = 0; i < kernel->values(); ++i)
            QVERIFY(says(text, names.value(i, QString("value %1").arg(i)), result.value(i, 0)));
    }

    void aPositionWithoutASpectrumSaysWhy()
    {
        const auto kernel = std::make_shared<LcfKernel>(fourRows(), QVector<int>{0});
        for (const QPoint p : {QPoint(-1, 2), QPoint(8, 2), QPoint(3, 6), QPoint(1 << 30, 0)})
            QVERIFY(explainPosition(source(), p.x(), p.y(), {{"fit", kernel}})
                        .endsWith("outside the image: no spectrum\n"));
        QVERIFY(explainPosition(WalkSource(), 0, 0, {}).contains("no I1 images"));
    }
};

QTEST_APPLESS_MAIN(TestExplainPosition)
#include "test_explain_position.moc"
