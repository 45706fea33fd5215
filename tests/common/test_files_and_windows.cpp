// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "common/FileNames.h"
#include "common/Log.h"
#include "common/WindowState.h"

#include <QtTest>

#include <QSettings>
#include <QWidget>

class TestFilesAndWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void suffixGoesBeforeTheExtension_data();
    void suffixGoesBeforeTheExtension();
    void missingExtensionIsAdded_data();
    void missingExtensionIsAdded();
    void windowComesBackWhereItWas();
    void timeTagStandsBehindTheText();
};

void TestFilesAndWindows::suffixGoesBeforeTheExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("result");
    QTest::newRow("plain") << "a.dat"
                           << "a-12.dat";
    QTest::newRow("folder kept as written") << "../d.x/a.dat"
                                            << "../d.x/a-12.dat";
    QTest::newRow("no extension, no point") << "d.x/a"
                                            << "d.x/a-12";
    QTest::newRow("trailing point goes") << "a."
                                         << "a-12";
    QTest::newRow("only the last point counts") << "a.b.dat"
                                                << "a.b-12.dat";
}

void TestFilesAndWindows::suffixGoesBeforeTheExtension()
{
    QFETCH(QString, name);
    QTEST(addSuffix(name, QStringLiteral("12")), "result");
    QTEST(withInsertedNumber(name, QStringLiteral("12")), "result");
}

void TestFilesAndWindows::missingExtensionIsAdded_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("result");
    const QString here = QDir::currentPath() + QLatin1Char('/');
    QTest::newRow("none") << "a"
                          << "dat" << here + "a.dat";
    QTest::newRow("own") << "a.txt"
                         << "dat" << here + "a.txt";
    QTest::newRow("folder with a point") << "/d.x/a"
                                         << "dat"
                                         << "/d.x/a.dat";
    QTest::newRow("trailing point") << "/d/a."
                                    << "dat"
                                    << "/d/a.dat";
    QTest::newRow("no extension to add") << "/d/a"
                                         << ""
                                         << "/d/a";
    QTest::newRow("empty name stays") << ""
                                      << "dat"
                                      << "";
}

void TestFilesAndWindows::missingExtensionIsAdded()
{
    QFETCH(QString, name);
    QFETCH(QString, extension);
    QTEST(withExtension(name, extension), "result");
}

void TestFilesAndWindows::windowComesBackWhereItWas()
{
    QTemporaryDir store;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
    bool popUp = false;
    QWidget fresh;
    loadWindowState(&fresh, QStringLiteral("Fresh"), &popUp);
    QCOMPARE(fresh.size(), QSize(400, 400));
    QCOMPARE(fresh.pos(), QPoint(200, 200));
    QVERIFY(fresh.isVisible());
    QVERIFY(popUp);

    fresh.move(30, 40);
    fresh.resize(321, 123);
    fresh.hide();
    saveWindowState(&fresh, QStringLiteral("Fresh"), false);
    QWidget again;
    loadWindowState(&again, QStringLiteral("Fresh"), &popUp);
    QCOMPARE(again.size(), QSize(321, 123));
    QCOMPARE(again.pos(), fresh.pos());
    QVERIFY(!again.isVisible());
    QVERIFY(!popUp);

    loadWindowState(&again, QStringLiteral("Other"), &popUp);
    QCOMPARE(again.size(), QSize(400, 400));
}

void TestFilesAndWindows::timeTagStandsBehindTheText()
{
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression("^2da 1: \\d{6} \\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"));
    logTime(QStringLiteral("2da 1:"));
}

QTEST_MAIN(TestFilesAndWindows)
#include "test_files_and_windows.moc"
