#include "batch/BatchInterpreter.h"
#include "batch/CommandTable.h"
#include "common/Settings.h"

#include <QtTest>

/// The batch language, line by line and text by text.
class TestBatchLanguage : public QObject
{
    Q_OBJECT

    QString log_;
    QStringList messages_;
    int steps_ = 0;

    /// Runs a text, where ";" ends a line and "@" is a command, and gives the arguments of each
    /// command ("~" in front when it stood in a rem stretch). What it logs is kept.
    QString run(BatchInterpreter& interpreter, const QString& text, int mostSteps = 1000)
    {
        QString commands;
        log_.clear();
        messages_.clear();
        interpreter.start(QString(text).replace('@', "zoom_in").replace(';', '\n'));
        for (steps_ = 0; steps_ < mostSteps; ++steps_) {
            const BatchOutcome outcome = interpreter.step();
            log_ += outcome.log;
            messages_ += outcome.messages;
            if (outcome.kind == BatchOutcome::Ended)
                break;
            if (outcome.kind != BatchOutcome::Continue)
                commands += (outcome.inRem ? "~" : "") + outcome.line.args.join('|') + ';';
        }
        return commands;
    }

private Q_SLOTS:
    void linesAreTakenApartAndCommandsFoundInAnyCase()
    {
        // The line, then its word and arguments.
        for (const QString row : {"  # save_image a||", "save a.tif # note|save|a.tif|#|note",
                                  "w \"a b\"c \"\" d|w|a b|c|d", "\"\" foo||", "\"a b\" c|a b|c",
                                  "w \"a b|w|a b", " :For x|:For|x"}) {
            const CmdLine cmd(row.section('|', 0, 0));
            QCOMPARE(cmd.line + '|' + cmd.word + '|' + cmd.args.join('|'), row);
            QCOMPARE(cmd.valid, !row.endsWith('|'));
        }

        for (const ExCmdRow& row : exCmdTable() + extensionTable()) {
            QCOMPARE(exCmdName(row.id), row.word); // also tells an id that two words have
            QCOMPARE(exCmdId(CmdLine('"' + row.word.toUpper() + '"')), row.id);
        }
    }

    void textRunsItsCommands()
    {
        const char* const rows[][2] = {
            {":for L %i% 1 2 0;@ a%i%.tif;:next L", "a1.tif;a2.tif;"},
            // Counters keep their leading zeros, and put one in front when they outgrow them.
            {":for L n 008 010;@ n;:next L", "008;009;010;"},
            {":for L n 01 100 99;@ n;:next L", "01;01100;"},
            {":for A a 1 2;:for B b 1 2;@ a-b;:next B;:next A", "1-1;1-2;2-1;2-2;"},
            {":for L n 1 2;:next L;@ n", "2;"},              // an ended loop is still replaced
            {":let b 3;:for L n 1 $b$;@ n;:next L", "1;0;"}, // bounds are not replaced
            {":let x \"5 6\";@ $x$ $X$", "5 6|$X$;"},
            {":let a $b$;:let b 1;@ $a$", "1;"}, // values are replaced by later keys only
            {":let b 1;:let a $b$;@ $a$", "$b$;"},
            {":for L n 1 1;:let 1 one;@ $n$", "one;"}, // loops come before variables
            {"nonsense a;:nonsense;# @;@", ";"},
            {":rem_start;@ $DataRoot$;:let x 1;:rem_end;@ $x$", "~$DataRoot$;$x$;"},
            {":rem_start;@ 1;:END;:rem_end;@", "~1;"},
            {"@ a \\  ;b\\;c", "a|bc;"},
            {":for L \\;n 1 2;@ \\;n;:next L", "1;2;"},
            {"@ a \\", "a|\\;"}, // no line to go on with
        };
        for (const auto& [text, commands] : rows) {
            BatchInterpreter interpreter;
            QCOMPARE(text + ("\n" + run(interpreter, text)), text + ("\n" + QString(commands)));
        }
    }

    void logTellsCommandsLoopsAndEchoes()
    {
        BatchInterpreter interpreter;
        run(interpreter, ":for L n 1 1;:echo \"at n\" more;@ n %1 %2;:next L;"
                         ":next X;:rem_start;@;:rem_end");
        QCOMPARE(log_, "for L : n = 1\necho at 1zoom_in : 1 %1 %2\nnext L : n = 1\nnext  :  = \n");
        QCOMPARE(messages_, QStringList("echo at 1"));
    }

    /// Lines are counted from 1 as they stand in the text, continued and in loops too.
    void commandsAndUnknownWordsHaveTheirLineNumbers()
    {
        BatchInterpreter interpreter;
        interpreter.start(":for L n 1 2\nsave_imge \\\n a\nzoom_in\n:nxt\n:next L\n"
                          ":rem_start\nfoo\n:rem_end\n\nzoom_in",
                          true);
        QString found;
        for (BatchOutcome o; (o = interpreter.step()).kind != BatchOutcome::Ended;) {
            if (o.failure) {
                QCOMPARE(o.log, "Err: " + o.failure->text() + '\n');
                found += QString::number(o.failure->lineNo) + o.failure->word + ' ';
                QVERIFY(o.failure->text().startsWith("batch line "));
            }
            if (o.kind == BatchOutcome::Command)
                found += QString::number(o.line.lineNo) + ' ';
        }
        QCOMPARE(found, "2save_imge 4 5:nxt 4 11 "); // each line is told once
    }

    void aTextInPlaceOfAnotherGoesOnAtItsLineNumber()
    {
        BatchInterpreter interpreter;
        interpreter.start(":for L n 1 2\nzoom_in n\n:next L");
        interpreter.step();
        QCOMPARE(interpreter.step().line.arg(0), "1");
        interpreter.replaceText(":echo x\nzoom_in y-n\n:next L\nzoom_in z");
        interpreter.step();
        QCOMPARE(interpreter.step().line.arg(0), "y-2");
        interpreter.step();
        QCOMPARE(interpreter.step().line.arg(0), "z");
        interpreter.replaceText("zoom_in short");
        QCOMPARE(int(interpreter.step().kind), int(BatchOutcome::Ended));
    }

    void variablesOutliveRunsAndLoopsDoNot()
    {
        DataRoot = "/data";
        BatchInterpreter interpreter;
        DataRoot = "/elsewhere";
        run(interpreter, ":let x 1;:for L n 7 7");
        QCOMPARE(run(interpreter, "@ $x$ n $DataRoot$/a"), "1|n|/data/a;");
    }

    void runawayTextsEndAtTheirLimits()
    {
        BatchInterpreter endless;
        run(endless, ":for L n 2147483646 2147483647 -2147483647;:next L", 50);
        QCOMPARE(steps_, 50);
        // Counters below any int are read as 0 again: no overflow on the way.
        QVERIFY(endless.loops.first().advance());
        endless.loops.first().leave();
        QVERIFY(!endless.loops.first().advance());

        const QString x(1000, 'x');
        // Set-up, argument, result; the variable of the next argument is replaced none the less.
        const QString rows[][3] = {{":let a x$a$", "$a$", x + "$a$|last;"},
                                   {":for L i xi 1", "i", x + "i|last;"},
                                   {":for L", "a", "a|$z$;"}};
        for (const auto& [setUp, argument, result] : rows) {
            BatchInterpreter interpreter;
            run(interpreter, setUp + ";:let z last");
            QVERIFY(run(interpreter, setUp + ";@ " + argument + " $z$") == result);
            QVERIFY(messages_.value(0).contains("line 2 was ended at its limit"));
        }
        const QString many = QString("iiiiiiii ").repeated(100000);
        QVERIFY(run(endless, ":for L i " + x.repeated(5) + ";@ " + many).size() < 20000000);
    }
};

QTEST_GUILESS_MAIN(TestBatchLanguage)
#include "test_batch_language.moc"
