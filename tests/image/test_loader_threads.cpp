#include "image/BlockSpectrum.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <deque>
#include <mutex>
#include <thread>

namespace {
constexpr int files = 24;
constexpr int side = 40;

/// A loader of all files and its images on their way to the thread that owns the stacks.
class Loader
{
public:
    void read(const QStringList& names, const ErrPoints& bad)
    {
        for (const QString& name : names) {
            auto image = std::make_unique<TiffData>();
            if (!image->readFile(name, bad))
                continue;
            const std::lock_guard<std::mutex> lock(mutex_);
            images_.push_back(std::move(image));
        }
    }
    void takeInto(TiffStack& stack)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (images_.empty())
            return;
        images_.front()->energy = stack.size();
        stack.append(std::move(images_.front()));
        images_.pop_front();
    }

private:
    std::mutex mutex_;
    std::deque<std::unique_ptr<TiffData>> images_;
};
} // namespace

/// What the loader threads and the GUI thread do to images at the same time, with standard threads
/// and a mutex in place of Qt's queues, for the thread sanitizer.
class TestLoaderThreads : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void twoLoadersAndAReaderOfSpectra()
    {
        const QTemporaryDir dir;
        QStringList names;
        for (int i = 0; i < files; ++i) {
            names.append(dir.filePath(QString::number(i)));
            const auto pixel = [=](int x, int y) { return 1000 + i + x + y; };
            const QByteArray bytes = i % 3 == 0   ? tiffBytes(side, side, pixel, 20)
                                     : i % 3 == 1 ? imgBytes(side, side, "", 2, pixel)
                                                  : brnxBytes(side, side, pixel);
            QVERIFY(writeBytes(names[i], bytes));
        }
        ErrPoints bad;
        bad.add(3, 3);
        bad.active = true;
        Loader i1Loader;
        Loader i0Loader;
        std::thread i1Thread([&, bad] { i1Loader.read(names, bad); });
        std::thread i0Thread([&, bad] { i0Loader.read(names, bad); });
        TiffStack i1;
        TiffStack i0;
        BlockConditions conditions;
        conditions.imageWidth = conditions.imageHeight = side;
        conditions.halfX = conditions.halfY = 1;
        conditions.useI0 = true;
        bool complete = true;
        while (i1.size() < files || i0.size() < files) {
            i1Loader.takeInto(i1);
            i0Loader.takeInto(i0);
            complete = complete && rawXafs({i1, i0}, conditions, 20, 20).size() == i1.size();
        }
        i1Thread.join();
        i0Thread.join();
        QVERIFY(complete);
        // The same file in both stacks: ln(1).
        QCOMPARE(rawXafs({i1, i0}, conditions, 20, 20).y(5), 0.0);
    }

    void stopFromAnotherThreadEndsALongRead()
    {
        const QTemporaryDir dir;
        const QString name = dir.filePath("long");
        QVERIFY(writeBytes(name, brnxBytes(700, 700, [](int, int) { return 1.0; })));
        std::atomic<bool> stop{false};
        bool complete = true;
        std::thread reader([&] { complete = TiffData().readFile(name, ErrPoints(), &stop); });
        stop = true;
        reader.join();
        QVERIFY(!complete);
    }
};

QTEST_GUILESS_MAIN(TestLoaderThreads)
#include "test_loader_threads.moc"
