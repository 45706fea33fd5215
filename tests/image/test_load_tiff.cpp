#include "image/LoadTiff.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

/// The loader: which files of a job are read, in which order, and what is told at the end.
class TestLoadTiff : public QObject
{
    Q_OBJECT

    const QTemporaryDir dir_;
    QStringList files_;

    static LoadJob job(const QStringList& files, int first = 0, int last = 0, int skip = 1)
    {
        LoadJob result;
        result.files = files;
        result.loadCmdId = ExCmdLoadI1Files;
        result.cutFirst = first;
        result.cutLast = last;
        result.skip = skip;
        return result;
    }

    /// Runs the jobs and gives "number:pixel" of each image in order of arrival, then the ids and
    /// the tickets of the ends.
    QString load(const QVector<LoadJob>& jobs)
    {
        QString arrived;
        LoadTiff loader;
        connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int fNo) {
            arrived += QString("%1:%2 ").arg(fNo).arg(data->pixel(0, 0));
            delete data;
        });
        QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
        for (const LoadJob& each : jobs)
            loader.loadTiffs(each);
        if (ends.isEmpty())
            ends.wait(5000);
        QCoreApplication::processEvents();
        for (const QList<QVariant>& end : ends)
            arrived +=
                QString("end %1 %2").arg(end[0].toInt() - ExCmdLoadI1Files).arg(end[1].toInt());
        return arrived;
    }

    static double residentBytes()
    {
        QFile statm("/proc/self/statm");
        if (!statm.open(QIODevice::ReadOnly))
            return qQNaN();
        return statm.readLine().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE));
    }

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<EX_CMD_ID>("EX_CMD_ID");
        for (int i = 0; i < 10; ++i) {
            files_.append(dir_.filePath(QString("f%1.img").arg(i)));
            QVERIFY(writeBytes(files_[i], imgBytes(3, 2, "", 2, [=](int, int) { return i; })));
        }
    }

    /// The jobs that were asked to stop end, with a failure each; a later one is read.
    void stoppedJobsEndAndLaterOnesAreRead()
    {
        LoadTiff loader;
        QStringList read;
        connect(&loader, &LoadTiff::loaded, this, [&](TiffData* data, int) {
            read << data->fileName;
            delete data;
            loader.stopJobs(2);
        });
        QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
        QSignalSpy failed(&loader, &LoadTiff::failed);
        for (int number = 1; number <= 3; ++number) {
            LoadJob numbered = job(number == 3 ? QStringList(files_[9]) : files_.mid(0, 4));
            numbered.number = number;
            numbered.ticket = 7;
            loader.loadTiffs(numbered);
        }
        QVERIFY(ends.wait(5000));
        QCOMPARE(read, (QStringList{files_[0], files_[9]}));
        QCOMPARE(ends[0][3].toStringList(),
                 (QStringList{"The load was stopped", "The load was stopped"}));
        QCOMPARE(failed[0][0].toInt(), 0);
    }

    void readsTheFilesThatTheCutsLeave()
    {
        const QStringList four = files_.mid(0, 4);
        QCOMPARE(load({job(four)}), "0:0 1:1 2:2 3:3 end 0 0");
        QCOMPARE(load({job(files_, 2, 1, 3)}), "2:2 5:5 8:8 end 0 0");
        QCOMPARE(load({job(four, 1, 9)}), "1:1 end 0 0"); // the first is tried none the less
        QCOMPARE(load({job(four, 40)}), "end 0 0");
        QCOMPARE(load({job({})}), "end 0 0");
        const LogCapture log;
        QCOMPARE(load({job({"/none", files_[1]})}), "1:1 end 0 0"); // failed files leave a gap
        QCOMPARE(log.linesWith("/none"), 1);
        const QString live = dir_.filePath("aLive.img");
        QVERIFY(QFile::copy(files_[7], live));
        LoadJob withLive = job({files_[0], live, files_[2]});
        QCOMPARE(load({withLive}), "0:0 1:7 2:2 end 0 0");
        withLive.ignoreLive = true;
        QCOMPARE(load({withLive}), "0:0 2:2 end 0 0");
    }

    void queuedJobsEndOnceWithTheLastIdAndTheBatchTicket()
    {
        LoadJob batch = job({files_[0]});
        batch.ticket = 5;
        LoadJob click = job({files_[1], files_[2]}, 1);
        click.loadCmdId = ExCmdLoadI0Files;
        const int other = int(ExCmdLoadI0Files) - int(ExCmdLoadI1Files);
        QCOMPARE(load({batch, click}), QString("0:0 1:2 end %1 5").arg(other));
        QCOMPARE(load({click}), QString("1:2 end %1 0").arg(other));
    }

    void aBatchIsToldWhatItsOwnJobDidNotRead()
    {
        LoadJob batch = job({"/none", files_[0], "/nix"});
        batch.ticket = 5;
        batch.place = "line 3, load: ";
        LoadJob cutOff = job(files_, 40);
        cutOff.ticket = 6;
        for (const LoadJob& last : {job({"/click"}), cutOff}) {
            const LogCapture log;
            LoadTiff loader;
            connect(&loader, &LoadTiff::loaded, this, [](TiffData* data, int) { delete data; });
            QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
            loader.loadTiffs(batch);
            loader.loadTiffs(last);
            QVERIFY(ends.wait(5000));
            const QStringList faults = ends[0][3].toStringList();
            QCOMPARE(log.linesWith("line 3, load: Can not open"), 2);
            if (last.ticket == 0)
                QVERIFY(faults.size() == 2 && faults.last().endsWith("\"/nix\""));
            else
                QCOMPARE(faults, QStringList("No files to load: all 10 are cut off"));
        }
    }

    void stopLeavesTheRestUnread()
    {
        LoadTiff stopped;
        int arrived = 0;
        connect(&stopped, &LoadTiff::loaded, this, [&](TiffData* data, int) {
            ++arrived;
            delete data;
            stopped.requestStop();
        });
        stopped.loadTiffs(job(files_));
        QTest::qWait(50);
        QCOMPARE(arrived, 1);
    }

    /// Two bytes a pixel, plus 2 % for all the rest; the next stack takes their place.
    void aLoadedStackCostsItsPixels()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizer's own memory counts too");
#endif
        constexpr int side = 512;
        const auto writeImage = [this](int n) {
            const QString name = dir_.filePath(QString("large%1.img").arg(n));
            const auto pixel = [n](int x, int y) { return (x * y + n) % 999; };
            return writeBytes(name, imgBytes(side, side, "", 2, pixel)) ? name : QString();
        };
        const QStringList names = QVector<QString>(100, writeImage(0)).toList() +
                                  QVector<QString>(100, writeImage(7)).toList();
        TiffStack stack;
        LoadTiff loader;
        connect(&loader, &LoadTiff::loaded, this,
                [&](TiffData* data, int) { stack.append(SharedImage(data)); });
        QSignalSpy ends(&loader, &LoadTiff::finishLoadFiles);
        const double pixels = 200.0 * side * side;
        const double before = residentBytes();
        loader.loadTiffs(job(names));
        QVERIFY(ends.wait(20000));
        const double cost = (residentBytes() - before) / pixels;
        QCOMPARE(stack.size(), 200);
        QVERIFY2(cost <= 1.02 * 2, qPrintable(QString::number(cost)));
        // Images that lay over each other would have each other's pixels.
        for (int i = 0; i < 200; ++i) {
            QCOMPARE(stack[i]->pixel(0, 0), i < 100 ? 0.0 : 7.0);
            QCOMPARE(stack[i]->pixel(1, side - 1), i < 100 ? 511.0 : 518.0);
        }
        const double loaded = residentBytes();
        stack.clear();
        loader.loadTiffs(job(names));
        QVERIFY(ends.wait(20000));
        // It may take a chunk first of which less was used.
        QVERIFY((residentBytes() - loaded) / pixels < 1.0);
    }
};

QTEST_GUILESS_MAIN(TestLoadTiff)
#include "test_load_tiff.moc"
