#include "calibration/ShiftMapFile.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <cmath>

namespace {

constexpr double hc = 12398.424360387684;
constexpr double pi = 3.1415926535;

/// Angle of an energy by the rule of the file, written out.
double angle(double E, double d)
{
    const double sine = hc / E / (2 * d);
    return std::abs(sine) > 1.0 ? -1.0 : std::asin(sine) / pi * 180.0;
}

double planted(int x, int y)
{
    return 2.5 * std::sin(0.3 * x) + 0.11 * y - 0.4;
}

ShiftMapRecord record(int width, int height)
{
    ShiftMapRecord r;
    r.recorded = QDateTime(QDate(2024, 3, 9), QTime(7, 8, 9, 45));
    r.header = {true, 12, -7, width, height, 2, 1, 1, 6, 0, 5, 8984.3607, 3.1355316};
    r.stdFileName = "/a b/Cu.dat";
    r.mapWidth = width;
    r.mapHeight = height;
    r.imageWidth = width;
    r.imageHeight = height;
    return r;
}

QString written(const ShiftMapRecord& r, const ShiftAt& shiftAt)
{
    QString text;
    QTextStream out(&text);
    writeShiftMap(out, r, shiftAt);
    out.flush();
    return text;
}

struct ReadMap
{
    EMPHeader header;
    QVector<double> shifts;
};

/// Reads a map for the edge energy given, or for its own.
ReadMap readBack(QString text, double edgeE = 0.0)
{
    QTextStream in(&text);
    ReadMap map;
    map.header = readMapHeader(in);
    if (map.header.isValid)
        map.shifts = readMapShifts(in, map.header, edgeE > 0 ? edgeE : map.header.stdEdgeE);
    return map;
}

const QString head = "###MVKT\nWidth [pix]             : 3\nHeight [pix]            : 2\n"
                     "Std Edge Energy [eV]    : 9000\nSpacing [nm]            : 3\n";
const QString headEnd = "##-----------------\n";

} // namespace

/// The text form of energy shift maps, against its layout and against files that are broken.
class TestShiftMapFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void layoutLineByLine()
    {
        const LogCapture log;
        ShiftMapRecord r = record(3, 2);
        r.stdFileName += "\n##-----------------";
        r.imageWidth = 4; // wider than the map
        const QStringList lines = written(r, [](int x, int y) {
                                      return x == 0 ? 0.0 : x == 1 ? 1e5 : 1.0 + y;
                                  }).split('\n');
        const double up = angle(8983.3607, 3.1355316) - angle(8984.3607, 3.1355316);
        const double up2 = angle(8982.3607, 3.1355316) - angle(8984.3607, 3.1355316);
        const QString low = QString::number(
            angle(8984.3607 - 1e5, 3.1355316) - angle(8984.3607, 3.1355316), 'g', 6);
        const QStringList expected{"###Morvenkite::MVKT",
                                   "Record Date             : 24/03/09 07:08:09.045",
                                   "Std Edge Energy [eV]    : 8984.36",
                                   "Spacing [nm]            : 3.13553",
                                   "X Offset [pix]          : 12",
                                   "Y Offset [pix]          : -7",
                                   "Width [pix]             : 3",
                                   "Height [pix]            : 2",
                                   "Bin Half Width [pix]    : 2",
                                   "Bin Half Height [pix]   : 1",
                                   "Area X0                 : 1",
                                   "Area X1                 : 6",
                                   "Area Y0                 : 0",
                                   "Area Y1                 : 5",
                                   "Std File Name           : /a b/Cu.dat ##-----------------",
                                   "Map Height              : 2",
                                   "Map Width               : 0 3",
                                   "Map Width               : 1 3",
                                   "##-----------------",
                                   QString("0 %1 %2 %2 ").arg(low).arg(up, 0, 'g', 6),
                                   QString("0 %1 %2 %2 ").arg(low).arg(up2, 0, 'g', 6),
                                   ""};
        QCOMPARE(lines, expected);
        QCOMPARE(log.linesWith("EMap Write Start : "), 1);
        QCOMPARE(log.linesWith("EMap Write End   : "), 1);
    }

    void plantedShiftsComeBack()
    {
        const LogCapture log;
        const QTemporaryDir dir;
        const ShiftMapRecord r = record(30, 20);
        QCOMPARE(saveShiftMap(dir.filePath("map"), r, planted), dir.filePath("map.emp"));
        QCOMPARE(saveShiftMap(dir.filePath("map.txt"), r, planted), dir.filePath("map.txt"));
        QFile file(dir.filePath("map.emp"));
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        const ReadMap map = readBack(QString::fromUtf8(file.readAll()));
        const EMPHeader& h = map.header;
        QVERIFY(h.isValid && h.stdEdgeE == 8984.36 && h.spacing == 3.13553);
        QCOMPARE((QVector<int>{h.xOffset, h.yOffset, h.width, h.height, h.halfX, h.halfY, h.areaX0,
                               h.areaX1, h.areaY0, h.areaY1}),
                 (QVector<int>{12, -7, 30, 20, 2, 1, 1, 6, 0, 5}));
        QCOMPARE(map.shifts.size(), 600);
        for (int i = 0; i < 600; ++i) // six digits of the angle
            QVERIFY(std::abs(map.shifts[i] - planted(i % 30, i / 30)) < 1e-5);
        QCOMPARE(log.linesWith("run out!") + log.linesWith("not finite"), 0);
        QVERIFY(saveShiftMap(dir.filePath("none/map"), r, planted).isEmpty());
        QVERIFY(saveShiftMap("", r, planted).isEmpty());
        QCOMPARE(log.linesWith("Can not open"), 2);
    }

    void theRecordDateCanBeGiven()
    {
        const auto date = [](const char* seconds) {
            qputenv("SOURCE_DATE_EPOCH", seconds);
            const QDateTime given = recordDate();
            qunsetenv("SOURCE_DATE_EPOCH");
            return given.toString("yy/MM/dd hh:mm:ss.zzz");
        };
        QCOMPARE(date("1700000000"), QString("23/11/14 22:13:20.000"));
        const LogCapture log;
        QVERIFY(date("yesterday") >=
                QDateTime::currentDateTime().addSecs(-60).toString("yy/MM/dd"));
        QCOMPARE(log.linesWith("SOURCE_DATE_EPOCH"), 1);
    }

    void aMapIsCarriedToAnotherEdge()
    {
        // The optics keep the angle, so at another edge each shift is another one.
        const double other = 7112.0;
        const ReadMap map = readBack(written(record(30, 20), planted), other);
        for (int i = 0; i < 600; ++i) {
            const double difference =
                angle(8984.3607 - planted(i % 30, i / 30), 3.1355316) - angle(8984.3607, 3.1355316);
            const double theta = angle(other, 3.13553) + difference;
            const double E = hc / (2 * 3.13553 * std::sin(theta / 180.0 * pi));
            QVERIFY(std::abs(map.shifts[i] - (other - E)) < 1e-5);
        }
    }

    void headsInAnyOrder()
    {
        const ReadMap map = readBack(head + "Comment\nArea X1                 :    3 \n" + headEnd +
                                     "0 0.1\n-0.1\t0 1e-3\n\n  .5");
        QVERIFY(map.header.isValid && map.header.areaX1 == 3 && map.header.xOffset == 0);
        for (int i = 0; i < 6; ++i) {
            const double v[] = {0, 0.1, -0.1, 0, 1e-3, 0.5};
            const double E = hc / (2 * 3 * std::sin((v[i] + angle(9000, 3)) / 180.0 * pi));
            QVERIFY(std::abs(map.shifts[i] - (9000 - E)) < 1e-9);
        }
    }

    void missingValuesCountAsAngleZero()
    {
        const LogCapture log;
        const ReadMap map = readBack(head + headEnd + "0.1 0.1 ");
        QCOMPARE(log.linesWith("run out!"), 4);
        QVERIFY(map.shifts.size() == 6 && map.shifts[1] > 1.0);
        for (int i = 2; i < 6; ++i)
            QVERIFY(std::abs(map.shifts[i]) < 1e-9);
    }

    void incompleteHeadsAreRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("logged");
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("other file") << "9809 KEK-PF\n" + head + headEnd << "Not a emp file.";
        QTest::newRow("no end") << head << "";
        const QStringList lines = head.split('\n');
        for (int i = 1; i < 5; ++i) {
            QStringList some = lines;
            some.removeAt(i);
            QTest::newRow(qPrintable("without " + lines[i])) << some.join('\n') + headEnd << "";
        }
        for (const char* size : {"0", "-5", "1000000", "2147483647", "99999999999", "x"}) {
            QString text = head;
            text.replace("Width [pix]             : 3",
                         "Width [pix]             : " + QString(size));
            text.replace("Height [pix]            : 2", "Height [pix]            : 3000");
            QTest::newRow(size) << text + headEnd + "1 2 3"
                                << "is not that of the file";
        }
        QTest::newRow("endless line") << "###MVKT" + QString(1000000, 'x') + "\n" + head << "";
    }

    void incompleteHeadsAreRefused()
    {
        QFETCH(QString, text);
        QFETCH(QString, logged);
        const LogCapture log;
        QVERIFY(!readBack(text).header.isValid);
        if (!logged.isEmpty())
            QCOMPARE(log.linesWith(logged), 1);
    }

    void aLargeMapNeedsALongFile()
    {
        QString large = head;
        large.replace("Width [pix]             : 3", "Width [pix]             : 600");
        large.replace("Height [pix]            : 2", "Height [pix]            : 600");
        large += headEnd;
        QVERIFY(readBack(large + QString("0 ").repeated(360000)).shifts.size() == 360000);
        QVERIFY(!readBack(large + QString("0 ").repeated(350000)).header.isValid);
    }

    void valuesThatAreNoNumbersGiveNoShift()
    {
        const LogCapture log;
        for (const double shift : readBack(head + headEnd + "nan inf -inf 1e999 0 0").shifts)
            QVERIFY(std::abs(shift) < 1e-9);
        // A word takes the place of one value, not of all behind it.
        const QVector<double> shifts = readBack(head + headEnd + "0 oops 0.01 - 0.01 0").shifts;
        QVERIFY(shifts[1] == 0.0 && shifts[3] == 0.0);
        QVERIFY(std::abs(shifts[2]) > 0.1 && shifts[4] == shifts[2]);
        QCOMPARE(log.linesWith("not finite and count as 0"), 2);
        QCOMPARE(log.linesWith("run out!"), 0);
        for (const char* edge : {": nan", ": 0", ": -9000"}) {
            QString impossible = head;
            impossible.replace(": 9000", edge);
            QVERIFY(!readBack(impossible + headEnd).header.isValid);
        }
        QCOMPARE(log.linesWith("can not be"), 3);
    }

    void theWalkStaysInTheImage()
    {
        const LogCapture log;
        EMPHeader h = record(30, 20).header;
        AnalyzeCond walk = mapWalk(h);
        QCOMPARE(QRect(walk.x0, walk.y0, walk.x1, walk.y1), QRect(1, 0, 6, 5));
        QCOMPARE(QRect(walk.cx, walk.cy, walk.stepX, walk.stepY), QRect(3, 1, 5, 3));
        QCOMPARE(log.linesWith("is cut to its image"), 0);
        h.areaX0 = h.areaY1 = INT_MIN;
        h.areaX1 = h.areaY0 = h.halfX = INT_MAX;
        walk = mapWalk(h);
        QCOMPARE(QRect(walk.x0, walk.y0, walk.x1, walk.y1), QRect(0, 0, 30, 20));
        QCOMPARE(walk.columns(), 1);
        QCOMPARE(log.linesWith("is cut to its image"), 1);
    }
};

QTEST_APPLESS_MAIN(TestShiftMapFile)
#include "test_shift_map_file.moc"
