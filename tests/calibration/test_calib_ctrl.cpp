#include "calibration/CalibCtrl.h"
#include "display/FileDialogs.h"
#include "display/XafsFileSelect.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

/// The calibration panel with its standard.
class TestCalibCtrl : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QByteArray bytes;
        for (int i = 0; i < 200; ++i) {
            const double E = 8900.0 + i;
            const double mu = std::pow(8985.0 / E, 3) + 0.5 + std::atan((E - 8985) / 2) / M_PI;
            bytes += QByteArray::number(E) + " " + QByteArray::number(mu, 'g', 12) + "\n";
        }
        QVERIFY(writeBytes(std_, bytes));
    }

    void startsWithTheMidPoint()
    {
        CalibCtrl panel;
        const CalibConditions c = panel.conditions({});
        QVERIFY(c.method == CalibMethod::MidPoint && c.backgroundMode == VictLine::Straight);
        QCOMPARE((QVector<double>{c.range, c.step, c.minStep}), (QVector<double>{20.0, 1.0, 0.1}));
        for (const char* name : {"CalibTypeDMidX", "TargetBGSimple", "StdBGSimple"})
            QVERIFY(button(panel, name)->isChecked());
        QVERIFY(panel.checksSize() && panel.standard().isEmpty() && panel.edgeEV() == 0.0);
        QCOMPARE(panel.crystalName(), QString("Si(111)"));
        const double spacings[] = {3.1355316, 1.637478, 1.0451772, 3.2663822, 1.0887941};
        for (int i = 0; i < 5; ++i) {
            panel.setCrystal(i);
            QCOMPARE(panel.crystalSpacing(), spacings[i]);
        }
        panel.setCrystal(5);
        panel.setCrystal(-1);
        QCOMPARE(panel.crystalName(), QString("Ge(333)"));
    }

    void choicesAreIndependent()
    {
        CalibCtrl panel;
        SuggestElm elm;
        elm.edgeE = 123.0;
        panel.setType(1);
        panel.setTargetBackground(0);
        panel.setInnerRange(12.3456789, 0.5, 0.05);
        const CalibConditions c = panel.conditions(elm);
        QVERIFY(c.method == CalibMethod::InnerProduct && c.backgroundMode == VictLine::Victoreen);
        QCOMPARE((QVector<double>{c.range, c.step, c.minStep, c.sElm.edgeE}),
                 (QVector<double>{12.3456789, 0.5, 0.05, 123.0}));
        QVERIFY(button(panel, "StdBGSimple")->isChecked());
        button(panel, "StdBGVictreen")->click();
        QVERIFY(panel.targetBackgroundMode() == 0 &&
                panel.findChild<QFrame*>("InnerPCtrl")->isEnabled());
        panel.setType(2);
        QVERIFY(panel.conditions(elm).method == CalibMethod::MidPoint);
        QVERIFY(!panel.findChild<QFrame*>("InnerPCtrl")->isEnabled());
    }

    void readsItsStandard()
    {
        CalibCtrl panel;
        const QSignalSpy loaded(&panel, &CalibCtrl::newStdFileLoaded);
        panel.loadStd(std_);
        XafsSpectrum expected;
        QVERIFY(expected.load(std_));
        expected.normalize(VictLine::Straight);
        QCOMPARE(loaded.count(), 1);
        QVERIFY(panel.standard().midx == expected.midx && panel.stdFileName() == std_);
        QCOMPARE(text(panel, "EdgeEeV"), QString::number(expected.midx, 'g', 6));
    }

    void aStandardNormalizedAnewIsTold()
    {
        CalibCtrl panel;
        const QSignalSpy changed(&panel, &CalibCtrl::standardChanged);
        panel.setStdBackground(0); // of no standard yet
        panel.setStdBackground(1);
        panel.loadStd(std_);
        SuggestElm elm;
        elm.use = true;
        elm.edgeE = 8985;
        panel.setSuggestion(elm); // without "Use hint" not the standard's
        QCOMPARE(changed.count(), 0);
        const double whole = panel.standard().midx;
        panel.setUseHint(true);
        panel.setSuggestion(elm);
        QVERIFY(changed.count() == 1 && panel.standard().midx != whole);
        const auto edge = [&panel] { return QString::number(panel.standard().midx, 'g', 6); };
        QVERIFY(edge() != QString::number(whole, 'g', 6));
        QCOMPARE(text(panel, "EdgeEeV"), edge());
        panel.setEdgeEV("7112.5"); // typed in: stays
        panel.setStdBackground(0);
        QVERIFY(changed.count() == 2 && panel.standard().mode == 0 && panel.edgeEV() == 7112.5);
        XafsSpectrum expected(panel.standard(), "", VictLine::Victoreen, 0.0,
                              panel.standard().sElm);
        QCOMPARE(panel.standard().midx, expected.midx);
        auto* const row = panel.findChild<XafsFileSelect*>();
        elm.edgeE = 7112;
        panel.setSuggestion(elm);
        QVERIFY(row->mark().contains("suggested edge is at 7112.0 eV"));
        row->clear();
        QVERIFY(changed.count() == 4 && row->mark().isEmpty());
    }

    void aFileWithoutASpectrumEmptiesTheRow()
    {
        CalibCtrl panel;
        panel.loadStd(std_);
        const QSignalSpy loaded(&panel, &CalibCtrl::newStdFileLoaded);
        const QSignalSpy cleared(&panel, &CalibCtrl::standardChanged);
        const LogCapture log;
        panel.loadStd(dir_.filePath("none.dat"));
        QVERIFY(panel.standard().isEmpty() && panel.standard().midx == 0.0);
        QVERIFY(panel.stdFileName().isEmpty() && cleared.count() == 1 && loaded.isEmpty());
        QCOMPARE(log.linesWith("Can't read standard file"), 1);
        panel.stdBGToggled(true);
        QVERIFY(panel.standard().isEmpty());
    }

    void buttonsTell()
    {
        CalibCtrl panel;
        const QSignalSpy exec(&panel, &CalibCtrl::execCalibration);
        const QSignalSpy clear(&panel, &CalibCtrl::clearMap);
        const QSignalSpy former(&panel, &CalibCtrl::formerMap);
        const QSignalSpy normalise(&panel, &CalibCtrl::normalizeEShift);
        const QSignalSpy load(&panel, &CalibCtrl::loadEMap);
        const QSignalSpy save(&panel, &CalibCtrl::saveEMap);
        panel.setFormerMap(true);
        panel.setMapReasons({}, {});
        for (const char* name : {"ExecCalib", "ClearMap", "FormerMap", "NES", "LoadMap", "SaveMap"})
            QTest::mouseClick(button(panel, name), Qt::LeftButton);
        QCOMPARE((QVector<int>{exec.count(), clear.count(), former.count(), normalise.count()}),
                 (QVector<int>{1, 1, 1, 1}));
        const auto dialogs = panel.findChildren<EShiftMapDialog*>();
        QVERIFY(dialogs.size() == 2 && dialogs[0]->isVisible() && dialogs[1]->isVisible());
        for (EShiftMapDialog* dialog : dialogs)
            Q_EMIT dialog->fileSelected("a.emp");
        panel.loadEShiftMap("b.emp");
        QVERIFY(load.count() == 2 && load.last() == QVariantList{"b.emp"});
        QCOMPARE(save.value(0), QVariantList{"a.emp"});
    }

    void showsARun()
    {
        CalibCtrl panel;
        panel.setRunning(true);
        const QString stop = button(panel, "ExecCalib")->toolTip();
        QCOMPARE(button(panel, "ExecCalib")->text(), QString("Stop Calib."));
        panel.setRunning(false);
        QCOMPARE(button(panel, "ExecCalib")->text(), QString("Exec Calib."));
        QVERIFY(button(panel, "ExecCalib")->toolTip() != stop);
        panel.progress(7.26);
        QCOMPARE(panel.findChild<QLabel*>("Progress")->text(), QString("  7.3"));
        panel.progress(100.0);
        QCOMPARE(panel.findChild<QLabel*>("Progress")->text(), QString("100.0"));
        CalibStatistics s;
        s.min = -1.23456789;
        s.max = 1e-7;
        s.mean = -1.234567e-5;
        s.sigma = 2.0;
        s.mad = 0.125;
        panel.showStatistics(s, ShiftMap::MedianAndSpread{0.25, 0.185});
        panel.showImageGeometry({640, 480}, {-3, 8});
        panel.showMapFile("/d/map.emp");
        QCOMPARE(
            (QStringList{text(panel, "DEMin"), text(panel, "DEMax"), text(panel, "DEAvr"),
                         text(panel, "DESigma"), text(panel, "DEMedian"), text(panel, "DEMad"),
                         text(panel, "Width"), text(panel, "Height"), text(panel, "EMPFileName")}),
            (QStringList{"-1.23457", "1e-07", "-1.23e-05", "2", "0.25", "0.125", "640", "480",
                         "/d/map.emp"}));
        const auto* mean = panel.findChild<QLineEdit*>("DEAvr");
        panel.showStatistics({}, {});
        QVERIFY(mean->text().isEmpty() && text(panel, "DEMad").isEmpty());
        QCOMPARE(text(panel, "XOffset") + ' ' + text(panel, "YOffset"), QString("-3 8"));
    }

private:
    static QAbstractButton* button(const QWidget& panel, const char* name)
    {
        return panel.findChild<QAbstractButton*>(name);
    }
    static QString text(const QWidget& panel, const char* name)
    {
        return panel.findChild<QLineEdit*>(name)->text();
    }

    QTemporaryDir dir_;
    const QString std_ = dir_.filePath("std.dat");
};

QTEST_MAIN(TestCalibCtrl)
#include "test_calib_ctrl.moc"
