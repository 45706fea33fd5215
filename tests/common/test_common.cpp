#include "common/ColorScale.h"
#include "common/FieldText.h"
#include "common/FileNames.h"
#include "common/TextItems.h"
#include "common/WindowState.h"

#include <QtTest>

#include <QScreen>
#include <QWidget>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>

/// Texts taken apart and put together, the ramps of the colour bar, and kept windows.
class TestCommon : public QObject
{
    Q_OBJECT

    /// Each row is "line|what is split off|what the function returns".
    static void checkRows(QString (*split)(const QString&, QString&), const QStringList& rows)
    {
        for (const QString& row : rows) {
            const QString line = row.section('|', 0, 0);
            QString found = "old";
            const QString rest = split(line, found);
            QCOMPARE(line + '|' + found + '|' + rest, row);
        }
    }

private Q_SLOTS:
    void commentBeginsAtTheFirstHashOutsideQuotes()
    {
        // One state serves both kinds of quotes, so a lone apostrophe hides the rest: deliberate.
        checkRows(stripComment,
                  {"a b||a b", "a # b # c| b # c|a ", "a \"b#c\" # d| d|a \"b#c\" ",
                   "a 'b#c' #d|d|a 'b#c' ", "it's # text||it's # text", "\"a' # b| b|\"a' "});
        QVERIFY(isBlank(" \t # only a comment") && !isBlank("x # y"));
    }

    void itemIsSplitOffTheLine()
    {
        checkRows(nextItem, {"||", " \t ||", "  ab\tcd |ab|\tcd ", "\"a b\"c d|a b|c d",
                             "\"\" x|| x", "a\"b c\" d|a\"b| c\" d", "abc\" def|abc\"| def",
                             QString::fromUtf8("a\u3000b c|a\u3000b| c")});
        QTest::ignoreMessage(
            QtDebugMsg, "In a line [ \"abc d] item is started from quote but not ended by quote");
        QTest::ignoreMessage(QtDebugMsg,
                             "In a line [abc\"] item is started from not quote but ended by quote");
        checkRows(nextItem, {" \"abc d|abc d|", "abc\"|abc\"|"});

        QStringList items;
        QVERIFY(startsWithItems("# Size 10 \"\" 20 x", items, 2, "# Size"));
        QCOMPARE(items, QStringList({"10", "20", "x"}));
        QVERIFY(!startsWithItems("# Size 10", items, 2, "# Size") && items == QStringList("10"));
        QVERIFY(!startsWithItems("# size 1 2", items, 0, "# Size") && items.isEmpty());
    }

    void csvFieldIsSplitOffTheLineAndQuotingIsUndone()
    {
        checkRows(csvField,
                  {"||", ",b||b", "a b,c,d|a b|c,d", "abc|abc|", "\"a,b\",c|a,b|c",
                   "\"say \"\"x\"\"\",c|say \"x\"|c", "\"a\" b,c|a|c", "\"a,b|a,b|", "\"||"});
        for (const QString text : {"a,b", "say \"x\"", "\"", ",\",", "two  blanks"})
            checkRows(csvField, {csvQuoted(text) + ",rest|" + text + "|rest"});
    }

    void textsAreBuilt()
    {
        QCOMPARE(quoted("a\"b"), QString("\"a\\\"b\""));
        QVERIFY(spaces(-1).isEmpty() && spaces(100000).size() == 256);
        QCOMPARE(groupThousands("1234567"), QString("1,234,567"));
        QCOMPARE(groupThousands("-123456.56789"), QString("-123,456.56789"));
        QCOMPARE(groupThousands("1e+06"), QString("1e+06"));
    }

    /// Held against Qt's own, in which files were written before.
    void shortestTextIsThatOfQt()
    {
        const auto check = [](double v) {
            const QString text = QString::number(v, 'g', QLocale::FloatingPointShortest);
            if (shortestText(v) != text)
                QFAIL(qPrintable(shortestText(v) + " for " + text));
        };
        for (const double v : {0.0, double(NAN), HUGE_VAL, 5e-324, DBL_MAX, DBL_MIN, 1e23}) {
            check(v);
            check(-v);
        }
        // Where the form changes: one to seventeen digits round every place of the point.
        for (int exponent = -30; exponent < 30; ++exponent) {
            for (qint64 digits = 1; digits < qint64(1e17); digits = digits * 10 + 7)
                check(double(digits) * std::pow(10.0, exponent));
        }
        std::mt19937_64 random(3);
        for (int i = 0; i < 1000000 && !QTest::currentTestFailed(); ++i) {
            const quint64 bits = random();
            double v = 0.0;
            std::memcpy(&v, &bits, sizeof v);
            check(v);
        }
    }

    void fileNamesKeepTheirFolders()
    {
        const auto number = [](const QString& name, QString& numbered) {
            numbered = withInsertedNumber(name, "1");
            return addSuffix(name, "1");
        };
        checkRows(number,
                  {"../d.x/a.dat|../d.x/a-1.dat|../d.x/a-1.dat", "d.x/a|d.x/a-1|d.x/a-1",
                   "a.|a-1|a-1", "a.b.DAT|a.b-1.DAT|a.b-1.DAT", "s_0.25|s_0.25-1|s_0.25-1"});
        const auto extend = [](const QString& name, QString& without) {
            without = withExtension(name, "");
            return withExtension(name, "dat");
        };
        checkRows(extend, {"/d/a.txt|/d/a.txt|/d/a.txt", "/d.x/a|/d.x/a|/d.x/a.dat",
                           "/d/a.|/d/a|/d/a.dat", "/d/s_0.25|/d/s_0.25|/d/s_0.25.dat", "||"});
        for (const char* name : {"d.x/a", "d.x/a.", "d.x/a.txt"})
            QCOMPARE(withReplacedExtension(name, "dat"), QString("d.x/a.dat"));
        QCOMPARE(withReplacedExtension("s_0.25", "dat"), QString("s_0.25.dat"));
        QCOMPARE(withExtension("a", "dat"), QDir::currentPath() + "/a.dat");
    }

    void filesStandInNaturalOrder()
    {
        const QStringList sorted =
            QString("9999.tif 10000.tif a/2/1 a/10/1 a007 A7b a7c a8 a123456789012345678901234 "
                    "a223456789012345678901234 b b-1 b.1 b0 b_1")
                .split(' ');
        for (unsigned seed = 1; seed < 20; ++seed) {
            QStringList names = sorted;
            std::shuffle(names.begin(), names.end(), std::mt19937(seed));
            sortNaturally(names);
            QCOMPARE(names, sorted);
        }
        QVERIFY(naturallyLess("A1", "a1") != naturallyLess("a1", "A1"));
    }

    void greyValueFollowsTheHandles()
    {
        // Low handle, high handle, value, grey.
        const double rows[][4] = {
            {0, 1, 0, 0},        {0, 1, 1, 255},         {0, 1, 127.999 / 256, 127},
            {.25, .75, .5, 128}, {1, 0, 1, 0},           {1, 0, 0, 255},
            {1, 0, .25, 192},    {.5, .5, .6, 255},      {.5, .5, .4, 0},
            {.5, .5, .5, 0},     {0, 1, qQNaN(), 0},     {0, 1, qInf(), 255},
            {0, 1, -qInf(), 0},  {0, 1e-300, 1e300, 255}};
        for (const auto& [low, high, value, grey] : rows) {
            ColorScale scale;
            scale.lowHandle = low;
            scale.highHandle = high;
            QCOMPARE(double(scale.colorOfValue(value).red()), grey);
        }
    }

    void hotRampRunsBlackRedYellowWhite()
    {
        ColorScale hot;
        hot.chooseRamp(HotRamp);
        const std::pair<double, QRgb> rows[] = {
            {0, 0xff000000},   {100, 0xff640000}, {255, 0xffff0000}, {256, 0xffff0100},
            {510, 0xffffff00}, {511, 0xffffff01}, {765, 0xffffffff}, {qQNaN(), 0xff000000}};
        // Half an index further, so that rounding of the division can't reach the index below.
        for (const auto& [index, color] : rows)
            QCOMPARE(hot.colorOfValue((index + 0.5) / 766).rgb(), color);
        for (const int width : {1, 3, 4, 5, 257})
            QCOMPARE(displayStride(ColorScale::Rgb, width),
                     QImage(width, 1, QImage::Format_RGB888).bytesPerLine());
        QCOMPARE(plotColor(-1), plotColor(8));
    }

    /// Colours of the published tables, among them such between the program's own knots.
    void smoothRampsKeepToTheirTables()
    {
        const std::tuple<int, int, QColor> rows[] = {
            {ViridisRamp, 0, {68, 1, 84}},      {ViridisRamp, 64, {59, 82, 139}},
            {ViridisRamp, 128, {33, 145, 140}}, {ViridisRamp, 191, {94, 201, 98}},
            {ViridisRamp, 255, {253, 231, 37}}, {CividisRamp, 255, {255, 233, 69}},
            {CividisRamp, 128, {125, 124, 120}}};
        for (const auto& [ramp, index, expected] : rows) {
            ColorScale scale;
            scale.chooseRamp(ramp);
            const QColor colour = scale.colorOfValue((index + 0.5) / 256);
            for (const int off : {colour.red() - expected.red(), colour.green() - expected.green(),
                                  colour.blue() - expected.blue()})
                QVERIFY2(
                    std::abs(off) <= 3,
                    qPrintable(
                        QString("%1 %2: %3 %4").arg(ramp).arg(index).arg(off).arg(colour.name())));
        }
        ColorScale grey;
        grey.imageFormat = ColorScale::Rgb; // as maps with blocks without an edge have it
        QCOMPARE(grey.colorOfValue(0.5), ColorScale().colorOfValue(0.5));
    }

    void windowComesBackWhereItWas()
    {
        const QTemporaryDir store;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
        bool popUp = false;
        QWidget fresh;
        loadWindowState(&fresh, "Fresh", &popUp);
        QCOMPARE(QRect(fresh.pos(), fresh.size()), QRect(200, 200, 400, 400));
        QVERIFY(fresh.isVisible() && popUp);
        fresh.move(30, 40);
        fresh.resize(321, 123);
        fresh.hide();
        saveWindowState(&fresh, "Fresh", false);
        QWidget again;
        loadWindowState(&again, "Fresh", &popUp);
        QCOMPARE(QRect(again.pos(), again.size()), QRect(30, 40, 321, 123));
        QVERIFY(!again.isVisible() && !popUp);
        QVERIFY(isWindowStateStored("Fresh") && !isWindowStateStored("Never"));
        again.showMaximized();
        QVERIFY(QTest::qWaitForWindowExposed(&again));
        saveWindowState(&again, "Fresh", false);
        QWidget wide;
        loadWindowState(&wide, "Fresh", &popUp);
        QVERIFY(wide.isVisible() && wide.isMaximized());
        QCOMPARE(wide.normalGeometry(), QRect(30, 40, 321, 123));
        wide.showNormal();
        QCOMPARE(wide.geometry(), QRect(30, 40, 321, 123));
    }

    /// Exactly where it stood, unless nobody could take hold of it there.
    void windowComesUpInReach()
    {
        const QTemporaryDir store;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const std::pair<QRect, bool> rows[] = {{{90000, -3000, 300, 200}, false},
                                               {{-400, 20, 300, 200}, false},
                                               {{-500, -500, 9000, 8000}, false},
                                               {{screen.right() - 100, 50, 300, 200}, true},
                                               {{-200, screen.bottom() - 30, 300, 900}, true}};
        for (const auto& [kept, inReach] : rows) {
            QWidget window;
            window.setGeometry(kept);
            saveWindowState(&window, "Far", true);
            window.setGeometry(1, 1, 2, 2);
            bool popUp = false;
            loadWindowState(&window, "Far", &popUp);
            const QRect found(window.pos(), window.size());
            if (inReach) {
                QCOMPARE(found, kept);
                continue;
            }
            QVERIFY(screen.contains(found));
            QCOMPARE(found.size(), kept.size().boundedTo(screen.size()));
        }
    }
};

QTEST_MAIN(TestCommon)
#include "test_common.moc"
