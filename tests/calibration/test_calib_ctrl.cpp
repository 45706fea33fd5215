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
        panel.setInnerRange(12.5, 0.5, 0.05);
        const CalibConditions c = panel.conditions(elm);
        QVERIFY(c.method == CalibMethod::InnerProduct && c.backgroundMode == VictLine::Victoreen);
        QCOMPARE((QVector<double>{c.range, c.step, c.minStep, c.sElm.edgeE}),
                 (QVector<double>{12.5, 0.5, 0.05, 123.0}));
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
        const QString shown = text(panel, "EdgeEeV");
        QCOMPARE(shown, QString::number(expected.midx, 'g', 6));
        panel.setStdBackground(0); // changes the standard, not what was shown or told
        expected.normalize(VictLine::Victoreen);
        QVERIFY(panel.standard().midx == expected.midx && panel.standard().mode == 0);
        QVERIFY(text(panel, "EdgeEeV") == shown && loaded.count() == 1);
        panel.loadStd(std_);
        QVERIFY(panel.standard().midx == expected.midx && loaded.count() == 2);
        panel.setEdgeEV("7112.5");
        QCOMPARE(panel.edgeEV(), 7112.5);
    }

    void aFileWithoutASpectrumEmptiesTheRow()
    {
        CalibCtrl panel;
        panel.loadStd(std_);
        const QSignalSpy loaded(&panel, &CalibCtrl::newStdFileLoaded);
        const QSignalSpy cleared(panel.findChild<XafsFileSelect*>(), &XafsFileSelect::cleared);
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
        const QSignalSpy normalise(&panel, &CalibCtrl::normalizeEShift);
        const QSignalSpy load(&panel, &CalibCtrl::loadEMap);
        const QSignalSpy save(&panel, &CalibCtrl::saveEMap);
        for (const char* name : {"ExecCalib", "ClearMap", "NES", "LoadMap", "SaveMap"})
            QTest::mouseClick(button(panel, name), Qt::LeftButton);
        QCOMPARE((QVector<int>{exec.count(), clear.count(), normalise.count()}),
                 (QVector<int>{1, 1, 1}));
        const auto dialogs = panel.findChildren<EShiftMapDialog*>();
        QVERIFY(dialogs.size() == 2 && dialogs[0]->isVisible() && dialogs[1]->isVisible());
        for (EShiftMapDialog* dialog : dialogs)
            Q_EMIT dialog->fileSelected("a.emp");
        QCOMPARE(panel.dialogs().size(), 3);
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
        s.mean = 0.5;
        s.sigma = 2.0;
        panel.showStatistics(s);
        panel.showImageGeometry({640, 480}, {-3, 8});
        panel.showMapFile("/d/map.emp");
        QCOMPARE((QStringList{text(panel, "DEMin"), text(panel, "DEMax"), text(panel, "DEAvr"),
                              text(panel, "DESigma"), text(panel, "Width"), text(panel, "Height"),
                              text(panel, "EMPFileName")}),
                 (QStringList{"-1.23457", "1e-07", "0.5", "2", "640", "480", "/d/map.emp"}));
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
