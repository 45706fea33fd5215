#include "display/DispA.h"
#include "display/XafsView.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QWheelEvent>
#include <QtTest>

#include <cmath>

/// The spectrum view, judged by its pixels and with a real mouse.
class TestSpectrumView : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        view_ = std::make_unique<XafsView>();
        plot_ = view_->findChild<DispA*>("Xafs");
        view_->resize(900, 600);
        view_->grab(); // lays the form out
    }

    void gapsSplitTheCurve()
    {
        const double v = 1.03; // off the grid
        for (const double gap : {40.0, 50.0, 60.0}) {
            view_->setSpectrum(curve({{9000, v}, {9030, v}, {9030 + gap, v}, {9100, v}}));
            const QImage shown = picture();
            QVERIFY(has(shown, Qt::black, 9015, v));
            QCOMPARE(has(shown, Qt::black, 9030 + gap / 2, v), gap <= 50);
        }
        view_->setStdSpectrum(curve({{9000, v}, {9060, v}}));
        QVERIFY(has(picture(), Qt::red, 9045, v)); // only the main spectrum is split
    }

    void energyCorrectionMovesTheSpectrumAlone()
    {
        XafsSpectrum s = step(9050);
        s.eOffset = 10;
        view_->setSpectrum(s);
        view_->setStdSpectrum(step(9050));
        view_->setOthers(
            {{step(9070), true, {}}, {step(9085), false, {}}, {step(9090), true, QPen(Qt::blue)}});
        QImage shown = picture();
        QVERIFY(has(shown, Qt::black, 9050, 0.5));
        QVERIFY(has(shown, Qt::red, 9070, 0.5)); // the first colour of all
        QVERIFY(has(shown, Qt::blue, 9090, 0.5));
        QVERIFY(isBlank(shown, 9085, 0.5)); // not to be shown
        view_->setEnergyCorrection(true);
        shown = picture();
        QVERIFY(has(shown, Qt::black, 9040, 0.5));
        QVERIFY(has(shown, Qt::red, 9050, 0.5) && !has(shown, Qt::black, 9050, 0.5));
    }

    /// Curves that differ in height and slope alone are one when normalised.
    void normalisedCurvesShareTheirAxis()
    {
        const QColor post(0, 220, 192);
        view_->setStdSpectrum(measured(8990, 3.0, 0.003));
        view_->setSpectrum(measured(8990, 1.0, -0.002));
        QVERIFY(count(picture(), Qt::red) > 50 && count(picture(), post) > 50);
        view_->setNormalize(true);
        QVERIFY(count(picture(), Qt::red) < 30 && count(picture(), post) == 0); // but in the legend
        view_->setStdSpectrum(measured(9010, 3.0, 0.0));
        QVERIFY(count(picture(), Qt::red) > 50);
    }

    /// Range of the axis less its air, against the greatest and least value of step curves.
    void theNormalisedAxisSpansAllThatIsShown()
    {
        const auto high = [](double E, double top) {
            XafsSpectrum s = step(E);
            for (QPointF& point : s.points)
                point.ry() *= top;
            s.normalizedPreBase.setPoints(s.points);
            return s;
        };
        const auto spans = [this](double min, double max) {
            picture();
            const ChCoord& axes = view_->coord();
            const double air = (max - min) / 20;
            return qAbs(axes.realY0 - (min - air)) < 1e-9 && qAbs(axes.realY1 - (max + air)) < 1e-9;
        };
        view_->setNormalize(true);
        view_->setSpectrum(high(9050, 1));
        QVERIFY(spans(0, 1));
        view_->setStdSpectrum(high(9060, 2));
        QVERIFY(spans(0, 2));
        view_->setOthers({{high(9080, 3), true, {}}, {high(9050, -9), false, {}}});
        QVERIFY(spans(0, 3));
        view_->setNormalize(false);
        QVERIFY(spans(0, 1)); // that of the main spectrum
        view_->setNormalize(true);
        // 9000 stays at its end, and 9080 leaves the view.
        for (int i = 0; i < 4; ++i)
            zoomAt(9000);
        QVERIFY(view_->xMax() > 9061 && view_->xMax() < 9079);
        QVERIFY(spans(0, 2));
        XafsSpectrum moved = high(9079.9, 5);
        moved.eOffset = 20;
        view_->setSpectrum(moved);
        QVERIFY(spans(0, 2));
        view_->setEnergyCorrection(true);
        QVERIFY(spans(0, 5));
        // Between two points a curve has values as well.
        view_->setStdSpectrum({});
        view_->setOthers({});
        XafsSpectrum slope = curve({{9000, 0}, {9040, 4}});
        slope.normalizedPreBase.setPoints(slope.points);
        for (int i = 0; i < 60; ++i)
            zoomAt(9030);
        view_->setSpectrum(slope);
        QVERIFY(spans((view_->xMin() - 9000) / 10, (view_->xMax() - 9000) / 10));
    }

    void numbersHaveRoom()
    {
        XafsPlot plot;
        plot.setSpectrum(measured(8990, 1.0, 0.0));
        for (const double zoom : {1.0, 0.31, 1e-5, 1e4}) {
            plot.range.reset();
            plot.range.zoom(8990.3, zoom);
            for (const double points : {9.0, 9 * 1.25, 18.0}) {
                QFont font;
                font.setPointSizeF(points);
                for (const QSize& size : {QSize(340, 240), QSize(430, 330), QSize(60, 40)}) {
                    plot.normalized = !plot.normalized;
                    plot.prepare(size, font);
                    QVERIFY(areApart(plot.labels(), size));
                    // All but the smallest have their two titles and some numbers on each axis.
                    QVERIFY(size.width() < 100 || plot.labels().size() >= 2 + 2 * 2);
                }
            }
        }
        QCOMPARE(plot.labels().size(), 0); // no room
    }

    void theLegendKeepsOffTheCurves()
    {
        XafsPlot plot;
        plot.setSpectrum(measured(8950, 1.0, 0.0));
        plot.stdSpectrum = measured(8960, 1.0, 0.001);
        const QImage plain = painted(plot, {340, 240});
        QVERIFY(plot.legendBox().isEmpty()); // no names
        plot.name = "(96, 104)";
        plot.stdName = QString(200, 'x'); // is shortened
        painted(plot, {340, 240});
        const QRect box = plot.legendBox();
        QVERIFY(!box.isEmpty() && QRect(0, 0, 340, 240).contains(box));
        for (const QColor& colour : {QColor(Qt::black), QColor(Qt::red), QColor(220, 192, 0)})
            QCOMPARE(count(plain.copy(box), colour), 0);
        painted(plot, {120, 70});
        QVERIFY(plot.legendBox().isEmpty());
        QVector<QPointF> everywhere;
        for (int i = 0; i <= 200; ++i)
            everywhere.append({8900.0 + i, i % 2 ? 1.0 : -1.0});
        plot.setSpectrum(curve(everywhere));
        painted(plot, {340, 240});
        QVERIFY(plot.legendBox().isEmpty());
    }

    void anEmptyPlotSaysWhatIsMissing()
    {
        view_->setPalette(QPalette(Qt::white, Qt::darkBlue)); // a dark desktop
        const QColor ground = view_->palette().color(QPalette::Window);
        const QImage empty = picture();
        QVERIFY(count(empty, ground) > empty.width() * empty.height() * 9 / 10);
        QVERIFY(count(empty, view_->palette().color(QPalette::WindowText)) > 50);
        view_->setEmptyText("Nothing");
        QVERIFY(picture() != empty);
        view_->setSpectrum(step(9050));
        const QImage shown = picture();
        QVERIFY(isBlank(shown, 9085, 0.5) && has(shown, Qt::black, 9050, 0.5));
    }

    void marksStandAtTheirEnergies()
    {
        view_->setSpectrum(measured(8990, 1.0, 0.0));
        const double edge = view_->spectrum().midx;
        view_->setMarkerEnergy(8930);
        view_->setEdgeMarks({{"Zn", 9063}, {"far", 20000}});
        QImage shown = picture();
        QVERIFY(has(shown, QColor(0, 224, 0), 8930, 5.5) && has(shown, Qt::red, 9063, 5.5));
        QVERIFY(has(shown, Qt::black, edge, 5.1) && has(shown, Qt::black, edge, 5.9));
        view_->setMarkerEnergy(-1);
        view_->setEdgeMarks({});
        shown = picture();
        QCOMPARE(count(shown, QColor(0, 224, 0)) + count(shown, Qt::red), 0);
    }

    void wheelKeepsTheEnergyUnderTheMouse()
    {
        view_->setSpectrum(step(9050));
        QCOMPARE(QPointF(view_->xMin(), view_->xMax()), QPointF(9000, 9100));
        view_->setSpectrum(curve({{9000, 0}, {9200, 1}}));
        QCOMPARE(view_->xMax(), 9200.0); // nothing is zoomed yet
        move({300, 200});
        const double energy = view_->coord().screenToRealX(300);
        for (const int delta : {120, 240, -240}) {
            wheel({300, 200}, delta);
            picture();
            QVERIFY(qAbs(view_->coord().screenToRealX(300) - energy) < 1e-9);
        }
        QVERIFY(qAbs(view_->xMax() - view_->xMin() - 200 / 1.1) < 1e-9);
        QCOMPARE(text("XVal"), QString::number(energy, 'g', 6));
        const double kept = view_->xMin();
        view_->setSpectrum(step(9050)); // new spectra leave the zoom alone
        QCOMPARE(view_->xMin(), kept);
        view_->findChild<QAbstractButton*>("ResetXScale")->click();
        QCOMPARE(QPointF(view_->xMin(), view_->xMax()), QPointF(9000, 9100));
        for (int i = 0; i < 2000; ++i)
            wheel({300, 200}, i < 1000 ? 120 : -120);
        QVERIFY(view_->xMax() > view_->xMin() && picture().width() > 0);
    }

    void plainLeftDragPans()
    {
        view_->setSpectrum(step(9050));
        const QSignalSpy updated(view_.get(), &XafsView::updated);
        drag(Qt::LeftButton, Qt::ShiftModifier);
        drag(Qt::RightButton, {});
        QCOMPARE(view_->xMin(), 9000.0);
        drag(Qt::LeftButton, {});
        const double moved = view_->coord().screenToRealDX(-40);
        QVERIFY(qAbs(view_->xMin() - 9000 - moved) < 1e-9);
        QVERIFY(qAbs(view_->xMax() - 9100 - moved) < 1e-9);
        QCOMPARE(updated.count(), 0);
    }

    void theNearestPointIsNamed()
    {
        XafsSpectrum s = curve({{9005, 0}, {9015, 1}, {9045, 2}, {9105, 3}});
        s.isShifted = true;
        s.eShift = 5;
        view_->setSpectrum(s);
        QCOMPARE(QPointF(view_->xMin(), view_->xMax()), QPointF(9000, 9100));
        picture(); // lays the axes out
        const QPair<double, const char*> rows[] = {{8990, "0"}, {9004, "0"}, {9006, "1"},
                                                   {9024, "1"}, {9069, "2"}, {9100, "3"}};
        for (const auto& row : rows) {
            const double x = std::round(view_->coord().realToScreenX(row.first));
            const double y = std::round(view_->coord().realToScreenY(1.5));
            move({x, y});
            QCOMPARE(view_->findChild<QLabel*>("Position")->text(), QString(row.second));
            QCOMPARE(text("XVal"), QString::number(view_->coord().screenToRealX(x), 'f', 1));
            QCOMPARE(text("YVal"), QString::number(view_->coord().screenToRealY(y), 'f', 3));
        }
    }

    void theEdgeIsTold()
    {
        XafsSpectrum s = step(9050);
        s.midx = 8979.5;
        s.dMut = 0.5;
        s.outcome = Outcome::Fitted;
        XafsSpectrum standard = s;
        standard.midx = 8978;
        QCOMPARE(view_->setSpectrum(s), 0.0); // no standard
        view_->setStdSpectrum(standard);
        QCOMPARE(view_->setSpectrum(s), 1.5);
        const QString edge = "dMut =  5.000e-01, Edge 8979.5 [eV] : ";
        QCOMPARE(message(), edge + " "); // nothing to add, but for the blank between
        s.outOfRangeMidx = s.noisyMidx = true;
        s.outcome = Outcome::OutsideWindow;
        view_->setSpectrum(s, "Gap unsound");
        QCOMPARE(message(), edge + "Out of Range midx Noizy to decide midx (mid point outside the "
                                   "window) Gap unsound");
        // No layout moves while the line comes and goes, and nothing of it is lost.
        QWidget* const line = view_->findChild<QWidget*>("ExtMsg");
        const int height = line->height();
        QVERIFY(line->toolTip().contains("the window) Gap unsound"));
        view_->setSpectrum({});
        view_->grab();
        QVERIFY(message().isEmpty() && line->height() == height);
        QVERIFY(height >= 2 * line->fontMetrics().height());
    }

    void stoppedItOnlyStores()
    {
        const QSignalSpy updated(view_.get(), &XafsView::updated);
        view_->setStopRedraw(true);
        view_->setSpectrum(step(9050));
        view_->setOthers({{step(9060), true, {}}});
        view_->setOther(0, {step(9025), true, QPen(Qt::blue)});
        view_->setOther(1, {step(9020), true, QPen(Qt::green)}); // no such curve
        view_->setRawSpectrum({});
        QCOMPARE(updated.count(), 0);
        QVERIFY(message().isEmpty());
        view_->setStopRedraw(false);
        QCOMPARE(updated.count(), 1);
        QVERIFY(!message().isEmpty());
        QVERIFY(has(picture(), Qt::blue, 9025, 0.5) && view_->others().size() == 1);
    }

    void rawModesDrawWhatThereIs()
    {
        const auto box = [this](const char* name) {
            return view_->findChild<QAbstractButton*>(name);
        };
        QVERIFY(!box("ShowFFT")->isEnabled());
        view_->setSpectrum(step(9050));
        QVERIFY(has(picture(), Qt::black, 9050, 0.5));
        box("ShowRaw")->click();
        QVERIFY(!has(picture(), Qt::black, 9050, 0.5));
        const QColor raw(192, 0, 0), fft(0, 192, 0);
        for (const int n : {0, 1, 5, 9, 10, 29, 30, 61}) {
            Spectrum s;
            for (int i = 0; i < n; ++i)
                s.append(9000 + 100.0 * i / n, 40 + 10 * std::sin(0.9 * i));
            view_->setRawSpectrum(s);
            QCOMPARE(count(picture(), raw) > 0, n > 0);
            box("ShowFFT")->click();
            const QImage shown = picture();
            QCOMPARE(count(shown, fft) > 0, n >= 10);
            QCOMPARE(count(shown, raw), 0);
            box("ShowFFT")->click();
        }
    }

    /// The raw curve over the energies, its frequencies over their index, each where its axis says.
    void rawModesHaveTheirPointsInTheWindow()
    {
        const int n = 400, waves = 17;
        Spectrum s;
        for (int i = 0; i < n; ++i)
            s.append(9000 + i * 0.25, -5 - std::sin(2 * M_PI * waves * i / n));
        view_->setSpectrum(step(9050));
        view_->setMarkerEnergy(9020);
        view_->setRawSpectrum(s);
        view_->findChild<QAbstractButton*>("ShowRaw")->click();
        QImage shown = picture();
        for (const int i : {3, 200, 396})
            QVERIFY(has(shown, QColor(192, 0, 0), s.x(i), s.y(i)));
        view_->findChild<QAbstractButton*>("ShowFFT")->click();
        shown = picture();
        const ChCoord& axes = view_->coord();
        QCOMPARE(QPointF(axes.realX0, axes.realX1), QPointF(0, n / 10));
        QVERIFY(has(shown, QColor(0, 192, 0), waves, n / 2.0));
        QVERIFY(has(shown, QColor(0, 192, 0), 30, 0));
        QCOMPARE(count(shown, QColor(0, 224, 0)), 0); // an energy has no place here
        QVERIFY(view_->findChild<QLabel*>("XValLabel")->isHidden());
        move({axes.realToScreenX(waves), 200});
        QCOMPARE(view_->findChild<QLabel*>("Position")->text(), QString::number(waves));
        wheel({300, 200}, 120);
        QVERIFY(axes.realX1 - axes.realX0 < n / 10);
        QCOMPARE(view_->xMax() - view_->xMin(), 100.0); // the energies are zoomed on their own
    }

    void savesEachSpectrumInItsFile()
    {
        const QTemporaryDir dir;
        XafsSpectrum s = step(9050);
        s.eOffset = 100.00001;
        view_->setSpectrum(s);
        view_->setStdSpectrum(s);
        view_->setOthers({{step(9020), true, {}}, {step(9030), false, {}}});
        const QPair<const char*, const char*> names[] = {
            {"a.dat", "a"}, {"b", "b"}, {"c_0.25", "c_0.25"}};
        for (const auto& name : names) {
            view_->saveData(dir.filePath(name.first));
            const QPair<const char*, const char*> files[] = {
                {"T", "8899.99999"}, {"std", "9000"}, {"other0", "9000"}, {"other1", "9000"}};
            for (const auto& file : files) {
                const QString saved = QString("%1-%2.dat").arg(name.second, file.first);
                const QByteArray line = bytesOf(dir.filePath(saved)).split('\n').value(7);
                QCOMPARE(line.split('\t').first(), file.second);
            }
        }
        const LogCapture log;
        view_->saveData({});
        view_->setOthers({});
        view_->setStdSpectrum(XafsSpectrum());
        view_->saveData(dir.filePath("alone"));
        view_->setSpectrum(XafsSpectrum());
        view_->saveData(dir.filePath("none"));
        QCOMPARE(log.linesWith("to save"), 2);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 13); // those and alone-T.dat
    }

    void survivesAnyNumbers_data()
    {
        const double nan = qQNaN(), inf = qInf();
        const QPair<const char*, QVector<QPointF>> rows[] = {
            {"none", {}},
            {"one", {{9000, 1}}},
            {"one energy", {{9000, 1}, {9000, 2}, {9000, 3}}},
            {"level", {{9000, 1}, {9010, 1}, {9020, 1}, {9030, 1}}},
            {"nan energies", {{nan, 1}, {nan, 2}, {9020, 3}, {nan, 4}}},
            {"all nan", {{nan, nan}, {nan, nan}}},
            {"infinite values", {{9000, inf}, {9010, -inf}, {9020, 1}, {9030, nan}}},
            {"infinite energies", {{-inf, 1}, {9010, 2}, {9020, 1}, {inf, 2}}},
            {"huge", {{-1e308, -1e308}, {0, 1e308}, {1e308, -1e308}, {1e308, 1e308}}},
            {"tiny", {{1e-310, 1e-310}, {2e-310, 2e-310}, {3e-310, 3e-310}}},
            {"unresolved", {{1e17, 1}, {1e17 + 16, 2}, {1e17 + 32, 3}}}};
        QTest::addColumn<QVector<QPointF>>("points");
        for (const auto& row : rows)
            QTest::newRow(row.first) << row.second;
    }

    void survivesAnyNumbers()
    {
        QFETCH(QVector<QPointF>, points);
        Spectrum s;
        s.setPoints(points);
        for (const int mode : {VictLine::Victoreen, VictLine::Straight}) {
            XafsSpectrum normal(s, "x", mode, qQNaN(), {});
            view_->setSpectrum(normal);
            view_->setStdSpectrum(normal);
            view_->setRawSpectrum(s);
            view_->setOthers({{normal, true, {}}});
            view_->setMarkerEnergy(qInf());
            view_->setEdgeMarks({{"nan", qQNaN()}, {"x", 9000}});
            for (const char* box : {"Normalized", "ECorrect", "ShowRaw", "ShowFFT", "ShowRaw"}) {
                view_->findChild<QAbstractButton*>(box)->click();
                move({300, 200});
                wheel({300, 200}, 120);
                drag(Qt::LeftButton, {});
                QVERIFY(picture().width() > 0);
                QVERIFY(view_->xMax() > view_->xMin());
            }
        }
    }

    void aNumberThatIsNoneBreaksTheCurve()
    {
        view_->setSpectrum(curve({{9000, 1}, {9020, 1}, {9040, qQNaN()}, {9060, 1}, {9100, 1}}));
        const QImage shown = picture();
        QVERIFY(has(shown, Qt::black, 9010, 1) && has(shown, Qt::black, 9080, 1));
        QVERIFY(!has(shown, Qt::black, 9030, 1) && !has(shown, Qt::black, 9050, 1));
    }

private:
    static XafsSpectrum curve(const QVector<QPointF>& points)
    {
        Spectrum s;
        s.setPoints(points);
        return XafsSpectrum::unnormalized(s, "x", VictLine::Straight, 0.0, {});
    }
    /// From 0 to 1 at an energy, within 9000 to 9100.
    static XafsSpectrum step(double E)
    {
        QVector<QPointF> points;
        for (double e = 9000; e < E; e += 10)
            points.append({e, 0});
        points.append({E - 0.01, 0});
        for (double e = E + 0.01; e < 9100; e += 10)
            points.append({e, 1});
        points.append({9100, 1});
        return curve(points);
    }
    static XafsSpectrum measured(double edge, double height, double slope)
    {
        Spectrum s;
        for (double E = 8900; E <= 9100; E += 1)
            s.append(E, 5 + slope * (E - 8900) +
                            height * (0.5 + std::atan((E - edge) / 2) / M_PI +
                                      (E > edge ? 0.2 * std::sin((E - edge) / 6) : 0)));
        return {s, "x", VictLine::Straight, 0.0, {}};
    }

    QImage picture() { return plot_->grab().toImage(); }
    QString text(const char* name) { return view_->findChild<QLineEdit*>(name)->text(); }
    QString message() { return view_->findChild<QLabel*>("ExtMsg")->text(); }

    /// The place of an energy and of a fraction of the axis of values from 0 to 1, of which a level
    /// curve of value 1 has the middle.
    QRect around(double energy, double value) const
    {
        const ChCoord& c = view_->coord();
        return QRect(int(c.realToScreenX(energy)), int(c.realToScreenY(value)), 1, 1)
            .adjusted(-2, -2, 2, 2);
    }
    bool has(const QImage& image, const QColor& colour, double energy, double value) const
    {
        return count(image.copy(around(energy, value)), colour) > 0;
    }
    bool isBlank(const QImage& image, double energy, double value) const
    {
        const QRect place = around(energy, value);
        return count(image.copy(place), Qt::white) == place.width() * place.height();
    }
    /// Labels lie inside the area, none upon another, and no axis has a number twice.
    static bool areApart(const QVector<PlotLabel>& labels, const QSize& area)
    {
        const auto clash = [](const QRect& a, const QRect& b, bool sameText) {
            const bool sameAxis = a.top() == b.top() || a.right() == b.right();
            return a.intersects(b) || (sameText && sameAxis);
        };
        for (int i = 0; i < labels.size(); ++i) {
            const PlotLabel& label = labels.at(i);
            if (!QRect(QPoint(), area).contains(label.box))
                return false;
            for (int k = 0; k < i; ++k)
                if (clash(label.box, labels.at(k).box, label.text == labels.at(k).text))
                    return false;
        }
        return true;
    }
    static QImage painted(XafsPlot& plot, const QSize& size)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QFont font;
        font.setPointSizeF(9);
        plot.paint(&painter, size, font);
        return image;
    }
    static int count(const QImage& image, const QColor& colour)
    {
        int n = 0;
        for (int i = 0; i < image.width() * image.height(); ++i)
            n += image.pixelColor(i % image.width(), i / image.width()) == colour ? 1 : 0;
        return n;
    }

    void move(const QPointF& to, Qt::KeyboardModifiers keys = {})
    {
        QMouseEvent event(QEvent::MouseMove, to, Qt::NoButton, {}, keys);
        QApplication::sendEvent(plot_, &event);
    }
    void drag(Qt::MouseButton button, Qt::KeyboardModifiers keys)
    {
        QTest::mousePress(plot_, button, keys, {200, 200});
        move({230, 210}, keys);
        move({240, 210}, keys);
        QTest::mouseRelease(plot_, button, keys, {240, 210});
        move({300, 210}, keys);
    }
    void zoomAt(double energy)
    {
        const QPointF at(view_->coord().realToScreenX(energy), 200);
        move(at);
        wheel(at, 120);
    }
    void wheel(const QPointF& at, int delta)
    {
        QWheelEvent turn(at, at, {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(plot_, &turn);
    }

    std::unique_ptr<XafsView> view_;
    DispA* plot_ = nullptr;
};

QTEST_MAIN(TestSpectrumView)
#include "test_spectrum_view.moc"
