#include "output/SaveDataCfg.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QtTest>

class TestSaveDataCfg : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsWithItsDefaults();
    void enablesTheSettingsOfTheChosenForm();
    void slotsSetWhatAMouseWouldSet();
    void separatorAndLayoutAreIndependent();
};

namespace {

bool enabled(const SaveDataCfg& cfg, const char* name)
{
    return cfg.findChild<QWidget*>(QLatin1String(name))->isEnabledTo(&cfg);
}

} // namespace

void TestSaveDataCfg::startsWithItsDefaults()
{
    const SaveDataCfg cfg;
    const TiffSaveOptions options = cfg.tiffOptions();
    QCOMPARE(cfg.windowTitle(), QStringLiteral("Save Data Configuration"));
    QVERIFY(!options.fixedScale && !options.asAnalyzed);
    QCOMPARE(options.scaleMin, 0.0);
    QCOMPARE(options.scaleMax, 10.0);
}

void TestSaveDataCfg::enablesTheSettingsOfTheChosenForm()
{
    SaveDataCfg cfg;
    cfg.setSaveAsText();
    QVERIFY(!cfg.savesAsTiff());
    QVERIFY(enabled(cfg, "TextCfg") && !enabled(cfg, "TiffCfg"));
    cfg.findChild<QAbstractButton*>(QStringLiteral("SaveAsTiff"))->click();
    QVERIFY(cfg.savesAsTiff());
    QVERIFY(!enabled(cfg, "TextCfg") && enabled(cfg, "TiffCfg"));
    cfg.setSaveAsText();
    cfg.setSaveAsTiff();
    QVERIFY(cfg.savesAsTiff());
}

void TestSaveDataCfg::slotsSetWhatAMouseWouldSet()
{
    SaveDataCfg cfg;
    cfg.setSaveTiffScaleFixed(true);
    cfg.setSaveTiffScaleMin(-0.123456789);
    cfg.setSaveTiffScaleMax(1e7);
    cfg.setSaveTiffAsAnalyzed(true);
    QCOMPARE(cfg.findChild<QLineEdit*>(QStringLiteral("TiffScaleMin"))->text(),
             QStringLiteral("-0.123457"));
    const TiffSaveOptions options = cfg.tiffOptions();
    QVERIFY(options.fixedScale && options.asAnalyzed);
    QCOMPARE(options.scaleMin, -0.123457);
    QCOMPARE(options.scaleMax, 1e7);
    cfg.findChild<QLineEdit*>(QStringLiteral("TiffScaleMax"))->setText(QStringLiteral("wrong"));
    QCOMPARE(cfg.tiffOptions().scaleMax, 0.0);
}

void TestSaveDataCfg::separatorAndLayoutAreIndependent()
{
    SaveDataCfg cfg;
    cfg.setSaveTextAsSSV();
    cfg.setSaveTextAsXYVal();
    QVERIFY(!cfg.textOptions().commaSeparated && cfg.textOptions().asXYVal);
    cfg.setSaveTextAsCSV();
    cfg.setSaveTextAsValValVal();
    QVERIFY(cfg.textOptions().commaSeparated && !cfg.textOptions().asXYVal);
}

QTEST_MAIN(TestSaveDataCfg)
#include "test_save_data_cfg.moc"
