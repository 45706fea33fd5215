#include "display/WheelGuard.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"
#include "support/ClippedTexts.h"
#include "support/TabWalk.h"

#include <QCheckBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyleFactory>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>

/// The forms of the narrow docks: room, order, and what they tell of fields that can't be read.
class TestNarrowForms : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStyleFactory::create("fusion")); }

    void formsFitADockAndTabReadsThem_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("common font") << 1.0;
        QTest::newRow("large font") << 1.25;
    }

    void formsFitADockAndTabReadsThem()
    {
        QFETCH(double, scale);
        QFont font = QApplication::font();
        font.setPointSizeF(9 * scale);
        QApplication::setFont(font);
        DataBox data;
        for (SelectDataFiles* row : {data.i1Row(), data.i0Row()}) {
            row->setEngCalcStart(8948.125);
            for (int i = 0; i < 3; ++i)
                row->addFile(QString(200, 'd') + "/i1.tif", i);
            row->setMark("!");
            row->setExposure(10000, false);
            for (const char* fold : {"Setup", "AddSetup"})
                row->findChild<QAbstractButton*>(fold)->click();
        }
        SpectrumBox spectrum;
        QWidget save;
        auto* layout = new QVBoxLayout(&save);
        auto* box = new SaveBox;
        layout->addWidget(box);
        layout->addWidget(new SaveDataCfg);
        box->setReasons("", "No maps yet: make them in step 4, or load what was saved before");
        for (QWidget* form : std::initializer_list<QWidget*>{&data, &spectrum, &save}) {
            form->resize(372, form->heightForWidth(372));
            form->show();
            QVERIFY(QTest::qWaitForWindowExposed(form));
            QCOMPARE(form->width(), 372);
            QCOMPARE(clippedTexts(form).join("; "), QString());
            QCOMPARE(tabsBackwards(*form).join("; "), QString());
        }
    }

    void fieldsThatCannotBeReadAreTold()
    {
        DataBox data;
        SpectrumBox spectrum;
        SaveDataCfg config;
        const QSignalSpy told(&data, &DataBox::fieldsChanged);
        const auto type = [](QWidget* form, const char* name, const char* text) {
            form->findChild<QLineEdit*>(name)->setText(text);
        };
        type(data.i1Row(), "Skip", "abc");
        type(data.i0Row(), "CutFirst", "1.5"); // whole numbers are read there
        type(data.i0Row(), "Start", "8 948");
        type(&data, "DarkExpTime", "ms");
        QCOMPARE(data.unreadable(),
                 (QStringList{"I1 Skip", "I0 Cut F.", "I0 Start", "Dark Data Exp."}));
        QCOMPARE(data.i1Row()->skip() + data.i0Row()->cutFirst(), 0);
        QCOMPARE(told.size(), 4);
        data.i1Row()->setSkip(2);
        QCOMPARE(told.size(), 5);
        data.i1Row()->setExposure(5, false);
        const auto* exposure = data.i1Row()->findChild<QLineEdit*>("Exposure");
        const QString differs = exposure->styleSheet();
        type(data.i1Row(), "Exposure", "5 ms");
        QVERIFY(exposure->styleSheet() != differs);
        type(data.i1Row(), "Exposure", "5");
        QVERIFY(exposure->styleSheet() == differs && differs.contains("color: black"));
        type(&spectrum, "HWidth", "2.5");
        type(&spectrum, "DPreE", "-");
        QCOMPARE(spectrum.unreadable(), (QStringList{"xw", "dPreE"}));
        type(&config, "TiffScaleMax", "1,5");
        QCOMPARE(config.unreadable(), QStringList{"Scale Max"});
    }

    void wheelScrollsPastWhatHasNoFocus()
    {
        QScrollArea area;
        auto* panel = new QWidget;
        auto* layout = new QVBoxLayout(panel);
        auto* number = new QSpinBox;
        auto* other = new QSpinBox;
        layout->addWidget(number);
        layout->addWidget(other);
        layout->addSpacing(1000);
        guardWheel(panel);
        area.setWidget(panel);
        area.show();
        area.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&area));
        const auto turn = [&] {
            QWheelEvent event(QPointF(5, 5), number->mapToGlobal(QPoint(5, 5)), {}, {0, -120},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&event);
            qApp->notify(number, &event);
        };
        number->setValue(10);
        other->setFocus();
        turn();
        QCOMPARE(number->value(), 10);
        QVERIFY(area.verticalScrollBar()->value() > 0);
        number->setFocus();
        turn();
        QCOMPARE(number->value(), 9);
    }

    void savingTellsWhyItCannot()
    {
        SaveBox box;
        auto* data = box.findChild<QWidget*>("SaveData");
        auto* line = box.findChild<QLabel*>("SaveReason");
        const QString tip = data->toolTip();
        box.setReasons("no images", "no maps");
        QVERIFY(!data->isEnabled() && data->toolTip() == "no maps");
        QCOMPARE(line->text(), QString("no images\nno maps"));
        QVERIFY(box.findChild<QWidget*>("SaveDataConfig")->isEnabled());
        box.setReasons("", "");
        QVERIFY(data->isEnabled() && data->toolTip() == tip && line->isHidden());
    }
};

QTEST_MAIN(TestNarrowForms)
#include "test_narrow_forms.moc"
