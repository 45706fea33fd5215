// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "batch/BatchInterpreter.h"
#include "batch/CommandTable.h"
#include "common/Settings.h"

#include <QtTest>

namespace {

/// What a run of a text did, as one text: each command with its arguments in brackets ("~" in
/// front when it stood in a rem stretch), and the run's log.
struct Trace
{
    QString commands;
    QString log;
    int steps = 0;
};

Trace run(BatchInterpreter& interpreter, const QString& text, int mostSteps = 1000)
{
    Trace trace;
    interpreter.start(text.split('\n'));
    for (; trace.steps < mostSteps; ++trace.steps) {
        const BatchOutcome outcome = interpreter.step();
        trace.log += outcome.log;
        if (outcome.kind == BatchOutcome::Ended)
            break;
        if (outcome.kind == BatchOutcome::Continue)
            continue;
        trace.commands += outcome.inRem ? "~" : "";
        trace.commands += outcome.command.word + '[' + outcome.command.args.join('|') + ']';
    }
    return trace;
}

Trace run(const QString& text, int mostSteps = 1000)
{
    BatchInterpreter interpreter;
    return run(interpreter, text, mostSteps);
}

} // namespace

class TestBatchLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineIsTakenApart_data();
    void lineIsTakenApart();
    void tableHoldsEachCommandOnce();
    void commandIsFoundInAnyCase_data();
    void commandIsFoundInAnyCase();
    void textRunsItsCommands_data();
    void textRunsItsCommands();
    void logTellsCommandsLoopsAndEchoes();
    void loopWithNegativeStepNeverEnds();
    void variablesOutliveRunsAndLoopsDoNot();
    void dataRootIsAVariable();
    void replacementEndsAtItsLimits_data();
    void replacementEndsAtItsLimits();
    void hugeArgumentListsStayWithinTheLineLimit();
};

void TestBatchLanguage::lineIsTakenApart_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QStringList>("args");
    QTest::newRow("empty") << ""
                           << "" << QStringList();
    QTest::newRow("blanks") << " \t"
                            << "" << QStringList();
    QTest::newRow("comment") << "  # save_image a"
                             << "" << QStringList();
    QTest::newRow("hash behind a word is an argument")
        << "save_image a.tif # note"
        << "save_image" << QStringList({"a.tif", "#", "note"});
    QTest::newRow("quotes") << "w \"a b\"c \"\" d"
                            << "w" << QStringList({"a b", "c", "d"});
    QTest::newRow("first item empty") << "\"\" foo"
                                      << "" << QStringList();
    QTest::newRow("quoted word") << "\"a b\" c"
                                 << "a b" << QStringList("c");
    QTest::newRow("quote not closed") << "w \"a b"
                                      << "w" << QStringList("a b");
    QTest::newRow("keyword") << " :For x"
                             << ":For" << QStringList("x");
}

void TestBatchLanguage::lineIsTakenApart()
{
    QFETCH(QString, line);
    const CmdLine cmd(line);
    QTEST(cmd.word, "word");
    QTEST(cmd.args, "args");
    QCOMPARE(cmd.line, line);
    QCOMPARE(cmd.valid, !cmd.word.isEmpty());
    QCOMPARE(cmd.isKeyword, cmd.word.startsWith(':'));
    QCOMPARE(cmd.arg(99), QString());
    QVERIFY(!cmd.simplified.contains('#'));
    QCOMPARE(cmd.ticket, 0);
}

void TestBatchLanguage::tableHoldsEachCommandOnce()
{
    QCOMPARE(exCmdTable().size(), 127);
    QSet<int> ids;
    QSet<QString> words;
    for (const ExCmdRow& row : exCmdTable()) {
        ids.insert(row.id);
        words.insert(row.word.toUpper());
        QCOMPARE(exCmdName(row.id), row.word);
        QCOMPARE(exCmdId(CmdLine('"' + row.word.toUpper() + '"')), row.id);
    }
    QCOMPARE(ids.size(), 127);
    QCOMPARE(words.size(), 127);
    for (int id = 0; id < 127; ++id)
        QVERIFY(ids.contains(id));
    QCOMPARE(exCmdName(127), "UnKnow ExCMD id");
    QCOMPARE(exCmdName(-1), "UnKnow ExCMD id");
}

void TestBatchLanguage::commandIsFoundInAnyCase_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("keyword");
    QTest::newRow("I1 comes first") << "clear_I1_files" << 0 << 7;
    QTest::newRow("load") << "LOAD_i1_FILES new a.tif" << 4 << 7;
    QTest::newRow("I0 comes first") << "cut_f_i0 1" << 8 << 7;
    QTest::newRow("area") << "select_region 1 2 3 4" << 54 << 7;
    QTest::newRow("LCF std") << "Analyzer_Set_lcf_Std" << 60 << 7;
    QTest::newRow("map") << "calib_load_map x" << 99 << 7;
    QTest::newRow("quit") << "Quit" << 114 << 7;
    QTest::newRow("dark") << "clear_i1_dark_area" << 125 << 7;
    QTest::newRow("no command") << "\"not ex cmd\"" << 126 << 7;
    QTest::newRow("unknown") << "save_imag" << 126 << 7;
    QTest::newRow("no word") << "" << 126 << 7;
    QTest::newRow("for") << ":FOR" << 126 << 0;
    QTest::newRow("rem_end") << ":rem_END" << 126 << 4;
    QTest::newRow("let") << ":let" << 126 << 6;
    QTest::newRow("unknown keyword") << ":lets" << 126 << 7;
}

void TestBatchLanguage::commandIsFoundInAnyCase()
{
    QFETCH(QString, line);
    const CmdLine cmd(line);
    QTEST(int(exCmdId(cmd)), "id");
    QTEST(int(keywordId(cmd)), "keyword");
    QCOMPARE(isExCmd(cmd), exCmdId(cmd) != ExCmdNone);
    QCOMPARE(isKeyword(cmd), keywordId(cmd) != KeywordNone);
}

void TestBatchLanguage::textRunsItsCommands_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("commands");
    const auto row = [](const char* name, const char* text, const char* commands) {
        QTest::newRow(name) << text << commands;
    };
    row("up", ":for L %i% 1 3\nzoom_in a%i%.tif\n:next L",
        "zoom_in[a1.tif]zoom_in[a2.tif]zoom_in[a3.tif]");
    row("down", ":for L $n$ 3 1\nzoom_in $n$\n:next L", "zoom_in[3]zoom_in[2]zoom_in[1]");
    row("body runs at least once", ":for L $n$ 1 1\nzoom_in $n$\n:next L", "zoom_in[1]");
    row("leading zeros", ":for L $n$ 001 003 2\nzoom_in $n$\n:next L", "zoom_in[001]zoom_in[003]");
    row("carry into the zeros", ":for L n 008 11\nzoom_in n\n:next L",
        "zoom_in[008]zoom_in[009]zoom_in[010]zoom_in[011]");
    row("counter outgrows its zeros", ":for L n 01 100 99\nzoom_in n\n:next L",
        "zoom_in[01]zoom_in[01100]");
    row("step 0 is 1", ":for L n 1 3 0\nzoom_in n\n:next L", "zoom_in[1]zoom_in[2]zoom_in[3]");
    row("step passes the end", ":for L n 5 1 -3\nzoom_in n\n:end\n:next L", "zoom_in[5]");
    row("bounds that are no numbers", ":for L n a b\nzoom_in n\n:next L", "zoom_in[a]");
    row("nested", ":for A a 1 2\n:for B b 1 2\nzoom_in a-b\n:next B\n:next A",
        "zoom_in[1-1]zoom_in[1-2]zoom_in[2-1]zoom_in[2-2]");
    row("ended loop is still replaced", ":for L n 1 2\n:next L\nzoom_in n", "zoom_in[2]");
    row("name used again", ":for L x 1 2\n:next L\n:for L n 7 7\nzoom_in x-n\n:next L",
        "zoom_in[x-7]");
    row("next of an unknown name", ":next X\nzoom_in", "zoom_in[]");
    row("quoted loop text falls apart", ":for L \"a b\" 1 1\nzoom_in b1", "zoom_in[b1]");
    row("bounds are not replaced", ":let b 3\n:for L n 1 $b$\nzoom_in n\n:next L",
        "zoom_in[1]zoom_in[0]");
    row("variable", ":let x \"5 6\"\nZoom_In $x$ $X$", "Zoom_In[5 6|$X$]");
    row("new value", ":let x 1\n:let x 2\nzoom_in $x$", "zoom_in[2]");
    row("later keys are replaced in values", ":let a $b$\n:let b 1\nzoom_in $a$", "zoom_in[1]");
    row("earlier keys are not", ":let b 1\n:let a $b$\nzoom_in $a$", "zoom_in[$b$]");
    row("loops come before variables", ":for L n 1 1\n:let 1 one\nzoom_in $n$", "zoom_in[one]");
    row("text joined by a replacement", ":for L ab X X\nzoom_in aabb", "zoom_in[aXb]");
    row("empty variable name", ":let\nzoom_in a$$b", "zoom_in[ab]");
    row("unknown words are skipped", "nonsense a b\n:nonsense\n# zoom_in\nzoom_in", "zoom_in[]");
    row("word is not replaced", ":for L zoom 1 1\nzoom_in zoom", "zoom_in[1]");
    row("rem stretch",
        ":rem_start\nzoom_in $DataRoot$\n:let x 1\n:for L n 1 2\n:next L\n"
        ":rem_end\nzoom_in $x$ n",
        "~zoom_in[$DataRoot$]zoom_in[$x$|n]");
    row("rem stretches do not nest", ":rem_start\n:rem_start\n:rem_end\nzoom_in", "zoom_in[]");
    row("end", "zoom_in 1\n:END\nzoom_in 2", "zoom_in[1]");
    row("end in a rem stretch", ":rem_start\nzoom_in 1\n:end\n:rem_end\nzoom_in", "~zoom_in[1]");
    row("continued line", "zoom_in a \\  \nb\\\nc", "zoom_in[a|bc]");
    row("continuation ends at an empty line", "zoom_in a\\\n\nzoom_in b", "zoom_in[a]zoom_in[b]");
    row("continuation in a loop", ":for L \\\nn 1 2\nzoom_in \\\nn\n:next L",
        "zoom_in[1]zoom_in[2]");
    row("backslash on the last line is text", "zoom_in a \\", "zoom_in[a|\\]");
    row("quoted blanks", "zoom_in \"a  b\" \"\" c", "zoom_in[a  b|c]");
}

void TestBatchLanguage::textRunsItsCommands()
{
    QFETCH(QString, text);
    const Trace trace = run(text);
    QTEST(trace.commands, "commands");
    QVERIFY(trace.steps < 1000);
}

void TestBatchLanguage::logTellsCommandsLoopsAndEchoes()
{
    QTest::ignoreMessage(QtDebugMsg, "echo at 1");
    QTest::ignoreMessage(QtDebugMsg, "echo at 2");
    const Trace trace = run(":for L n 1 2\n:echo \"at n\" more\nzoom_in n %1 %2\n:next L\n"
                            ":let x 1\n:next X\n:rem_start\nzoom_in\n:rem_end");
    QCOMPARE(trace.log, "for L : n = 1\n"
                        "echo at 1zoom_in : 1 %1 %2\n"
                        "next L : n = 2\n"
                        "echo at 2zoom_in : 2 %1 %2\n"
                        "next L : n = 2\n"
                        "next  :  = \n");
}

void TestBatchLanguage::loopWithNegativeStepNeverEnds()
{
    BatchInterpreter interpreter;
    const Trace trace = run(interpreter, ":for L n 2147483646 2147483647 -2147483647\n:next L", 50);
    QCOMPARE(trace.steps, 50);
    // Counters below any int are read as 0 again: no overflow on the way.
    QCOMPARE(interpreter.loops.first().advance(), true);
}

void TestBatchLanguage::variablesOutliveRunsAndLoopsDoNot()
{
    BatchInterpreter interpreter;
    run(interpreter, ":let x 1\n:for L n 7 7");
    QCOMPARE(run(interpreter, "zoom_in $x$ n").commands, "zoom_in[1|n]");
    // A text that replaces the running one goes on at its line number.
    interpreter.replaceText({"zoom_in a", "zoom_in b"});
    interpreter.lineNo = 1;
    QCOMPARE(interpreter.step().command.arg(0), "b");
    QCOMPARE(int(interpreter.step().kind), int(BatchOutcome::Ended));
}

void TestBatchLanguage::dataRootIsAVariable()
{
    DataRoot = "/data";
    BatchInterpreter interpreter;
    DataRoot = "/elsewhere";
    QCOMPARE(run(interpreter, "zoom_in $DataRoot$/a").commands, "zoom_in[/data/a]");
    QCOMPARE(interpreter.variables.used(), QByteArray("\1", 1));
    initSettings();
}

void TestBatchLanguage::replacementEndsAtItsLimits_data()
{
    QTest::addColumn<QString>("setUp");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("result");
    const QString x1000(1000, 'x');
    QTest::newRow("value holds its key") << ":let a x$a$"
                                         << "$a$" << x1000 + "$a$|last";
    QTest::newRow("loop holds its text") << ":for L i xi 1"
                                         << "i" << x1000 + "i|last";
    QTest::newRow("empty loop text") << ":for L"
                                     << "a"
                                     << "a|$z$";
    QTest::newRow("other arguments have their own limit") << ":let a $a$"
                                                          << "$a$"
                                                          << "$a$|last";
    QTest::newRow("length") << ":let a " + QString(600000, 'x') + "$a$"
                            << "$a$" << QString(1200000, 'x') + "$a$|last";
}

void TestBatchLanguage::replacementEndsAtItsLimits()
{
    QFETCH(QString, setUp);
    QFETCH(QString, argument);
    BatchInterpreter interpreter;
    run(interpreter, setUp + "\n:let z last");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("ended at its limit"));
    const Trace trace = run(interpreter, setUp + "\nzoom_in " + argument + " $z$");
    QFETCH(QString, result);
    const QString commands = "zoom_in[" + result + "]";
    QVERIFY2(trace.commands == commands, qPrintable(trace.commands.left(200)));
}

void TestBatchLanguage::hugeArgumentListsStayWithinTheLineLimit()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("ended at its limit"));
    QElapsedTimer timer;
    timer.start();
    const Trace trace = run(":for L i " + QString(5000, 'x') + "\nzoom_in " +
                            QString("iiiiiiii ").repeated(100000));
    QVERIFY(trace.commands.size() < 20000000);
    QVERIFY(timer.elapsed() < 10000);
}

QTEST_GUILESS_MAIN(TestBatchLanguage)
#include "test_batch_language.moc"
