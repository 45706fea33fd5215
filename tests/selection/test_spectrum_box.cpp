#include "common/Fault.h"
#include "selection/SpectrumBox.h"
#include "spectrum/ElementTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

/// The settings of the spectrum as whoever hears of a change finds them.
class TestSpectrumBox : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void settingsAreWholeWhenAChangeIsTold()
    {
        SpectrumBox box;
        bool heldGap = box.settings().holdGap;
        QVector<SpectrumSettings> told;
        connect(&box, &SpectrumBox::holdGapChanged, this, [&](bool f) { heldGap = f; });
        connect(&box, &SpectrumBox::changed, this, [&] {
            told.append(box.settings());
            QCOMPARE(told.last().holdGap, heldGap);
        });
        QCOMPARE(box.settings().elm.edgeE, edgeEnergy(29, 0));
        box.findChild<QComboBox*>("SuggestingEdge")->setCurrentIndex(3);
        auto* element = box.findChild<QLineEdit*>("SuggestingElm");
        element->setText("Pb");
        QTest::keyClick(element, Qt::Key_Return);
        box.findChild<QCheckBox*>("HoldGap")->toggle();
        QCOMPARE(told.size(), 3);
        QCOMPARE(told[0].elm.edgeE, edgeEnergy(29, 3));
        QVERIFY(told[1].elm.z == 82 && told[1].elm.edgeE == edgeEnergy(82, 3));
        QVERIFY(told[1].holdGap && !told[2].holdGap);
    }

    void anOverruledEnergyStaysUntilElementOrEdgeIsSet()
    {
        SpectrumBox box;
        box.setEdgeEnergy("9000.5");
        const FaultCollector faults;
        box.setElement("Xx");
        QCOMPARE(faults.faults(), QStringList("Unknown element \"Xx\""));
        QVERIFY(!box.setEdge(-1) && !box.setEdge(4));
        QCOMPARE(box.settings().elm.edgeE, 9000.5);
        box.setElement("Cu");
        QCOMPARE(box.settings().elm.edgeE, edgeEnergy(29, 0));
        box.setEdgeEnergy("9000.5");
        QVERIFY(box.setEdge(0)); // the edge that it is already
        QCOMPARE(box.settings().elm.edgeE, edgeEnergy(29, 0));
    }
};

QTEST_MAIN(TestSpectrumBox)
#include "test_spectrum_box.moc"
