// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "common/TextItems.h"

#include <QtTest>

class TestTextItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commentBeginsAtTheFirstHashOutsideQuotes_data();
    void commentBeginsAtTheFirstHashOutsideQuotes();
    void itemIsSplitOffTheLine_data();
    void itemIsSplitOffTheLine();
    void quoteFaultsAreLoggedWithTheLine();
    void prefixedLineGivesItsItems();
    void csvFieldIsSplitOffTheLine_data();
    void csvFieldIsSplitOffTheLine();
    void csvQuotingIsUndoneByReading();
    void quotingHelpersEscapeAndJoin();
    void thousandsAreGroupedBeforeThePoint_data();
    void thousandsAreGroupedBeforeThePoint();
    void textIsPaddedOnItsRight();
};

void TestTextItems::commentBeginsAtTheFirstHashOutsideQuotes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("comment");
    QTest::newRow("none") << "a b"
                          << "a b"
                          << "";
    QTest::newRow("plain") << "a # b # c"
                           << "a "
                           << " b # c";
    QTest::newRow("quoted hash stays") << "a \"b#c\" # d"
                                       << "a \"b#c\" "
                                       << " d";
    QTest::newRow("single quotes count") << "a 'b#c' #d"
                                         << "a 'b#c' "
                                         << "d";
    QTest::newRow("a lone apostrophe opens") << "it's # text"
                                             << "it's # text"
                                             << "";
    QTest::newRow("one state for both kinds") << "\"a' # b"
                                              << "\"a' "
                                              << " b";
}

void TestTextItems::commentBeginsAtTheFirstHashOutsideQuotes()
{
    QFETCH(QString, line);
    QString comment = QStringLiteral("old");
    QTEST(stripComment(line, comment), "text");
    QTEST(comment, "comment");
    QVERIFY(isBlank(QStringLiteral(" \t # only a comment")));
    QVERIFY(!isBlank(QStringLiteral("x # y")));
}

void TestTextItems::itemIsSplitOffTheLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("rest");
    QTest::newRow("empty") << ""
                           << ""
                           << "";
    QTest::newRow("blanks") << " \t "
                            << ""
                            << "";
    QTest::newRow("word and rest") << "  ab\tcd "
                                   << "ab"
                                   << "\tcd ";
    QTest::newRow("quoted with blanks") << "\"a b\"c d"
                                        << "a b"
                                        << "c d";
    QTest::newRow("empty quotes") << "\"\" x"
                                  << ""
                                  << " x";
    QTest::newRow("quote in the middle is text") << "a\"b c\" d"
                                                 << "a\"b"
                                                 << " c\" d";
    QTest::newRow("closing quote in the middle of a line") << "abc\" def"
                                                           << "abc\""
                                                           << " def";
    QTest::newRow("ideographic blank is no blank")
        << QString::fromUtf8("a\u3000b c") << QString::fromUtf8("a\u3000b") << " c";
}

void TestTextItems::itemIsSplitOffTheLine()
{
    QFETCH(QString, line);
    QString item = QStringLiteral("old");
    QTEST(nextItem(line, item), "rest");
    QTEST(item, "item");
}

void TestTextItems::quoteFaultsAreLoggedWithTheLine()
{
    QString item;
    QTest::ignoreMessage(QtDebugMsg,
                         "In a line [ \"abc d] item is started from quote but not ended by quote");
    QCOMPARE(nextItem(QStringLiteral(" \"abc d"), item), QString());
    QCOMPARE(item, QStringLiteral("abc d"));
    QTest::ignoreMessage(QtDebugMsg,
                         "In a line [abc\"] item is started from not quote but ended by quote");
    QCOMPARE(nextItem(QStringLiteral("abc\""), item), QString());
    QCOMPARE(item, QStringLiteral("abc\""));
}

void TestTextItems::prefixedLineGivesItsItems()
{
    const auto prefix = QStringLiteral("# Size");
    QStringList items;
    QVERIFY(startsWithItems(QStringLiteral("# Size 10 \"\" 20 x"), items, 2, prefix));
    QCOMPARE(items, QStringList({"10", "20", "x"}));
    QVERIFY(!startsWithItems(QStringLiteral("# Size 10"), items, 2, prefix));
    QCOMPARE(items, QStringList("10"));
    QVERIFY(!startsWithItems(QStringLiteral("# size 1 2"), items, 0, prefix));
    QVERIFY(items.isEmpty());
}

void TestTextItems::csvFieldIsSplitOffTheLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("rest");
    QTest::newRow("empty") << ""
                           << ""
                           << "";
    QTest::newRow("empty field") << ",b"
                                 << ""
                                 << "b";
    QTest::newRow("plain") << "a b,c,d"
                           << "a b"
                           << "c,d";
    QTest::newRow("last") << "abc"
                          << "abc"
                          << "";
    QTest::newRow("quoted comma") << "\"a,b\",c"
                                  << "a,b"
                                  << "c";
    QTest::newRow("doubled quotes") << "\"say \"\"x\"\"\",c"
                                    << "say \"x\""
                                    << "c";
    QTest::newRow("text behind the quotes is dropped") << "\"a\" b,c"
                                                       << "a"
                                                       << "c";
    QTest::newRow("not closed") << "\"a,b"
                                << "a,b"
                                << "";
    QTest::newRow("lone quote") << "\""
                                << ""
                                << "";
}

void TestTextItems::csvFieldIsSplitOffTheLine()
{
    QFETCH(QString, line);
    QString field = QStringLiteral("old");
    QTEST(csvField(line, field), "rest");
    QTEST(field, "field");
}

void TestTextItems::csvQuotingIsUndoneByReading()
{
    const QStringList texts = {"plain", "a,b", "say \"x\"", "\"", ",\",", "two  blanks"};
    QStringList fields;
    for (const QString& text : texts)
        fields.append(csvQuoted(text));
    QCOMPARE(fields.first(), texts.first());
    QString line = fields.join(QLatin1Char(','));
    for (const QString& text : texts) {
        QString field;
        line = csvField(line, field);
        QCOMPARE(field, text);
    }
    QVERIFY(line.isEmpty());
}

void TestTextItems::quotingHelpersEscapeAndJoin()
{
    QCOMPARE(quoted(QStringLiteral("a\"b")), QStringLiteral("\"a\\\"b\""));
    QCOMPARE(commaQuoted(QStringLiteral("a")), QStringLiteral(",\"a\""));
    QCOMPARE(quoteList({"a", "b c"}), QStringLiteral("\"a\" \"b c\""));
}

void TestTextItems::thousandsAreGroupedBeforeThePoint_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("grouped");
    QTest::newRow("three") << "123"
                           << "123";
    QTest::newRow("seven") << "1234567"
                           << "1,234,567";
    QTest::newRow("decimals stay") << "1234.56789"
                                   << "1,234.56789";
    QTest::newRow("no comma behind a sign") << "-123456"
                                            << "-123,456";
    QTest::newRow("exponent form") << "1e+06"
                                   << "1e+06";
}

void TestTextItems::thousandsAreGroupedBeforeThePoint()
{
    QFETCH(QString, digits);
    QTEST(groupThousands(digits), "grouped");
}

void TestTextItems::textIsPaddedOnItsRight()
{
    QCOMPARE(padded(QStringLiteral("ab"), 4), QStringLiteral("ab  "));
    QCOMPARE(padded(QStringLiteral("abcde"), 4), QStringLiteral("abcde"));
    QVERIFY(spaces(-1).isEmpty());
    QCOMPARE(spaces(100000).size(), 256);
}

QTEST_APPLESS_MAIN(TestTextItems)
#include "test_text_items.moc"
