#include "common/Memory.h"
#include "image/LoadTiff.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <malloc.h>

/// The loader: which files of a job are read, in which order, and what is told at the end.
class TestLoadTiff : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void readsTheFilesThatTheCutsLeave_data();
    void readsTheFilesThatTheCutsLeave();
    void liveFilesArePassedOverAndKeepTheNumbers();
    void failedFilesLeaveAGapAndTheEndStillComes();
    void queuedJobsEndOnceWithTheLastIdAndTheBatchTicket();
    void picturesAreMadeInTheWorkersThread();
    void stopLeavesTheRestUnread();
    void aLoadedStackCostsItsPixelsAndItsPictures();

private:
    QStringList load(LoadTiff& loader, const QVector<LoadJob>& jobs, int& id, int& ticket);
    LoadJob job(const QStringList& files) const
    {
        LoadJob result;
        result.files = files;
        result.loadCmdId = ExCmdLoadI1Files;
        return result;
    }

    QTemporaryDir dir_;
    QStringList files_;
};

void TestLoadTiff::initTestCase()
{
    qRegisterMetaType<EX_CMD_ID>("EX_CMD_ID");
    for (int i = 0; i < 10; ++i) {
        files_.append(dir_.filePath(QStringLiteral("f%1.img").arg(i)));
        QVERIFY(writeBytes(files_[i], imgBytes(3, 2, "", 2, [=](int, int) { return i; })));
    }
}

/// Runs the jobs and gives "number:pixel" of each image in order of arrival.
QStringList TestLoadTiff::load(LoadTiff& loader, const QVector<LoadJob>& jobs, int& id, int& ticket)
{
    QStringList arrived;
    const auto images = connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int fNo) {
        arrived.append(QStringLiteral("%1:%2").arg(fNo).arg(data->pixel(0, 0)));
        delete data;
    });
    QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
    for (const LoadJob& each : jobs)
        loader.loadTiffs(each);
    if (ends.isEmpty())
        ends.wait(5000);
    disconnect(images);
    QCoreApplication::processEvents();
    id = ends.size() == 1 ? ends[0][0].toInt() : -int(ends.size());
    ticket = ends.isEmpty() ? -1 : ends[0][1].toInt();
    return arrived;
}

void TestLoadTiff::readsTheFilesThatTheCutsLeave_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cutFirst");
    QTest::addColumn<int>("cutLast");
    QTest::addColumn<int>("skip");
    QTest::addColumn<QString>("numbers");
    QTest::newRow("all") << 4 << 0 << 0 << 1 << "0:0 1:1 2:2 3:3";
    QTest::newRow("cuts and skip") << 10 << 2 << 1 << 3 << "2:2 5:5 8:8";
    QTest::newRow("the first is tried though the last cut excludes it") << 4 << 1 << 9 << 1 << "1:1";
    QTest::newRow("nothing left at the front") << 4 << 4 << 0 << 1 << "";
    QTest::newRow("cut beyond the list") << 4 << 40 << 0 << 1 << "";
    QTest::newRow("no files") << 0 << 0 << 0 << 1 << "";
}

void TestLoadTiff::readsTheFilesThatTheCutsLeave()
{
    QFETCH(int, count);
    QFETCH(int, cutFirst);
    QFETCH(int, cutLast);
    QFETCH(int, skip);
    QFETCH(QString, numbers);
    LoadJob cut = job(files_.mid(0, count));
    cut.cutFirst = cutFirst;
    cut.cutLast = cutLast;
    cut.skip = skip;
    LoadTiff loader;
    int id = 0;
    int ticket = 0;
    QCOMPARE(load(loader, {cut}, id, ticket).join(QLatin1Char(' ')), numbers);
    QCOMPARE(id, int(ExCmdLoadI1Files));
}

void TestLoadTiff::liveFilesArePassedOverAndKeepTheNumbers()
{
    const QString live = dir_.filePath(QStringLiteral("aLive.img"));
    QVERIFY(QFile::copy(files_[7], live));
    LoadJob withLive = job({files_[0], live, files_[2]});
    LoadTiff loader;
    int id = 0;
    int ticket = 0;
    QCOMPARE(load(loader, {withLive}, id, ticket), QStringList({"0:0", "1:7", "2:2"}));
    withLive.ignoreLive = true;
    QCOMPARE(load(loader, {withLive}, id, ticket), QStringList({"0:0", "2:2"}));
}

void TestLoadTiff::failedFilesLeaveAGapAndTheEndStillComes()
{
    LogCapture log;
    LoadTiff loader;
    int id = 0;
    int ticket = 0;
    QCOMPARE(load(loader, {job({QStringLiteral("/none"), files_[1]})}, id, ticket),
             QStringList({"1:1"}));
    QCOMPARE(load(loader, {job({QStringLiteral("/none")})}, id, ticket), QStringList());
    QCOMPARE(id, int(ExCmdLoadI1Files));
    QCOMPARE(log.linesWith(QStringLiteral("/none")), 2);
}

void TestLoadTiff::queuedJobsEndOnceWithTheLastIdAndTheBatchTicket()
{
    LoadJob batch = job({files_[0]});
    batch.ticket = 5;
    LoadJob click = job({files_[1], files_[2]});
    click.cutFirst = 1;
    click.loadCmdId = ExCmdLoadI0Files;
    LoadTiff loader;
    int id = 0;
    int ticket = 0;
    QCOMPARE(load(loader, {batch, click}, id, ticket), QStringList({"0:0", "1:2"}));
    QCOMPARE(id, int(ExCmdLoadI0Files));
    QCOMPARE(ticket, 5);
    load(loader, {click}, id, ticket);
    QCOMPARE(ticket, 0);
}

void TestLoadTiff::picturesAreMadeInTheWorkersThread()
{
    QThread thread;
    LoadTiff loader;
    loader.moveToThread(&thread);
    thread.start();
    qRegisterMetaType<LoadJob>("LoadJob");
    LoadJob scaled = job({files_[3]});
    scaled.scale.highHandle = 0.5;
    bool matches = false;
    QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
    connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int) {
        matches = data->pictureMatches(scaled.scale);
        delete data;
    });
    QMetaObject::invokeMethod(&loader, "loadTiffs", Q_ARG(LoadJob, scaled));
    QVERIFY(!ends.isEmpty() || ends.wait(5000));
    QVERIFY(matches);
    thread.quit();
    QVERIFY(thread.wait(5000));
}

void TestLoadTiff::stopLeavesTheRestUnread()
{
    LoadTiff loader;
    QStringList arrived;
    connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int fNo) {
        arrived.append(QString::number(fNo));
        delete data;
        loader.requestStop();
    });
    loader.loadTiffs(job(files_));
    QTest::qWait(50);
    QCOMPARE(arrived, QStringList({"0"}));
}

/// Two bytes a pixel and one for the picture, plus 1 % for all the rest.
void TestLoadTiff::aLoadedStackCostsItsPixelsAndItsPictures()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("the sanitizer replaces the allocator that is measured");
#endif
    constexpr int images = 40;
    constexpr int side = 512;
    const QString name = dir_.filePath(QStringLiteral("large.img"));
    QVERIFY(writeBytes(name, imgBytes(side, side, "", 2, [](int x, int y) { return x * y % 999; })));
    QStringList names;
    for (int i = 0; i < images; ++i)
        names.append(name);
    const auto inUse = [] {
        const struct mallinfo2 info = mallinfo2();
        return double(info.uordblks + info.hblkhd);
    };
    TiffStack stack;
    LoadTiff loader;
    connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int) { stack.append(data); });
    QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
    keepFreedMemory();
    const double before = inUse();
    loader.loadTiffs(job(names));
    QVERIFY(ends.wait(20000));
    const double cost = inUse() - before;
    QCOMPARE(stack.size(), images);
    deleteStack(stack);
    const double pixels = double(images) * side * side;
    QVERIFY2(cost <= 1.01 * 3 * pixels, qPrintable(QString::number(cost / pixels)));
}

QTEST_GUILESS_MAIN(TestLoadTiff)
#include "test_load_tiff.moc"
