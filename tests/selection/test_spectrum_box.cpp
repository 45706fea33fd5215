#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "batch/CommandTable.h"
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
        CommandBook book;
        box.bindCommands(book);
        const auto run = [&](const QString& line) {
            const CmdLine cmd(line);
            book.run(exCmdId(cmd), cmd, {}).done();
            return box.settings().elm.edgeE;
        };
        QCOMPARE(run("Suggesting_Edge_eV 9000.5"), 9000.5);
        const FaultCollector faults;
        for (const char* line : {"Suggesting_Elm Xx", "Suggesting_Edge -1", "Suggesting_Edge 4"})
            QCOMPARE(run(line), 9000.5);
        QCOMPARE(faults.faults(), (QStringList{"Unknown element \"Xx\"",
                                               "No edge has the number -1: Suggesting_Edge -1",
                                               "No edge has the number 4: Suggesting_Edge 4"}));
        for (const char* line : {"Suggesting_Elm Cu", "Suggesting_Edge 0", "Suggest_Elm 0"}) {
            run("Suggesting_Edge_eV 9000.5");
            QCOMPARE(run(line), edgeEnergy(29, 0)); // also of what it is already
        }
    }
};

QTEST_MAIN(TestSpectrumBox)
#include "test_spectrum_box.moc"
