#include "BodyFixture.h"
#include "display/ColorBar.h"
#include "display/CrossSView.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "image/ImagePicture.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include <limits>

/// The interactive road of the main window: from the mouse over the image to spectrum, sections,
/// labels and overlay; browsing, dark areas and saved pictures.
class TestViewer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        body_.reset(); // it takes the program's colour scale with it
        body_ = std::make_unique<DrivenBody>();
        area_ = body_->findChild<ImgDispA*>("dispA");
        view_ = body_->findChild<XafsView*>("XafsView");
        QVERIFY(area_ && view_);
    }

    void mouseMoveShowsBlockSpectrumSectionsAndLabels()
    {
        load();
        QVERIFY(body_->runAll({"set_band_w 1", "set_band_h 2"}));
        moveTo(5, 3);
        QCOMPARE(view_->spectrum().points, body_->rawXafsAt(5, 3, 1, 2).points);
        QVERIFY(std::abs(view_->spectrum().midx - 8980.0) < 2.0);
        QCOMPARE(text("Position"), QString("(   5,    3)"));
        QCOMPARE(text("EShiftOnTbl"), QString(" 0.000"));
        const double counts = body_->i1Stack().last()->pixel(5, 3);
        QCOMPARE(text("Value"), QLocale(QLocale::English).toString(counts, 'g', 10));
        QVERIFY(text("Value").contains(','));

        // Absorption along the row with the half width yw across, and up the column with xw.
        const Spectrum across = body_->hCrossAt(3, 1, 2, true);
        QCOMPARE(across.size(), experiment_.width);
        const TiffData& image = *body_->i1Stack().last();
        const double i0 = body_->i0Stack().last()->blockSum(5, 3, 1, 2);
        QCOMPARE(across.y(5), std::log(i0 / image.blockSum(5, 3, 1, 2)));
        const Spectrum upward = body_->vCrossAt(5, 1, 1, false);
        QCOMPARE(upward.points[2],
                 QPointF(experiment_.height - 2, body_->i0Stack().last()->blockSum(5, 2, 1, 1)));
        for (const char* name : {"HCross", "VCross"})
            QVERIFY(hasInk(*body_->findChild<CrossSView*>(name)));
    }

    void spectrumFollowsItsConditionsAndLeavesWithTheMouse()
    {
        load();
        moveTo(6, 2);
        auto* useI0 = body_->findChild<QCheckBox*>("UseI0");
        useI0->click();
        QCOMPARE(view_->spectrum().points, body_->rawXafsAt(6, 2, 0, 0).points);
        auto* width = body_->findChild<QLineEdit*>("HWidth");
        width->selectAll();
        QTest::keyClicks(width, "2");
        QTest::keyClick(width, Qt::Key_Return);
        QCOMPARE(view_->spectrum().points, body_->rawXafsAt(6, 2, 2, 0).points);
        moveTo(-3, 2); // outside: an empty spectrum, no fault
        QVERIFY(view_->spectrum().isEmpty());
        QVERIFY(body_->run("clear_I1_files"));
        moveTo(3, 2);
        QVERIFY(view_->spectrum().isEmpty());
        body_->grab();
    }

    void overlayMarksBlockSelectionAndDarkAreas()
    {
        load();
        QVERIFY(body_->runAll({"set_band_w 1", "set_band_h 0", "select_region 8 1 10 3",
                               "set_i0_dark_area", "select_region 0 4 2 6", "set_i1_dark_area",
                               "select_region 8 4 11 6"}));
        moveTo(4, 2);
        const QImage shown = area_->grab().toImage();
        const auto colourAt = [&](double x, double y) {
            return shown.pixelColor(int(area_->coord.realToScreenX(x)),
                                    int(area_->coord.realToScreenY(y)));
        };
        QCOMPARE(colourAt(3, 2.5), QColor(Qt::red));
        QCOMPARE(colourAt(4, 5.5), QColor(192, 192, 0));
        QCOMPARE(colourAt(8, 5), QColor(192, 192, 255));
        QCOMPARE(colourAt(8, 1.5), QColor(192, 255, 192));
        QCOMPARE(colourAt(1, 4), QColor(255, 192, 192));
        QCOMPARE(text("BoxSize"), QString("(   8,    4)-(  11,    6)"));
    }

    void choiceButtonsSliderAndKeysBrowseTheStacks()
    {
        load();
        auto* row = body_->findChild<SelectDataFiles*>("SelectI1Files");
        auto* slider = body_->findChild<QSlider*>("SeekBar");
        slider->setValue(30); // the next image is that of the bump, not level
        click("Next");
        QCOMPARE(row->currentIndex(), 31);
        QCOMPARE(view_->markerEnergy(), experiment_.firstEnergy + 31 * experiment_.energyStep);
        click("Prev");
        QCOMPARE(slider->value(), 30);
        row->select(-1);
        row->select(row->count());
        QCOMPARE(row->currentIndex(), 30);
        click("Next");
        const QImage sample = area_->currentImage()->copy();
        click("ShowI0");
        QCOMPARE(slider->value(), experiment_.energies - 1);
        QVERIFY(*area_->currentImage() != sample);
        click("ShowShiftMap");
        QVERIFY(!area_->currentImage()); // no map yet
        moveTo(2, 2);
        QVERIFY(text("Value").isEmpty() && !text("Position").isEmpty());
        QVERIFY(body_->findChild<CrossSView*>("HCross")->points().isEmpty());
        QVERIFY(body_->run("clear_I0_files"));
        click("ShowI0");
        QVERIFY(!area_->currentImage() && text("Value").isEmpty()); // nor that of I1
        QVERIFY(body_->findChild<QPushButton*>("ShowI0")->isChecked());
        click("ShowData");
        QCOMPARE(*area_->currentImage(), sample);
    }

    void batchNeedsNoPaintToMoveAndNoClickToRefresh()
    {
        load();
        // Nor does it matter how much of the image is in view, or how small.
        for (const bool small : {false, true}) {
            if (small)
                area_->setFixedSize(5, 3);
            for (const char* view : {"scale_reset", "zoom_in"}) {
                QVERIFY(body_->runAll({"select_region 2 1 8 5", view}));
                for (int x = 0; x < experiment_.width; ++x) {
                    QVERIFY(body_->run(QString("move_position %1 5").arg(x)));
                    QCOMPARE(text("Position"), QString::asprintf("(% 4d, % 4d)", x, 5));
                    QCOMPARE(view_->spectrum().points, body_->rawXafsAt(x, 5, 0, 0).points);
                    if (!small && area_->viewWindow().contains(x, 5))
                        QCOMPARE(int(std::floor(area_->cursorPosition().x())), x);
                }
            }
        }
        QVERIFY(body_->runAll({"set_band_w 2", "set_band_h 1"}));
        QCOMPARE(view_->spectrum().points, body_->rawXafsAt(11, 5, 2, 1).points);
    }

    void browsingLeavesAMapAndClearingLeavesNothing()
    {
        load();
        click("ShowResAnalysis");
        click("Prev");
        QVERIFY(body_->findChild<QPushButton*>("ShowData")->isChecked());
        QVERIFY(!area_->shownMap() && area_->currentImage());
        auto* number = body_->findChild<QLineEdit*>("ImgNo");
        for (const char* typed : {"999", "x"}) {
            number->setText(typed);
            QTest::keyClick(number, Qt::Key_Return);
            QCOMPARE(number->text(), QString::number(experiment_.energies - 2));
        }
        moveTo(4, 4);
        QVERIFY(body_->run("clear_I1_files"));
        QVERIFY(view_->spectrum().isEmpty() && text("Value").isEmpty());
        QCOMPARE(number->text(), QString("0"));
    }

    void mapStaysOnShowWithCursorSectionsAndValueOfItsOwn()
    {
        load();
        QVERIFY(body_->runAll({"analyzer_select_analysis_mode 0", "analyzer_exec_LCF",
                               "analyzer_select_image 0", "select_disp_image 3"}));
        const Analyzed2DRes* map = area_->shownMap();
        QVERIFY(map && map == body_->selectedMap());
        const double firstEnergy = view_->markerEnergy();
        body_->selectedMap()->setData(11, 0, 0, 0, 1e6);
        QVERIFY(body_->run("move_position 4 5"));
        QCOMPARE(text("Value"), QString::number(map->valueAt(4, 5), 'g', 6));
        QCOMPARE(view_->markerEnergy(), firstEnergy); // of I1
        const auto* across = body_->findChild<CrossSView*>("HCross");
        QCOMPARE(across->axis(), QString("dMut"));
        QCOMPARE(across->points().size(), experiment_.width);
        QCOMPARE(across->points()[7], QPointF(7, map->valueAt(7, 5)));
        const auto* upward = body_->findChild<CrossSView*>("VCross");
        QCOMPARE(upward->points()[1], QPointF(experiment_.height - 1, map->valueAt(4, 1)));

        // Sections show the part of the map that is in view, and span its values.
        QVERIFY(body_->runAll({"move_position 11 5", "select_region 3 2 9 6", "zoom_in"}));
        QCOMPARE(QPointF(across->shownPositions().min, across->shownPositions().max),
                 QPointF(3, 9));
        QCOMPARE(QPointF(upward->shownPositions().min, upward->shownPositions().max),
                 QPointF(experiment_.height - 6, experiment_.height - 2));
        QVERIFY(upward->shownValues().max < 2);

        // Images come and go under it; such of another size take its place.
        for (const QString& line :
             {QString("clear_I1_files"), loadLine(experiment_.i1.mid(0, 2))}) {
            QVERIFY(body_->run(line));
            QCOMPARE(area_->shownMap(), map);
            QVERIFY(body_->findChild<QPushButton*>("ShowResAnalysis")->isChecked());
        }
        QVERIFY(area_->hasSelection() && area_->viewWindow() == QRectF(3, 2, 6, 4));
        const QString other = experiment_.write(
            "other.img", imgBytes(5, 4, "BytesPerPixel=2,", 2, [](int x, int) { return x; }));
        QVERIFY(body_->run(loadLine({other})));
        QVERIFY(!area_->shownMap() && !area_->hasSelection());
        QVERIFY(body_->findChild<QPushButton*>("ShowData")->isChecked());
        QCOMPARE(area_->viewWindow(), QRectF(0, 0, 5, 4));
        QCOMPARE(across->axis(), QString("mu t"));
    }

    void imagesAfterAMapOfAnotherSizeComeIntoViewWhole()
    {
        Analyzed2DRes map("map");
        map.prepare(AnalyzeCond(40, 30, 0, 0, QRectF(0, 0, 40, 30), -1, -1));
        map.genImg();
        area_->setAnalyzedRes(&map);
        area_->setShowOverLayer(true);
        area_->grab();
        QVERIFY(body_->run("select_region 1 1 3 3"));
        load();
        QCOMPARE(area_->viewWindow(), QRectF(0, 0, experiment_.width, experiment_.height));
        QCOMPARE(area_->selectedArea(), QRectF(1, 1, 2, 2)); // chosen for the images to come
    }

    void heldButtonLeavesTheCursorAsAWhole()
    {
        load();
        moveTo(2, 2);
        const auto state = [this] {
            return QStringList{text("Position"), text("Value"), text("DarkValue")};
        };
        const QStringList before = state();
        const QVector<QPointF> section = body_->findChild<CrossSView*>("HCross")->points();
        for (const auto keys : {Qt::NoModifier, Qt::ShiftModifier}) {
            QTest::mousePress(area_, Qt::LeftButton, keys, {20, 20});
            QMouseEvent move(QEvent::MouseMove, QPointF(60, 50), Qt::NoButton, Qt::LeftButton,
                             keys);
            QCoreApplication::sendEvent(area_, &move);
            QCOMPARE(state(), before);
            QCOMPARE(body_->findChild<CrossSView*>("HCross")->points(), section);
            QTest::mouseRelease(area_, Qt::LeftButton, keys, {60, 50});
        }
        moveTo(9, 5);
        QVERIFY(state() != before);
    }

    void darkAreaButtonsOfTheRowSetRenewAndClear()
    {
        load();
        auto* row = body_->findChild<SelectDataFiles*>("SelectI1Files");
        const auto press = [row](const char* caption) {
            for (QPushButton* button : row->findChildren<QPushButton*>()) {
                if (button->text() == caption)
                    button->click();
            }
        };
        const QString before = QLatin1String("(-,-)-(-,-)");
        const auto label = [row, before] {
            for (const QLabel* l : row->findChildren<QLabel*>()) {
                if (l->text().startsWith('(') && l->text().contains(")-("))
                    return l->text();
            }
            return QString();
        };
        QCOMPARE(label(), before);
        QVERIFY(body_->run("select_region 1 2 4 5"));
        press("Set Dark Area");
        QCOMPARE(label(), QString("(1,2)-(4,5)"));
        QVERIFY(body_->blockConditions(0, 0).i1DarkAreaOn);
        press("Up Date");
        QCOMPARE(body_->blockConditions(0, 0).i1DarkAvg.size(), experiment_.energies);
        press("CLR");
        QCOMPARE(label(), before);
        QVERIFY(!body_->blockConditions(0, 0).i1DarkAreaOn);
    }

    void barRebuildsTheShownImageAndOthersWhenTheyAreShown()
    {
        load();
        auto* bar = body_->findChild<ColorBar*>("CBar");
        body_->grab();
        const TiffStack images = body_->i1Stack();
        QCOMPARE(QPointF(bar->rangeMin, bar->rangeMax),
                 QPointF(images.last()->minVal, images.last()->maxVal));
        std::optional<ValueRange> range; // of all images; else each has its own
        const auto shows = [&](const SharedImage& image) {
            ImagePicture expected;
            expected.show(image, *bar, range ? *range : ValueRange{image->minVal, image->maxVal});
            return *area_->currentImage() == *expected.picture();
        };
        bar->lowHandle = 0.5;
        body_->cBarUpdating();
        QVERIFY(shows(images.last()));
        QVERIFY(body_->run("seek_image 31")); // that of the bump, not level
        QVERIFY(shows(images[31]) && !shows(images.last()));
        const double min = images[31]->minVal;
        const double max = images[31]->maxVal;
        bar->lowHandle = 0.25;
        click("CBarAll");
        range = ValueRange{min + (max - min) * 0.25, max};
        QVERIFY(!bar->handlesMoved());
        QVERIFY(shows(images[31]));
        QVERIFY(body_->run(QString("seek_image %1").arg(images.size() - 1)));
        QVERIFY(shows(images.last()));
    }

    void picturesOfImageMapsAndWindowsAreSaved()
    {
        load();
        const QTemporaryDir dir;
        const auto in = [&dir](const char* name) { return dir.filePath(name); };
        QVERIFY(body_->runAll({"save_image " + in("a.png"), "save_image_w_num " + in("b.png 07"),
                               "screenshot xafsview " + in("v.png")}));
        QVERIFY(QFile::exists(in("a-cBar.png")) && QFile::exists(in("b-07-cBar.png")));
        QCOMPARE(QImage(in("a.png")).convertToFormat(QImage::Format_Grayscale8),
                 area_->viewImage());
        QCOMPARE(QImage(in("v.png")).size(), view_->size());
        QVERIFY(body_->runAll({"analyzer_select_analysis_mode 0", "analyzer_exec_LCF",
                               "analyzer_select_image 1", "save_all_images " + in("m.png")}));
        for (const char* name : {"m-1-0.png", "m-1-1.png", "m-1-1-cBar.png"})
            QVERIFY(QFile::exists(in(name)));
        QVERIFY(!QFile::exists(in("m-0-0.png")));
        QVERIFY(body_->run("select_disp_image 3"));
        body_->selectedMap()->setData(3, 2, 0, 0, 0.12345678);
        QVERIFY(body_->run("move_position 3 2"));
        QCOMPARE(text("Value"), QString("0.123457"));

        const LogCapture log;
        QVERIFY(body_->runAll({"save_image /none/a.png", "save_image", "screenshot nothing x.png",
                               "screenshot Body /none/b.png"}));
        QCOMPARE(log.linesWith("/none/a.png"), 1);
        QCOMPARE(log.linesWith("/none/b.png"), 1);
        QCOMPARE(log.linesWith("No window nothing"), 1);
    }

    void flatAndDarkHaveTheImageSize()
    {
        load();
        const QTemporaryDir dir;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        click("SaveFlatDark");
        QVERIFY(QDir::setCurrent(before));
        for (const auto& [name, value] : {std::pair("flat.dat", 1.0), std::pair("dark.dat", 0.0)}) {
            TiffData image;
            QVERIFY(image.readFile(dir.filePath(name), ErrPoints()));
            QCOMPARE(QSize(image.width, image.height),
                     QSize(experiment_.width, experiment_.height));
            QCOMPARE(image.pixel(3, 3), value);
        }
    }

    void backgroundSpectrumHasAViewOfItsOwn()
    {
        auto* view = body_->findChild<XafsView*>("BGView");
        QCOMPARE(view->windowTitle(), QString("BG Specturm"));
        body_->selectedBG(experiment_.references[0]);
        QCOMPARE(view->spectrum().size(), experiment_.energies);
        click("ShowBG");
        QVERIFY(view->isVisibleTo(body_.get()));
    }

    void strangeImagesAreDrawnOrLeftBlank_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("energies");
        QTest::addColumn<double>("value");
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("one pixel, one image") << 1 << 1 << 7.0;
        QTest::newRow("equal values") << 5 << 3 << 7.0;
        QTest::newRow("zeros") << 5 << 3 << 0.0;
        QTest::newRow("nan") << 5 << 3 << inf - inf;
        QTest::newRow("infinite") << 5 << 3 << inf;
        QTest::newRow("negative") << 5 << 2 << -1e30;
        QTest::newRow("no image") << 5 << 0 << 1.0;
    }
    void strangeImagesAreDrawnOrLeftBlank()
    {
        QFETCH(int, width);
        QFETCH(int, energies);
        QFETCH(double, value);
        for (int i = 0; i < energies; ++i) {
            auto image = std::make_unique<TiffData>();
            QVERIFY(image->allocate(width, width, TiffData::Floats));
            for (int y = 0; y < width; ++y) {
                std::fill_n(image->row<float>(y), width, float(value));
                image->noteExtremes(y);
            }
            body_->loadedI1(image.release(), i);
        }
        view_->show();
        for (const char* line : {"set_band_w 0", "set_band_w 1000000", "set_band_h -3"}) {
            QVERIFY(body_->run(line));
            moveTo(0, 0);
            body_->grab();
            view_->grab();
        }
        // A zoom without end, either way, and a bar without a range.
        for (int i = 0; i < 400; ++i)
            wheel(120);
        body_->grab();
        for (int i = 0; i < 8000; ++i)
            wheel(-120);
        body_->grab();
        auto* bar = body_->findChild<ColorBar*>("CBar");
        bar->highHandle = bar->lowHandle;
        body_->cBarUpdated();
        QCOMPARE(body_->i1Stack().size(), energies);
        QVERIFY(!body_->grab().isNull());
    }

private:
    void load()
    {
        QVERIFY(body_->load(experiment_));
        body_->grab(); // the image area learns its coordinates when it paints
    }
    /// Of the labels round the image; the views of spectra have some of the same names.
    QString text(const char* label) const
    {
        return body_->findChild<ImageBox*>()->findChild<QLabel*>(label)->text();
    }
    void click(const char* button) { body_->findChild<QPushButton*>(button)->click(); }

    /// The mouse over the middle of an image pixel.
    void moveTo(int x, int y)
    {
        const QRectF& seen = area_->viewWindow();
        const QPointF at((x + 0.5 - seen.x()) / seen.width() * area_->width(),
                         (y + 0.5 - seen.y()) / seen.height() * area_->height());
        QMouseEvent move(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(area_, &move);
    }
    void wheel(int delta)
    {
        const QPointF middle = area_->rect().center();
        QWheelEvent turn(middle, middle, {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                         false);
        QCoreApplication::sendEvent(area_, &turn);
    }
    static QString loadLine(const QStringList& files)
    {
        return "load_I1_files new " + files.join(' ');
    }
    static bool hasInk(QWidget& widget)
    {
        const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        int black = 0;
        for (int y = 0; y < image.height(); ++y)
            black += int(std::count(image.constScanLine(y), image.constScanLine(y) + image.width(),
                                    uchar(0)));
        return 2 * black > qMin(image.width(), image.height());
    }

    const SmallExperiment experiment_;
    std::unique_ptr<DrivenBody> body_;
    ImgDispA* area_ = nullptr;
    XafsView* view_ = nullptr;
};

QTEST_MAIN(TestViewer)
#include "test_viewer.moc"
