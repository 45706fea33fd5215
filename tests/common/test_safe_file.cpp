#include "common/Fault.h"
#include "common/SafeFile.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// Files that are written whole or not at all. What only a failing disk shows is in
/// scripts/faults.sh.
class TestSafeFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QVERIFY(QDir(dir_.path()).mkpath("folder/held")); }

    void writesAtAnyPlaceUnderAnyName()
    {
        const QString longest = QString(251, 'x') + ".dat"; // 255 bytes
        for (const QString& name : {QString("a.dat"), QString::fromUtf8("\u5730\u56f3"), longest}) {
            for (const char* middle : {"first", "other"}) { // new, then in place of another
                QVERIFY(writeFile(in(name), [middle](QIODevice& file) {
                    file.seek(1);
                    file.write(middle);
                    file.write(">");
                    file.seek(0);
                    file.write("<");
                    return QString();
                }));
                QCOMPARE(contents(name), "<" + QByteArray(middle) + ">");
            }
            QVERIFY(QFile::remove(in(name)));
        }
        QCOMPARE(files(), QStringList());
    }

    void refusedOrFailedWritesLeaveWhatStoodThere_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no name") << ""
                                 << "no file name";
        QTest::newRow("no folder") << in("none/a.dat") << "No such file";
        QTest::newRow("a folder") << in("folder") << "Is a directory";
        QTest::newRow("a file for a folder") << in("former/a.dat") << "Not a directory";
        QTest::newRow("a pipe") << in("pipe") << "not a plain file";
        QTest::newRow("too long") << in(QString(256, 'x')) << "too long";
        QTest::newRow("full") << in("former") << "File too large";
        QTest::newRow("full, new") << in("new") << "File too large";
        QTest::newRow("full, by a link") << in("link") << "File too large";
    }

    void refusedOrFailedWritesLeaveWhatStoodThere()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(writeFile(in("former"), "former"));
        mkfifo(QFile::encodeName(in("pipe")).constData(), 0600);
        QFile::link(in("former"), in("link"));
        const QStringList before = files();
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{1000, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const LogCapture log;
        const FaultCollector collector;
        const bool written = writeTextFile(name, [](QTextStream& out) {
            for (int i = 0; i < 10000; ++i)
                out << "a line\n";
        });
        setrlimit(RLIMIT_FSIZE, &limit);
        QVERIFY(!written);
        QCOMPARE(log.all(), collector.faults());
        QCOMPARE(collector.faults().size(), 1);
        QVERIFY2(log.linesWith('"' + name + "\": ") == 1 && log.linesWith(reason) == 1,
                 qPrintable(log.all().join('\n')));
        QCOMPARE(contents("former"), QByteArray("former"));
        QCOMPARE(files(), before);
    }

    void theFileOfALinkAndItsRightsStay()
    {
        QVERIFY(writeFile(in("former"), "former"));
        QVERIFY(QFile::link(in("former"), in("link")));
        QVERIFY(QFile::link(in("link"), in("chain")));
        const auto rights =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QVERIFY(QFile::setPermissions(in("former"), rights));
        QVERIFY(writeFile(in("chain"), "new"));
        QVERIFY(QFileInfo(in("link")).isSymLink() && QFileInfo(in("chain")).isSymLink());
        QCOMPARE(contents("former"), QByteArray("new"));
        QCOMPARE(QFile::permissions(in("former")), rights);
    }

    void cleanup()
    {
        for (const QString& name : files())
            QFile::remove(in(name));
    }

private:
    QString in(const QString& name) const { return dir_.filePath(name); }
    QByteArray contents(const QString& name) const { return bytesOf(in(name)); }
    QStringList files() const
    {
        return QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    QTemporaryDir dir_;
};

QTEST_GUILESS_MAIN(TestSafeFile)
#include "test_safe_file.moc"
