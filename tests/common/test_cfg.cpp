#include "common/Cfg.h"
#include "common/Settings.h"
#include "common/TextFile.h"
#include "support/ImageFiles.h"

#include <QtTest>

/// The command line and the configuration file.
class TestCfg : public QObject
{
    Q_OBJECT

    QTemporaryDir dir_;

    QString write(const QString& name, const QByteArray& text)
    {
        const QString path = dir_.filePath(name);
        return writeBytes(path, text) ? path : QString();
    }

    /// A configuration of the words of a command line, and then of a file with the text.
    Cfg cfgOf(const QByteArray& words, const QByteArray& text = QByteArray())
    {
        const QList<QByteArray> split = ("program|" + words).split('|');
        const QVector<const char*> argv(split.begin(), split.end());
        Cfg cfg(argv.size(), argv.constData(), QString(), {});
        cfg.readFile(write("x.cfg", text));
        return cfg;
    }

private Q_SLOTS:
    void commandLineGivesValuesAndRests()
    {
        Cfg cfg = cfgOf("stray|-d|a|b|-x|-b|-e|-d|c");
        QCOMPARE(cfg.keys(), QStringList({"-d", "-x", "-b", "-e"}));
        QCOMPARE(cfg.value("-d"), QString("c"));
        QCOMPARE(cfg.linesOf("-D"), QStringList({"a b", "c"}));
        QCOMPARE(cfg.value("-b", "none") + cfg.value("-D", "none"), QString("none"));

        const QByteArray file = write("b.cfg", "from b").toLocal8Bit();
        const char* const argv[] = {"program", "-One", "/no/such", "-two", file};
        Cfg named(5, argv, "/no/such/file", {"-ONE", "-Two", "-three"});
        QCOMPARE(named.value("from"), QString("b"));
    }

    void linesGiveKeysAndValues()
    {
        Cfg cfg = cfgOf("", "\n# nothing\nD \"C:/My Data\"  # note\nh \"b#c\"\n\"my key\" v w\n"
                            "  n  \nr b\r\nu \xe6\xb8\xac\n\n");
        QCOMPARE(cfg.keys(), QStringList({"D", "h", "my key", "n", "r", "u"}));
        QCOMPARE(cfg.values(), QStringList({"C:/My Data", "b#c", "v", "", "b", "\xe6\xb8\xac"}));

        // Later lines replace earlier ones of their key; the list of all lines keeps both.
        cfg = cfgOf("-k|old", "batch :echo \"a b\"\nk 1\nBATCH second # no\n-k new\nk 2\n");
        QCOMPARE(cfg.value("k"), QString("2"));
        QCOMPARE(cfg.linesOf("BATCH"), QStringList({" :echo \"a b\"", " second "}));
        QCOMPARE(cfg.used(), QByteArray("\0\1\1\1\0\0", 6));
        QCOMPARE(cfg.value("K", "none") + cfg.upperValue("K", "none"), QString("none2"));
    }

    void includedFilesLandInOrderAndLoopsAreLeftOut()
    {
        const QByteArray dir = dir_.path().toUtf8();
        const QByteArray roundabout = dir + "/../" + QDir(dir_.path()).dirName().toUtf8();
        write("inner.cfg",
              "n 2\nINCLUDE " + dir + "/x.cfg\nINCLUDE " + roundabout + "/inner.cfg\nn 3\n");
        Cfg cfg = cfgOf("", "n 1\ninclude \"" + dir + "/inner.cfg\"\nINCLUDE " + dir +
                                "/inner.cfg\nInclude /no/such\nn 9\n");
        // The inner file is read twice, since it has ended in between.
        QCOMPARE(cfg.linesOf("N"), QStringList({" 1", " 2", " 3", " 2", " 3", " 9"}));
    }

    void hostileFilesCostOneLine()
    {
        Cfg cfg = cfgOf("-k|v");
        const auto refused = [&cfg](const QString& file, const QString& message) {
            QTest::ignoreMessage(QtDebugMsg, qPrintable(message + " : \"" + file + '"'));
            cfg.readFile(file);
        };
        for (const QString& file : {QString(), dir_.path(), QString("/dev/zero")})
            refused(file, "Can't open config file");
        refused(write("huge", QByteArray(5000000, 'x')), "Config file is too long, not read");
        refused(write("long", QByteArray(1000001, 'x')),
                "Config file has a line that is too long, not read");
        QCOMPARE(cfg.keys(), QStringList("-k"));

        // Twelve files of which each includes the next one ten times would be 10^12 readings.
        const QByteArray fan = dir_.filePath("fan").toUtf8();
        for (int i = 0; i < 12; ++i)
            write("fan" + QString::number(i),
                  ("INCLUDE " + fan + QByteArray::number(i + 1) + "\n").repeated(10));
        write("fan12", "leaf 1\n");
        cfg.readFile(fan + "0");
        QVERIFY(!cfg.linesOf("LEAF").isEmpty());
    }

    void textsAreDecodedByWhatTheyHold()
    {
        for (const QByteArray bytes : {"a\xc2\xb5\r\nb", "\xef\xbb\xbf\x61\xc2\xb5\nb"})
            QCOMPARE(decodeText(bytes), QString::fromUtf8("a\u00b5\nb"));
        QCOMPARE(decodeText(QByteArray("\xff\xfe\x61\0\xb5\0", 6)), QString::fromUtf8("a\u00b5"));
        // Not UTF-8, also when only its last letter is not.
        for (const QByteArray& bytes : {QByteArray("a\0\xb5\n\xff", 5), QByteArray("a\0\n\xc2", 4)})
            QCOMPARE(decodeText(bytes), QString::fromLatin1(bytes).replace(QChar(0), ' '));
    }

    void optionsWinOverTheFile()
    {
        // File (";" ends a line), options, then the roots, the button and the threads of walks.
        const char* const table[][3] = {
            {"", "", "C:/Data|C:/Data|0|0"},
            {"DataRoot /d;BatchRoot /b;ShowAnalyzer2Button 1", "", "/d|/b|1|0"},
            {"DataRoot /d;BatchRoot /b;Threads 4", "-d|/x|-br|/y|-showA2B|1", "/x|/y|1|4"},
            {"ShowAnalyzer2Button 1", "-showA2B|-d", "|C:/Data|0|0"},
            {"dataroot /d;Threads 3", "-D|/x|-threads|2", "C:/Data|C:/Data|0|2"},
            {"-d /f;Threads 3", "-d|/x|-threads|all", "/f|C:/Data|0|0"}};
        for (const auto& [file, options, result] : table) {
            initSettings();
            Cfg cfg = cfgOf(options, QByteArray(file).replace(';', '\n'));
            applySettings(cfg);
            QCOMPARE(DataRoot + '|' + BatchRoot + '|' + (ShowAnalyzer2Button ? '1' : '0') + '|' +
                         QString::number(WalkThreads),
                     result);
        }
    }

    /// What the options for batches do is in test_program.
    void startOptionsAreRead()
    {
        Cfg none = cfgOf("-j|-b");
        QVERIFY(!readStartOptions(none).english && readStartOptions(none).batchFile.isEmpty());
        const QString standard = write("config.cfg", "");
        QCOMPARE(configPath(none, dir_.path()), QFileInfo(standard).canonicalFilePath());
        Cfg english = cfgOf("-e");
        QVERIFY(readStartOptions(english).english);
    }
};

QTEST_GUILESS_MAIN(TestCfg)
#include "test_cfg.moc"
