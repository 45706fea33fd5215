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
            names.append(book.find(key)->name + '/' + mapLabel(key) + '/' + fullMapLabel(key));
        QCOMPARE(names, (QStringList{"LCF Ref 1/0/0-0", "LCF Ref 2/0/0-1", "LCF Ref 1/1/1-0",
                                     "LCF Ref 2/1/1-1", "a2d Zansa/Zansa/Zansa",
                                     "a2d dEdge/dEdge/dEdge"}));
        QCOMPARE(fullMapLabel({MapKind::ShiftMap}), book.find({MapKind::ShiftMap})->name);
        QCOMPARE(resultKinds(), (QVector<MapKind>{MapKind::LcfJump, MapKind::LcfWeight,
                                                  MapKind::Zansa, MapKind::DEdge}));
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
            book.begin(key, walk, {"fits", {"a.dat"}, {}, {}});
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

    void theButtonsChooseAMap_data()
    {
        QTest::addColumn<MapChoice>("choice");
        QTest::addColumn<QString>("label");
        QTest::newRow("nothing") << MapChoice{-1, 2, false, 0} << "";
        QTest::newRow("jump of a row") << MapChoice{1, 2, false, 0} << "1-0";
        QTest::newRow("weight of a row") << MapChoice{0, 2, false, 1} << "0-1";
        QTest::newRow("no such kind") << MapChoice{1, 2, false, 2} << "1-0";
        QTest::newRow("kind below 0") << MapChoice{1, 2, false, -1} << "1-0";
        QTest::newRow("residual") << MapChoice{7, 2, true, 1} << "Zansa";
        QTest::newRow("residual before a row") << MapChoice{1, 2, true, 1} << "Zansa";
        QTest::newRow("id of a fixed button alone") << MapChoice{7, 2, false, 0} << "";
        QTest::newRow("row with that id") << MapChoice{7, 8, false, 1} << "7-1";
        QTest::newRow("row without a map") << MapChoice{5, 8, false, 0} << "";
    }
    void theButtonsChooseAMap()
    {
        QFETCH(MapChoice, choice);
        MapBook book;
        fillShelf(book);
        book.at({MapKind::LcfWeight, 7});
        const std::optional<MapKey> key = chosenMap(choice, book);
        QTEST(key ? fullMapLabel(*key) : QString(""), "label");
    }
};

QTEST_GUILESS_MAIN(TestMapBook)
#include "test_map_book.moc"
