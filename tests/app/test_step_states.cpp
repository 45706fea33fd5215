#include "app/StepStates.h"

#include <QtTest>

namespace {

using Change = void (*)(StepFacts& facts);

/// Two stacks of one scan, nothing else.
StepFacts loaded()
{
    StepFacts f;
    f.i1 = {81, {200, 200}, 8948.0, 9028.0, {}, true, 0};
    f.i0 = f.i1;
    f.usesI0 = true;
    f.block = {5, 5};
    f.hasSpectrum = true;
    f.edge = 8982.21;
    return f;
}

struct Row
{
    const char* name;
    Step step;
    Change change; ///< of loaded()
    Mark mark;
    const char* line;
    Mend mend = Mend::None;
};

void nothing(StepFacts& f)
{
    f = StepFacts();
    f.block = {21, 21};
}

const Row table[] = {
    {"empty", Step::Data, nothing, Mark::ToDo, "no images"},
    {"loaded", Step::Data, [](StepFacts&) {}, Mark::Done, "81 + 81, 8948 - 9028 eV"},
    {"without I0", Step::Data, [](StepFacts& f) { f.i0 = {}; }, Mark::Done, "81, 8948 - 9028 eV"},
    {"I0 alone", Step::Data, [](StepFacts& f) { f.i1 = {}; }, Mark::ToDo, "81 I0 images, no I1"},
    {"loading goes first", Step::Data,
     [](StepFacts& f) {
         f.load = RunFacts{0.25, {}};
         f.i1.energyDoubt = "odd";
     },
     Mark::Running, "running, 25 %"},
    {"sizes go before energies", Step::Data,
     [](StepFacts& f) {
         f.i0.size = {800, 800};
         f.i1.energyDoubt = "odd";
     },
     Mark::Blocked, "sizes differ"},
    {"energies", Step::Data, [](StepFacts& f) { f.i0.energyDoubt = "odd"; }, Mark::LookHere,
     "energies not set", Mend::SetEnergies},
    {"failed files", Step::Data, [](StepFacts& f) { f.i1.failedFiles = 2; }, Mark::LookHere,
     "files failed: 2"},
    {"I0 not used", Step::Data, [](StepFacts& f) { f.usesI0 = false; }, Mark::LookHere,
     "I0 not used", Mend::UseI0},
    {"I0 replaced", Step::Data,
     [](StepFacts& f) {
         f.usesI0 = false;
         f.i0Replaced = true;
     },
     Mark::Done, "81 + 81, 8948 - 9028 eV"},
    {"counts", Step::Data, [](StepFacts& f) { f.i0.images = 80; }, Mark::LookHere,
     "81 + 80 images"},
    {"exposures", Step::Data, [](StepFacts& f) { f.i1.evenExposure = false; }, Mark::LookHere,
     "exposures differ"},
    {"field", Step::Data,
     [](StepFacts& f) {
         f.unreadable[0] = QStringList{"I1 Skip", "I0 Skip"};
     },
     Mark::LookHere, "I1 Skip is no number"},

    {"no spectrum", Step::Spectrum, nothing, Mark::ToDo, "block 21 x 21"},
    {"edge", Step::Spectrum, [](StepFacts&) {}, Mark::Done, "block 5 x 5, edge 8982.2 eV"},
    {"no edge is no alarm", Step::Spectrum, [](StepFacts& f) { f.edge.reset(); }, Mark::Optional,
     "block 5 x 5, no edge here"},
    {"no tick before the first step's", Step::Spectrum, [](StepFacts& f) { f.usesI0 = false; },
     Mark::ToDo, "block 5 x 5, edge 8982.2 eV"},

    {"no map", Step::Calibration, nothing, Mark::Optional, "optional: no map"},
    {"standard", Step::Calibration, [](StepFacts& f) { f.hasStandard = true; }, Mark::Optional,
     "optional: standard loaded"},
    {"calibrating", Step::Calibration,
     [](StepFacts& f) {
         f.shiftMap = MapFacts::InPart;
         f.calibration = RunFacts{0.5, 17};
     },
     Mark::Running, "17 s left"},
    {"stopped calibration", Step::Calibration, [](StepFacts& f) { f.shiftMap = MapFacts::InPart; },
     Mark::LookHere, "stopped: map in part"},
    {"calibrated", Step::Calibration,
     [](StepFacts& f) {
         f.shiftMap = MapFacts::Whole;
         f.shiftMedian = 0.094;
         f.shiftSpread = 0.386;
     },
     Mark::Done, "median 0.09, spread 0.39 eV"},
    {"other standard", Step::Calibration,
     [](StepFacts& f) {
         f.shiftMap = MapFacts::Whole;
         f.standardChanged = true;
     },
     Mark::LookHere, "standard changed since"},

    {"no references", Step::Analysis, [](StepFacts&) {}, Mark::ToDo, "no references",
     Mend::LoadReferences},
    {"ready", Step::Analysis, [](StepFacts& f) { f.references = 3; }, Mark::ToDo,
     "3 references, ready", Mend::Analyze},
    {"not ready", Step::Analysis,
     [](StepFacts& f) {
         f.references = 3;
         f.notReady = "why";
     },
     Mark::ToDo, "3 references"},
    {"another analysis needs none", Step::Analysis, [](StepFacts& f) { f.fits = false; },
     Mark::ToDo, "ready", Mend::Analyze},
    {"another analysis, not ready", Step::Analysis,
     [](StepFacts& f) {
         f.fits = false;
         f.notReady = "why";
     },
     Mark::ToDo, "not ready"},
    {"maps of another analysis", Step::Analysis,
     [](StepFacts& f) {
         f.fits = false;
         f.maps = MapFacts::Whole;
     },
     Mark::Done, "maps ready"},
    {"analysing", Step::Analysis,
     [](StepFacts& f) {
         f.analysis = RunFacts{0.5, 125};
     },
     Mark::Running, "2 min 05 s left"},
    {"stopped analysis", Step::Analysis, [](StepFacts& f) { f.maps = MapFacts::InPart; },
     Mark::LookHere, "stopped: map in part", Mend::Analyze},
    {"maps", Step::Analysis,
     [](StepFacts& f) {
         f.maps = MapFacts::Whole;
         f.mapReferences = 3;
     },
     Mark::Done, "maps of 3 references"},
    {"out of date", Step::Analysis,
     [](StepFacts& f) {
         f.maps = MapFacts::Whole;
         f.mapsOutOfDate = true;
     },
     Mark::LookHere, "map is out of date", Mend::Analyze},

    {"nothing to save", Step::Save, nothing, Mark::ToDo, "no maps yet"},
    {"not saved", Step::Save, [](StepFacts& f) { f.mapsToSave = 7; }, Mark::ToDo, "maps not saved",
     Mend::SaveData},
    {"some saved", Step::Save,
     [](StepFacts& f) {
         f.mapsToSave = 7;
         f.savedMaps = 1;
     },
     Mark::Done, "saved: 1 of 7 maps"},
    {"saved", Step::Save, [](StepFacts& f) { f.mapsToSave = f.savedMaps = 7; }, Mark::Done,
     "saved"},
    {"failed", Step::Save, [](StepFacts& f) { f.saveFault = "disk full"; }, Mark::LookHere,
     "writing failed"},
};

} // namespace

class TestStepStates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void factsMakeMarksAndSentences_data()
    {
        QTest::addColumn<int>("no");
        for (int i = 0; i < int(std::size(table)); ++i)
            QTest::newRow(table[i].name) << i;
    }

    void factsMakeMarksAndSentences()
    {
        QFETCH(const int, no);
        const Row& row = table[no];
        StepFacts facts = loaded();
        row.change(facts);
        const StepState state = stepStates(facts)[std::size_t(row.step)];
        QCOMPARE(state.line, QString(row.line));
        QCOMPARE(int(state.mark), int(row.mark));
        QCOMPARE(int(state.mend), int(row.mend));
        QVERIFY(!state.sentence.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStepStates)
#include "test_step_states.moc"
