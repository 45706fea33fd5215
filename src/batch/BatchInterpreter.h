#pragma once

#include "batch/CmdLine.h"
#include "batch/CommandFailure.h"
#include "common/Cfg.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// One loop of a batch text, from its ":for" line on. An ended loop stays with its last value.
struct BatchLoop
{
    QString name;       ///< ties ":next" to ":for"
    int startLine = -1; ///< index of the ":for" line, of its last one when it is continued; -1
                        ///< for an empty record
    int behind = -1;    ///< where the line behind it begins in the text; -1 when not yet known
    QString var;        ///< text that is replaced in arguments
    QString first, last;
    QString current; ///< value now
    QString step;    ///< as written, empty when not given

    /// Moves `current` on, and tells whether the loop goes on; an ended loop keeps its value. All
    /// fields count as decimal integers, a text that is none as 0. The bounds alone decide the
    /// direction, so a negative step never ends. Leading zeros of `first` are kept.
    bool advance();

    /// Lets no pass follow the present one.
    void leave();
};

/// What one step of the interpreter came to.
struct BatchOutcome
{
    enum Kind
    {
        Continue, ///< take the next step
        Ended,    ///< the text has ended, or ":end" came: no line was taken
        Command,  ///< `line` is to be executed before the next step
    };

    Kind kind = Continue;
    /// What was taken; the loop texts and variables are replaced in arguments of a command and of
    /// ":echo". Without a word behind the end of the text.
    CmdLine line;
    bool inRem = false;    ///< it stands in a rem stretch: a command must have no effect
    QString log;           ///< text for the batch log; may be empty
    QStringList messages;  ///< lines for the program's log
    bool cutShort = false; ///< replacement was ended at its limit; a message tells it too
    std::optional<CommandFailure> failure; ///< of the line itself; `log` tells it too
};

/// Interprets a batch text line by line. Knows no threads, signals or windows, and logs nothing but
/// quotes that are not closed: who takes the steps tells what comes of them, or, where a text is
/// only checked, does not.
///
/// Nothing in a text ends its run: unknown words are skipped, each line of them with one failure a
/// run, and missing arguments are empty. The text is kept as it came: its lines,
/// which may be a million, are cut out of it one after the other.
class BatchInterpreter
{
public:
    /// The variables start with "$DataRoot$", the data root of this moment, and those of the
    /// command line.
    BatchInterpreter();

    /// Begins a run of the text: at its first line, without loops, with the variables of earlier
    /// runs. Lines end with "\n"; `ofConfig` says that they are the configuration's batch lines.
    void start(const QString& text, bool ofConfig = false);

    /// Puts another text in place of the one that runs, which goes on at its line number.
    void replaceText(const QString& text, bool ofConfig = false);

    /// Leaves a rem stretch; only this and ":rem_end" do.
    void leaveRem() { inRem = false; }

    /// Takes one line with its continuation lines.
    BatchOutcome step();

    /// Replaces loop texts, then variables, in each argument: the first occurrence, again and
    /// again. A text that contains itself would never end, so one argument gets at most 1,000
    /// replacements and stops growing past 1,000,000 characters; a line gets at most 100,000 and
    /// 16,000,000; what stands then is the argument. True when a limit was reached.
    bool replaceIn(QStringList& args);

    int lineNo = 0; ///< index of the next line to take
    bool inRem = false;
    Cfg variables;
    QVector<BatchLoop> loops; ///< in the order of their start

private:
    QString takeLine();
    QString joinedLine();
    void goTo(int line);
    void goBehind(BatchLoop& loop);
    void runLine(BatchOutcome& outcome);
    void execKeyword(int keyword, BatchOutcome& outcome);
    void replaceArguments(BatchOutcome& outcome);
    QString execFor(const CmdLine& line);
    QString execNext(const CmdLine& line);
    QString execEcho(BatchOutcome& outcome);
    std::optional<CommandFailure> unknownWord(const CmdLine& line);

    QString text_;
    int at_ = 0;          ///< where the line with lineNo begins; past the end when there is none
    int lineStartNo_ = 0; ///< index of the line that is being run
    bool ofConfig_ = false;
    bool lineOpen_ = false; ///< the log's last line, an echo, has no end
    QSet<int> toldLines_;   ///< whose unknown words were told
};
