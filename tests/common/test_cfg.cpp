// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "common/Cfg.h"
#include "common/Settings.h"
#include "common/TextFile.h"

#include <QtTest>

namespace {

Cfg cfgOf(const QList<QByteArray>& words)
{
    QVector<const char*> argv = {"program"};
    for (const QByteArray& word : words)
        argv.append(word.constData());
    return Cfg(argv.size(), argv.constData(), QString(), {});
}

} // namespace

class TestCfg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void commandLineGivesValuesAndRests();
    void fileOptionNamesTheFileToRead();
    void lineGivesKeyAndValue_data();
    void lineGivesKeyAndValue();
    void laterLinesReplaceAndAllLinesSurvive();
    void keysInCapitalsFindAnyCase();
    void includedFilesLandInOrder();
    void fileThatIsBeingReadIsNotIncludedAgain();
    void hostileFilesCostOneLine();
    void textsAreDecodedByWhatTheyHold();
    void optionsWinOverTheFile_data();
    void optionsWinOverTheFile();
    void configPathIsTheLastOptionGiven();
    void startOptionsAreRead();

private:
    QString write(const QString& name, const QByteArray& text);

    QScopedPointer<QTemporaryDir> dir_;
};

void TestCfg::init()
{
    dir_.reset(new QTemporaryDir);
    QVERIFY(dir_->isValid());
    initSettings();
}

QString TestCfg::write(const QString& name, const QByteArray& text)
{
    QFile file(dir_->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("can't write a test file");
    return file.fileName();
}

void TestCfg::commandLineGivesValuesAndRests()
{
    Cfg cfg = cfgOf({"stray", "-d", "a", "b", "-x", "-b", "-e", "-d", "c"});
    QCOMPARE(cfg.keys(), QStringList({"-d", "-x", "-b", "-e"}));
    QCOMPARE(cfg.value("-d"), QStringLiteral("c"));
    QCOMPARE(cfg.linesOf("-D"), QStringList({"a b", "c"}));
    QCOMPARE(cfg.value("-b", "fallback"), QString());
    QCOMPARE(cfg.value("-D", "fallback"), QStringLiteral("fallback"));
    QVERIFY(!cfg.contains("stray"));
}

void TestCfg::fileOptionNamesTheFileToRead()
{
    const QByteArray first = write("a.cfg", "from a").toLocal8Bit();
    const QByteArray second = write("b.cfg", "from b").toLocal8Bit();
    const char* const argv[] = {"program", "-One", first, "-two", second};
    Cfg cfg(5, argv, QStringLiteral("/no/such/file"), {"-ONE", "-Two", "-three"});
    QCOMPARE(cfg.value("from"), QStringLiteral("b"));
}

void TestCfg::lineGivesKeyAndValue_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("quoted with comment")
        << QByteArray("DataRoot \"C:/My Data\"  # comment") << "DataRoot"
        << "C:/My Data";
    QTest::newRow("hash in quotes") << QByteArray("a \"b#c\"") << "a"
                                    << "b#c";
    QTest::newRow("quoted key") << QByteArray("\"my key\" v w") << "my key"
                                << "v";
    QTest::newRow("no value") << QByteArray("  a  ") << "a"
                              << "";
    QTest::newRow("line ends of another system") << QByteArray("a b\r\n") << "a"
                                                 << "b";
    QTest::newRow("UTF-8") << QByteArray("a \xe6\xb8\xac\xe5\xae\x9a") << "a"
                           << QString::fromUtf8("\u6e2c\u5b9a");
}

void TestCfg::lineGivesKeyAndValue()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, key);
    Cfg cfg;
    cfg.readFile(write("x.cfg", "\n# nothing\n" + line + "\n\n"));
    QCOMPARE(cfg.keys(), QStringList(key));
    QTEST(cfg.value(key), "value");
}

void TestCfg::laterLinesReplaceAndAllLinesSurvive()
{
    Cfg cfg = cfgOf({"-k", "old"});
    cfg.readFile(write("x.cfg", "batch :echo \"a b\"\nk 1\nBATCH second line # no\n-k new\nk 2\n"));
    QCOMPARE(cfg.value("k"), QStringLiteral("2"));
    QCOMPARE(cfg.value("-k"), QStringLiteral("new"));
    QCOMPARE(cfg.linesOf("BATCH"), QStringList({" :echo \"a b\"", " second line "}));
    QCOMPARE(cfg.used(), QByteArray("\1\1\1\1\0\0", 6));

    cfg.setValue("k", "3");
    QCOMPARE(cfg.value("k"), QStringLiteral("3"));
    QCOMPARE(cfg.used().size(), 6);
}

void TestCfg::keysInCapitalsFindAnyCase()
{
    Cfg cfg;
    cfg.readFile(write("x.cfg", "dataroot x\nErrpoints bad.txt\n"));
    QVERIFY(!cfg.contains("DataRoot"));
    QVERIFY(cfg.containsUpper("ERRPOINTS"));
    QCOMPARE(cfg.upperValue("ERRPOINTS"), QStringLiteral("bad.txt"));
    QCOMPARE(cfg.upperValue("OTHER", "fallback"), QStringLiteral("fallback"));
}

void TestCfg::includedFilesLandInOrder()
{
    const QByteArray inner = write("inner.cfg", "a 2\nb 2\nline inner\n").toUtf8();
    Cfg cfg;
    cfg.readFile(write("outer.cfg", "a 1\nline first\ninclude \"" + inner +
                                        "\"\nb 3\nline last\nInclude /no/such/file\n"));
    QCOMPARE(cfg.value("a"), QStringLiteral("2"));
    QCOMPARE(cfg.value("b"), QStringLiteral("3"));
    QCOMPARE(cfg.linesOf("LINE"), QStringList({" first", " inner", " last"}));
    QVERIFY(!cfg.containsUpper("INCLUDE"));
}

void TestCfg::fileThatIsBeingReadIsNotIncludedAgain()
{
    const QString outer = dir_->filePath("outer.cfg");
    const QString inner = dir_->filePath("inner.cfg");
    write("outer.cfg",
          "n 1\nINCLUDE " + inner.toUtf8() + "\nINCLUDE " + inner.toUtf8() + "\nn 9\n");
    write("inner.cfg", "n 2\nINCLUDE " + outer.toUtf8() + "\nINCLUDE " +
                           dir_->filePath("../").toUtf8() + QDir(dir_->path()).dirName().toUtf8() +
                           "/inner.cfg\nn 3\n");
    Cfg cfg;
    cfg.readFile(outer);
    // The inner file is read twice, since it has ended in between; the loops are left out.
    QCOMPARE(cfg.linesOf("N"), QStringList({" 1", " 2", " 3", " 2", " 3", " 9"}));
}

void TestCfg::hostileFilesCostOneLine()
{
    Cfg cfg = cfgOf({"-k", "v"});
    const auto refused = [&cfg](const QString& file, const QString& message) {
        QTest::ignoreMessage(QtDebugMsg,
                             qPrintable(QStringLiteral("%1 \"%2\"").arg(message, file)));
        cfg.readFile(file);
    };
    refused("/no/such.cfg", "Can't open config file : ");
    refused("", "Can't open config file : ");
    refused(dir_->path(), "Can't open config file : ");
    refused("/dev/zero", "Can't open config file : ");
    refused(write("huge.cfg", QByteArray(5000000, 'x')), "Config file is too long, not read : ");
    refused(write("long.cfg", QByteArray(70000, 'x')),
            "Config file has a line that is too long, not read : ");
    QCOMPARE(cfg.keys(), QStringList("-k"));

    // Twelve files of which each includes the next one ten times would be 10^12 readings.
    for (int i = 0; i < 12; ++i) {
        const QByteArray next = dir_->filePath(QStringLiteral("fan%1.cfg").arg(i + 1)).toUtf8();
        write(QStringLiteral("fan%1.cfg").arg(i), ("INCLUDE " + next + "\n").repeated(10));
    }
    write("fan12.cfg", "leaf 1\n");
    QElapsedTimer timer;
    timer.start();
    cfg.readFile(dir_->filePath("fan0.cfg"));
    QVERIFY(timer.elapsed() < 5000);
    QVERIFY(!cfg.linesOf("LEAF").isEmpty());
}

void TestCfg::textsAreDecodedByWhatTheyHold()
{
    const QString text = QString::fromUtf8("a\u00b5\nb");
    QCOMPARE(decodeText("a\xc2\xb5\r\nb"), text);
    QCOMPARE(decodeText("\xef\xbb\xbf"
                        "a\xc2\xb5\nb"),
             text);
    QCOMPARE(decodeText(QByteArray("\xff\xfe"
                                   "a\0\xb5\0\n\0b\0",
                                   10)),
             text);
    // Not UTF-8: whatever the system makes of it, lines and plain letters must survive.
    const QStringList lines = decodeText("x \xb5\xff\ny").split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].startsWith(QLatin1String("x ")));
}

void TestCfg::optionsWinOverTheFile_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QString>("dataRoot");
    QTest::addColumn<QString>("batchRoot");
    QTest::addColumn<bool>("button");
    QTest::newRow("defaults") << QByteArray() << QByteArray() << "C:/Data"
                              << "C:/Data" << false;
    QTest::newRow("file") << QByteArray("DataRoot /d\nBatchRoot /b\nShowAnalyzer2Button 1")
                          << QByteArray() << "/d"
                          << "/b" << true;
    QTest::newRow("options win") << QByteArray("DataRoot /d\nBatchRoot /b")
                                 << QByteArray("-d|/x|-br|/y|-showA2B|1") << "/x"
                                 << "/y" << true;
    QTest::newRow("button switched off by an option without value")
        << QByteArray("ShowAnalyzer2Button 1") << QByteArray("-showA2B|-d") << ""
        << "C:/Data" << false;
    QTest::newRow("only 1 is on") << QByteArray("ShowAnalyzer2Button 2") << QByteArray()
                                  << "C:/Data"
                                  << "C:/Data" << false;
    QTest::newRow("file keys are case-sensitive")
        << QByteArray("dataroot /d\nshowanalyzer2button 1") << QByteArray("-D|/x") << "C:/Data"
        << "C:/Data" << false;
    QTest::newRow("a key of the file replaces an option")
        << QByteArray("-d /f") << QByteArray("-d|/x") << "/f"
        << "C:/Data" << false;
}

void TestCfg::optionsWinOverTheFile()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, options);
    Cfg cfg = cfgOf(options.split('|'));
    cfg.readFile(write("x.cfg", file));
    applySettings(cfg);
    QTEST(DataRoot, "dataRoot");
    QTEST(BatchRoot, "batchRoot");
    QTEST(ShowAnalyzer2Button, "button");
}

void TestCfg::configPathIsTheLastOptionGiven()
{
    Cfg none;
    QCOMPARE(configPath(none, dir_->path()), QString());
    const QString standard = write("config.cfg", "");
    QCOMPARE(configPath(none, dir_->path()), QFileInfo(standard).canonicalFilePath());
    Cfg one = cfgOf({"-c", "a.cfg"});
    QCOMPARE(configPath(one, dir_->path()), QStringLiteral("a.cfg"));
    Cfg both = cfgOf({"-config", "b.cfg", "-c", "a.cfg"});
    QCOMPARE(configPath(both, dir_->path()), QStringLiteral("b.cfg"));
}

void TestCfg::startOptionsAreRead()
{
    Cfg none = cfgOf({"-j", "-b"});
    StartOptions options = readStartOptions(none);
    QVERIFY(!options.english && !options.execBatch && !DebugMode);
    QCOMPARE(options.batchFile, QString());

    Cfg all = cfgOf({"-e", "-x", "-dbg", "-b", "run.bat"});
    options = readStartOptions(all);
    QVERIFY(options.english && options.execBatch && options.debug && DebugMode);
    QCOMPARE(options.batchFile, QStringLiteral("run.bat"));
}

QTEST_GUILESS_MAIN(TestCfg)
#include "test_cfg.moc"
