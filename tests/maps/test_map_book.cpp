#include "maps/MapBook.h"
#include "maps/MapChoice.h"

#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(MapChoice)

namespace {
const AnalyzeCond walk(4, 3, 0, 0, QRectF(0, 0, 4, 3), -1, -1);

/// Two rows and the others, made in another order than that of saving.
void fillShelf(MapBook& book)
{
    for (const MapKind kind : {MapKind::DEdge, MapKind::ShiftMap, MapKind::Zansa})
        book.at({kind});
    for (const MapKind kind : {MapKind::LcfWeight, MapKind::LcfJump}) {
        book.at({kind, 1});
        book.at({kind, 0});
    }
}

bool hasScale(const MapBook& book, const MapKey& key, bool fixed, double min, double max)
{
    const Analyzed2DRes& map = *book.find(key);
    return map.fixedScale == fixed && map.fixedMin == min && map.fixedMax == max;
}
} // namespace

class TestMapBook : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theResultsHaveTheirNamesInTheOrderOfSaving()
    {
        MapBook book;
        fillShelf(book);
        QStringList names;
        for (const MapKey& key : book.resultKeys())
            names.append(book.find(key)->name + '/' + book.label(key) + '/' + book.fullLabel(key));
        QCOMPARE(names, (QStringList{"LCF Ref 1/0/0-0", "LCF Ref 2/0/0-1", "LCF Ref 1/1/1-0",
                                     "LCF Ref 2/1/1-1", "a2d Zansa/Zansa/Zansa",
                                     "a2d dEdge/dEdge/dEdge"}));
        QCOMPARE(book.fullLabel({MapKind::ShiftMap}), book.find({MapKind::ShiftMap})->name);
    }

    void aMapStaysWhereItIsUntilItsRowsAreDropped()
    {
        MapBook book;
        const MapKey first{MapKind::LcfJump, 0};
        QPointer<Analyzed2DRes> map(&book.at(first));
        fillShelf(book);
        for (int row = 2; row < 100; ++row)
            book.at({MapKind::LcfJump, row});
        QCOMPARE(&book.at(first), map.data());
        QVERIFY(book.keyOf(map) == first);
        QVERIFY(!book.keyOf(nullptr));

        // Whoever shows a map is told when it is gone from the book and not yet deleted.
        int told = 0;
        connect(&book, &MapBook::changed, this, [&](const MapKey& key) {
            QVERIFY(key.kind == MapKind::LcfJump && !book.find(key) && map);
            ++told;
        });
        book.dropRows(MapKind::LcfJump);
        QCOMPARE(told, 100);
        QVERIFY(map.isNull());
        QCOMPARE(book.resultKeys().size(), 4);
    }

    void aMapKnowsHowItCameToBe()
    {
        MapBook book;
        const QSignalSpy changes(&book, &MapBook::changed);
        const MapKey key{MapKind::Zansa};
        book.end(key, false, {});
        QVERIFY(!book.find(key) && book.isComplete(key) && changes.isEmpty());
        OutcomeCounts outcomes;
        outcomes.add(Outcome::Fitted);
        for (const bool whole : {false, true}) {
            book.begin(key, walk, {"fits", {"a.dat"}, {}, {}, {}});
            QVERIFY(book.stateOf(key) == MapState::Filling && !book.isComplete(key));
            QVERIFY(book.find(key)->data() && !book.find(key)->whyNotSaved(false).isEmpty());
            QCOMPARE(book.originOf(key).outcomes.total(), 0);
            book.end(key, whole, outcomes);
            book.end(key, !whole, {});
            QVERIFY(book.stateOf(key) == (whole ? MapState::Whole : MapState::Stopped));
            QCOMPARE(book.isComplete(key), whole);
            QCOMPARE(book.originOf(key).references, QStringList{"a.dat"});
            QCOMPARE(book.originOf(key).outcomes.total(), 1);
        }
        QCOMPARE(changes.size(), 4);
        QVERIFY(book.originOf({MapKind::DEdge}).analysis.isEmpty());
    }

    void mapsMadeBeforeAndAfterHaveTheScalesOfTheFields()
    {
        MapBook book;
        fillShelf(book);
        const QSignalSpy changes(&book, &MapBook::changed);
        QSignalSpy tellsScale(book.find({MapKind::Zansa}), &Analyzed2DRes::scaleChanged);
        book.setScales({true, {-1.0, 2.0}, {0.25, 0.75}});
        book.at({MapKind::LcfJump, 2});
        book.at({MapKind::LcfWeight, 2});
        QCOMPARE(changes.size(), 6);
        QCOMPARE(tellsScale.takeFirst(), (QVariantList{0.25, 0.75}));
        for (const int row : {0, 1, 2}) {
            QVERIFY(hasScale(book, {MapKind::LcfJump, row}, true, -1.0, 2.0));
            QVERIFY(hasScale(book, {MapKind::LcfWeight, row}, true, 0.25, 0.75));
            // Those that were there are painted, new ones are not.
            QCOMPARE(book.find({MapKind::LcfJump, row})->imgValid, row < 2);
        }
        QVERIFY(hasScale(book, {MapKind::DEdge}, true, 0.25, 0.75));
        QVERIFY(!book.find({MapKind::ShiftMap})->fixedScale);
        QVERIFY(!book.find({MapKind::ShiftMap})->imgValid);
    }

    /// Each button overrides those above it in the chain, as far as it has a map to show.
    void theButtonsChooseAMap_data()
    {
        QTest::addColumn<MapChoice>("choice");
        QTest::addColumn<QString>("label");
        const auto row = [](int id, int kind) {
            MapChoice choice;
            choice.row = id;
            choice.rows = 8;
            choice.kindIndex = kind;
            return choice;
        };
        const auto fixed = [](FixedImage image, int elementRow = -1) {
            MapChoice choice;
            choice.rows = 8;
            choice.fixed = image;
            choice.elements = elementRow >= 0;
            choice.elementRow = elementRow;
            choice.elementRows = 2;
            return choice;
        };
        const auto under = [](MapChoice choice, std::optional<MapKind> operand) {
            choice.arithmetic = true;
            choice.operand = operand;
            return choice;
        };
        QTest::newRow("nothing") << MapChoice() << "";
        QTest::newRow("jump of a row") << row(1, 0) << "1-0";
        QTest::newRow("weight of a row") << row(0, 1) << "0-1";
        QTest::newRow("no such kind") << row(1, 2) << "1-0";
        QTest::newRow("kind below 0") << row(1, -1) << "1-0";
        QTest::newRow("row without a map") << row(5, 0) << "";
        QTest::newRow("row behind the last") << row(9, 0) << "";
        QTest::newRow("residual of fits") << fixed(FixedImage::Zansa) << "Zansa";
        QTest::newRow("edge") << fixed(FixedImage::DEdge) << "dEdge";
        QTest::newRow("outcomes") << fixed(FixedImage::Outcomes) << "Outcomes";
        QTest::newRow("without a picture") << fixed(FixedImage::ResidualRest) << "";
        QTest::newRow("with a picture") << fixed(FixedImage::ResidualJump) << "DMut";
        QTest::newRow("no map of the kind") << fixed(FixedImage::ResidualRatio) << "";
        QTest::newRow("elements off") << fixed(FixedImage::ElemJump) << "";
        QTest::newRow("elements off, correlation") << fixed(FixedImage::ElemsCor) << "";
        QTest::newRow("an element") << fixed(FixedImage::ElemRoi, 1) << "Cu-K-ROI";
        QTest::newRow("its correlation") << fixed(FixedImage::ElemsCorTh, 1) << "ElemsCorTh";
        MapChoice noRows = fixed(FixedImage::ElemsCor, 0);
        noRows.elementRows = 0;
        QTest::newRow("no elements") << noRows << "";
        QTest::newRow("sum of images") << fixed(FixedImage::SumUp) << "SumUp";
        QTest::newRow("operand above all") << under(row(1, 0), MapKind::Operand2) << "Map2";
        QTest::newRow("result of arithmetic")
            << under(fixed(FixedImage::ElemRoi, 1), MapKind::Processed) << "Processed";
        QTest::newRow("arithmetic without a choice") << under(row(1, 0), {}) << "1-0";
        MapChoice off = under(row(1, 0), MapKind::Operand1);
        off.arithmetic = false;
        QTest::newRow("arithmetic off") << off << "1-0";
    }
    void theButtonsChooseAMap()
    {
        QFETCH(MapChoice, choice);
        MapBook book;
        fillShelf(book);
        book.setElementNames({"Fe-K", "Cu-K"});
        for (const MapKind kind : {MapKind::Outcomes, MapKind::ResidualJump, MapKind::ResidualRest,
                                   MapKind::ElemsCor, MapKind::ElemsCorTh, MapKind::SumUp,
                                   MapKind::Processed, MapKind::Operand1, MapKind::Operand2})
            book.at({kind});
        book.at({MapKind::ElemRoi, 1});
        book.at({MapKind::ElemJump, 1});
        book.begin({MapKind::ResidualJump}, walk, {});
        book.at({MapKind::ResidualJump}).genImg();
        const std::optional<MapKey> key = chosenMap(choice, book);
        QTEST(key ? book.fullLabel(*key) : QString(""), "label");
    }
};

QTEST_GUILESS_MAIN(TestMapBook)
#include "test_map_book.moc"
