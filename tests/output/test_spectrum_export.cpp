#include "analysis/PlantedWalk.h"
#include "analysis/diagnostics/FourierWalk.h"
#include "calibration/ShiftMap.h"
#include "common/GeneralText.h"
#include "output/SpectrumExport.h"
#include "support/ImageFiles.h"

#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <complex>
#include <cstring>
#include <random>

/// Spectra as text, and the Fourier analysis: by the engine, against texts and sums made plainly.
class TestSpectrumExport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void numbersAreThoseOfATextStream()
    {
        std::mt19937_64 random(7);
        const auto check = [](double v) {
            QByteArray should;
            QTextStream(&should) << v;
            char text[generalTextSize];
            const QByteArray is(text, int(writeGeneral(v, text) - text));
            QVERIFY2(is == should, qPrintable(is + " for " + should));
        };
        for (const double v : {0.0,       -0.0,     1.0,
                               -1.0,      999999.5, 999999.4999999999,
                               1e6,       0.0001,   0.000099999949999,
                               9.9999995, 123456.5, 2.5e-5,
                               0.5,       1e22,     1e23,
                               1e-22,     4.9e-324, 1.7976931348623157e308,
                               qInf(),    -qInf(),  qQNaN()})
            check(v);
        for (int i = 0; i < 400000 && !QTest::currentTestFailed(); ++i) {
            const quint64 bits = random();
            double anyBits;
            std::memcpy(&anyBits, &bits, sizeof(anyBits));
            check(anyBits);
            const double usual = double(qint64(bits) >> 20) / 1048576.0 / (1 << (bits % 40));
            check(usual);
            check(double(bits % 2000001) / 2.0); // ties among them
        }
    }

    void aWalkWritesThePlainLines_data()
    {
        QTest::addColumn<QString>("rules");
        QTest::newRow("straight") << "";
        QTest::newRow("Victoreen") << "victoreen";
        QTest::newRow("shifted blocks") << "shifts blocks";
        QTest::newRow("suggested") << "suggested";
    }

    /// For all forms at once, threads and tiles alike, and with a position that has no edge.
    void aWalkWritesThePlainLines()
    {
        QFETCH(const QString, rules);
        const SharedSource source = sourceOf(rules);
        const AnalyzeCond area = areaOf(*source);
        for (const int form : {0, 1, 2}) {
            const QByteArray plain = plainText(*source, area, SpectrumForm(form));
            QCOMPARE(exported(source, area, {form}, 2, tileLanes).first(), plain);
            QCOMPARE(exported(source, area, {0, 1, 2}, 1, 3).at(form), plain);
            QCOMPARE(exported(source, area, {0, 1, 2}, 4, 7).at(form), plain);
            for (const InstructionSet set : instructionSets()) {
                useInstructionSet(set);
                QCOMPARE(exported(source, area, {form}, 2, tileLanes).first(), plain);
            }
        }
        QCOMPARE(
            spectrumHeader(SpectrumForm::Raw, area),
            QByteArray("# Morvenkite Save Raw Spectra 1.0\n") +
                (rules.contains("blocks")
                     ? "# X-Range (x0, x1), steps : 1 23 3\n# Y-Range (y0, y1), steps : 0 8 3\n"
                       "# Full Width, Height      : 23 8\n# Bin Half Width, Height  : 1 3\n"
                       "# Step dX, dY             : 7 3\n"
                     : "# X-Range (x0, x1), steps : 1 23 22\n# Y-Range (y0, y1), steps : 0 8 8\n"
                       "# Full Width, Height      : 23 8\n# Bin Half Width, Height  : 0 0\n"
                       "# Step dX, dY             : 1 1\n") +
                "# End of Header\n");
    }

    void aFileThatIsNotFinishedLeavesTheFormerOne()
    {
        const QString name = dir_.filePath("kept.dat");
        QVERIFY(writeBytes(name, "former"));
        {
            SpectrumFile file(name, "head\n", 2);
            file.write({"first\n"});
            QVERIFY(file.cancel());
            file.write({"second\n"});
        }
        QCOMPARE(bytesOf(name), QByteArray("former"));
        SpectrumFile whole(name, "head\n", 2);
        whole.write({"first\n"});
        QCOMPARE(bytesOf(name), QByteArray("former"));
        whole.write({"second\n"});
        QVERIFY(!whole.cancel());
        QCOMPARE(bytesOf(name), QByteArray("head\nfirst\nsecond\n"));
        const SpectrumFile none("/no/such/folder/x.dat", "head\n", 1);
        QVERIFY(none.hasFailed() && !none.reason().isEmpty());
    }

    void severalFormsHaveNamesOfTheirOwn()
    {
        QCOMPARE(spectrumFileName("/a/b.txt", SpectrumForm::Raw, false), QString("/a/b.txt"));
        QCOMPARE(spectrumFileName("/a/b", SpectrumForm::Normalized, true),
                 QString("/a/b-norm.dat"));
        QCOMPARE(spectrumFileName("/b.txt", SpectrumForm::RawXafs, true), QString("/b-rawxafs.txt"));
    }

    void magnitudesAreCorrelatedWithTheFirstImage()
    {
        const SharedSource source = sourceOf("blocks");
        const AnalyzeCond area = areaOf(*source);
        const int n = source->i1.size();
        FourierSums sums(n);
        WalkOrder order{source, area, {}};
        order.jobs.push_back(
            {std::make_unique<FourierKernel>(n), std::make_unique<FourierSink>(sums)});
        runWalk(std::move(order), 2);
        FourierSums plain(n);
        AnalyzeCond at = area;
        do {
            const Spectrum counts = rawI1(source->i1, source->block, at.cx, at.cy);
            const double a = counts.y(0) / source->block.blockPixels();
            plain.aa += a * a;
            for (int k = 0; k < n; ++k) {
                std::complex<double> sum;
                for (int i = 0; i < n; ++i)
                    sum += counts.y(i) * std::polar(1.0, -2.0 * M_PI * k * i / n);
                plain.am[std::size_t(k)] += a * std::abs(sum);
                plain.mm[std::size_t(k)] += std::norm(sum);
            }
        } while (at.next());
        QCOMPARE(sums.aa, plain.aa);
        for (int k = 0; k < n; ++k)
            QVERIFY(std::abs(sums.correlation(k) - plain.correlation(k)) < 1e-9);
    }

    /// The magnitude of a single image is the image.
    void oneImageCorrelatesWithItself()
    {
        auto source = std::make_shared<WalkSource>(*sourceOf({}));
        source->i1 = {source->i1.first()};
        FourierSums sums(1);
        WalkOrder order{source, areaOf(*source), {}};
        order.jobs.push_back(
            {std::make_unique<FourierKernel>(1), std::make_unique<FourierSink>(sums)});
        runWalk(std::move(order), 2);
        QVERIFY(std::abs(sums.correlation(0) - 1.0) < 1e-12);
        QVERIFY(std::isnan(FourierSums(1).correlation(0)));
    }

private:
    static constexpr int width = 23;
    static constexpr int height = 8;

    static SharedSource sourceOf(const QString& rules)
    {
        QVector<double> energies;
        for (int i = 0; i < 60; ++i)
            energies << 8900.0 + 2.5 * i;
        auto source = plantedSource({width, height}, energies, [](double E, int x, int y) {
            // One column has no edge.
            return x == 5 ? 0.3 : 0.2 + (0.5 + 0.01 * y) * (1.0 + std::tanh((E - 8980 - x) / 3.0));
        });
        if (rules.contains("blocks")) {
            source->block.halfX = 3;
            source->block.halfY = 1;
        }
        if (rules.contains("victoreen"))
            source->background = VictLine::Victoreen;
        source->elm.use = rules.contains("suggested");
        source->elm.edgeE = 8990.0;
        source->elm.thJump = 0.1;
        if (rules.contains("shifts")) {
            ShiftMap map;
            map.prepare({width, height, 0, 0, QRectF(0, 0, width, height), -1, -1});
            for (int k = 0; k < width * height; ++k)
                map.shifts[k] = 0.3 * (k % 7) - 1.0;
            source->shifts = map.field({0, 0});
        }
        return source;
    }

    static AnalyzeCond areaOf(const WalkSource& source)
    {
        AnalyzeCond area(width, height, source.block.halfX, source.block.halfY,
                         QRectF(1, 0, width, height), -1, -1);
        area.cutToImage();
        return area;
    }

    static QByteArray plainText(const WalkSource& source, AnalyzeCond at, SpectrumForm form)
    {
        QByteArray text = spectrumHeader(form, at);
        QTextStream out(&text, QIODevice::Append);
        do {
            const XafsSpectrum s = source.spectrum(
                at.cx, at.cy, form == SpectrumForm::Raw ? Stage::Counts : Stage::Shown);
            out << at.cx << ' ' << at.cy;
            if (form != SpectrumForm::Raw)
                out << ' ' << source.shifts.at(at.cx, at.cy);
            for (int i = 0; i < s.size(); ++i) {
                out << ' ' << s.x(i) << ' '
                    << (form == SpectrumForm::Normalized ? s.doubleNormalizedPostBase.y(i)
                                                         : s.y(i));
            }
            out << '\n';
        } while (at.next());
        out.flush();
        return text;
    }

    /// What the files of these forms hold behind one walk.
    QVector<QByteArray> exported(const SharedSource& source, const AnalyzeCond& area,
                                 const QVector<int>& forms, int threads, int lanes) const
    {
        WalkOrder order{source, area, {}};
        QStringList names;
        for (const int number : forms) {
            const auto form = SpectrumForm(number);
            names << spectrumFileName(dir_.filePath("x"), form, forms.size() > 1);
            order.jobs.push_back({std::make_unique<SpectrumTextKernel>(form),
                                  std::make_unique<SpectrumTextSink>(std::make_shared<SpectrumFile>(
                                      names.last(), spectrumHeader(form, area),
                                      qint64(area.columns()) * area.rows()))});
        }
        runWalk(std::move(order), threads, lanes);
        QVector<QByteArray> texts;
        for (const QString& name : names) {
            texts << bytesOf(name);
            QFile::remove(name);
        }
        return texts;
    }

    const QTemporaryDir dir_;
};

QTEST_GUILESS_MAIN(TestSpectrumExport)
#include "test_spectrum_export.moc"
