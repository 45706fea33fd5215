#include "image/BlockSpectrum.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <deque>
#include <mutex>
#include <thread>

/// What the loader threads and the GUI thread do to images at the same time, with standard threads
/// and a mutex in place of Qt's queues, for the thread sanitizer.
class TestLoaderThreads : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void twoLoadersAndAReaderOfSpectra();
    void stopFromAnotherThreadEndsALongRead();
};

namespace {

constexpr int files = 24;
constexpr int side = 40;

/// Images on their way from a loader to the thread that owns the stacks.
class HandOver
{
public:
    void put(std::unique_ptr<TiffData> image)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        images_.push_back(std::move(image));
    }
    std::unique_ptr<TiffData> take()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (images_.empty())
            return nullptr;
        auto image = std::move(images_.front());
        images_.pop_front();
        return image;
    }

private:
    std::mutex mutex_;
    std::deque<std::unique_ptr<TiffData>> images_;
};

void readAll(const QStringList& names, const ErrPoints& bad, const ColorScale& scale,
             const std::atomic<bool>& stop, HandOver& out)
{
    for (const QString& name : names) {
        auto image = std::make_unique<TiffData>();
        if (image->readFile(name, bad, &stop)) {
            image->buildImage(scale);
            out.put(std::move(image));
        }
    }
}

void takeInto(HandOver& from, TiffStack& stack)
{
    if (auto image = from.take()) {
        image->energy = stack.size();
        stack.append(image.release());
    }
}

} // namespace

void TestLoaderThreads::twoLoadersAndAReaderOfSpectra()
{
    const QTemporaryDir dir;
    QStringList names;
    for (int i = 0; i < files; ++i) {
        const QString name = dir.filePath(QString::number(i));
        const auto pixel = [=](int x, int y) { return 1000 + i + x + y; };
        const QByteArray bytes = i % 3 == 0   ? tiffBytes(side, side, pixel, 20)
                                 : i % 3 == 1 ? imgBytes(side, side, "ExposureTime=1 s", 2, pixel)
                                              : brnxBytes(side, side, pixel);
        QVERIFY(writeBytes(name, bytes));
        names.append(name);
    }
    ErrPoints bad;
    bad.add(3, 3);
    bad.active = true;
    const std::atomic<bool> stop{false};
    HandOver i1Queue;
    HandOver i0Queue;
    std::thread i1Loader(
        [&, bad] { readAll(names, bad, ColorScale(), stop, i1Queue); });
    std::thread i0Loader(
        [&, bad] { readAll(names, bad, ColorScale(), stop, i0Queue); });

    TiffStack i1;
    TiffStack i0;
    BlockConditions conditions;
    conditions.imageWidth = conditions.imageHeight = side;
    conditions.halfX = conditions.halfY = 1;
    conditions.useI0 = true;
    while (i1.size() < files || i0.size() < files) {
        takeInto(i1Queue, i1);
        takeInto(i0Queue, i0);
        if (!i1.isEmpty())
            QCOMPARE(rawXafs({i1, i0}, conditions, 20, 20).size(), i1.size());
    }
    i1Loader.join();
    i0Loader.join();
    // The same file in both stacks: ln(1).
    QCOMPARE(rawXafs({i1, i0}, conditions, 20, 20).y(5), 0.0);
    deleteStack(i1);
    deleteStack(i0);
}

void TestLoaderThreads::stopFromAnotherThreadEndsALongRead()
{
    const QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("long"));
    QVERIFY(writeBytes(name, brnxBytes(700, 700, [](int, int) { return 1.0; })));
    std::atomic<bool> stop{false};
    bool complete = true;
    std::thread reader([&] {
        TiffData image;
        complete = image.readFile(name, ErrPoints(), &stop);
    });
    stop = true;
    reader.join();
    QVERIFY(!complete);
}

QTEST_GUILESS_MAIN(TestLoaderThreads)
#include "test_loader_threads.moc"
