#include "batch/BatchInterpreter.h"

#include "batch/CommandTable.h"
#include "common/Settings.h"
#include "common/TextItems.h"

#include <algorithm>

namespace {

constexpr int mostReplacements = 1000;
constexpr int longestArgument = 1000000;
constexpr int mostLineReplacements = 100000;
constexpr int longestLine = 16000000;
/// What is logged of the arguments of a command, in characters; a viewer lays out a line as a
/// whole.
constexpr int longestLoggedArgs = 10000;

const QChar blank = QLatin1Char(' ');

/// Counts the replacements in the arguments of one line, and tells when they must end.
class ReplaceLimit
{
public:
    void beginArgument()
    {
        inArgument_ = 0;
        argumentDone_ = false;
    }

    /// Counts one replacement that left the argument `size` characters long.
    void count(int size, int growth)
    {
        ++inArgument_;
        ++inLine_;
        grown_ += growth;
        argumentDone_ = inArgument_ >= mostReplacements || size > longestArgument;
        lineDone_ = inLine_ >= mostLineReplacements || grown_ > longestLine;
        reached_ = reached_ || argumentDone_ || lineDone_;
    }

    bool argumentDone() const { return argumentDone_ || lineDone_; }
    bool lineDone() const { return lineDone_; }
    bool reached() const { return reached_; }

private:
    int inArgument_ = 0;
    int inLine_ = 0;
    qint64 grown_ = 0;
    bool argumentDone_ = false;
    bool lineDone_ = false;
    bool reached_ = false;
};

/// Replaces the first `what` in the argument by `by` as long as there is one, and tells whether
/// there was. What lies before a replacement holds no occurrence, so the next search starts where
/// one could reach into the new text.
bool replaceWhileFound(QString& arg, const QString& what, const QString& by, ReplaceLimit& limit)
{
    const int overlap = qMax(0, what.size() - 1);
    int at = arg.indexOf(what);
    if (at < 0)
        return false;
    for (; at >= 0 && !limit.argumentDone(); at = arg.indexOf(what, qMax(0, at - overlap))) {
        arg.replace(at, what.size(), by);
        limit.count(arg.size(), by.size() - what.size());
    }
    return true;
}

/// The arguments as the batch log shows them.
QString loggedArgs(const QStringList& args)
{
    QString text;
    for (int i = 0; i < args.size() && text.size() <= longestLoggedArgs; ++i)
        text += (i > 0 ? QString(blank) : QString()) + args[i];
    return text.size() > longestLoggedArgs ? text.left(longestLoggedArgs) + QLatin1String("...")
                                           : text;
}

/// True if the last character that is no blank is a backslash, whose index goes to `at`.
bool endsInBackslash(const QString& text, int& at)
{
    at = text.size() - 1;
    while (at >= 0 && text[at].isSpace())
        --at;
    return at >= 0 && text[at] == QLatin1Char('\\');
}

} // namespace

bool BatchLoop::advance()
{
    const qint64 a = first.toInt();
    const qint64 b = last.toInt();
    const qint64 given = step.toInt();
    const qint64 increment = given != 0 ? given : 1;
    const bool down = a >= b;
    const qint64 next = current.toInt() + (down ? -increment : increment);
    if (down ? next < b : next > b)
        return false;
    current = QString::number(next);
    // The number of characters may be negative here: left() then gives the whole of `first`, so
    // that a counter which outgrows its padding gets it in front. Deliberate.
    if (first.size() >= 2 && first.startsWith(QLatin1Char('0')))
        current.prepend(first.left(first.size() - current.size()));
    return true;
}

void BatchLoop::leave()
{
    // Counts down from where it is to where it is.
    first = last = current;
    step.clear();
}

BatchInterpreter::BatchInterpreter()
{
    variables.setValue(QStringLiteral("$DataRoot$"), DataRoot);
    for (const auto& [name, value] : qAsConst(BatchVariables))
        variables.setValue(QLatin1Char('$') + name + QLatin1Char('$'), value);
}

void BatchInterpreter::start(const QString& text, bool ofConfig)
{
    loops.clear();
    lineNo = 0;
    replaceText(text, ofConfig);
}

void BatchInterpreter::replaceText(const QString& text, bool ofConfig)
{
    text_ = text;
    ofConfig_ = ofConfig;
    toldLines_.clear();
    for (BatchLoop& loop : loops)
        loop.behind = -1;
    goTo(lineNo);
}

/// Sets the place and the number of the next line to take.
void BatchInterpreter::goTo(int line)
{
    lineNo = line;
    at_ = 0;
    for (int i = 0; i < line && at_ <= text_.size(); ++i) {
        const int end = text_.indexOf(QLatin1Char('\n'), at_);
        at_ = (end < 0 ? text_.size() : end) + 1;
    }
}

/// The next line, of which there must be one, without its end.
QString BatchInterpreter::takeLine()
{
    const int found = text_.indexOf(QLatin1Char('\n'), at_);
    const int end = found < 0 ? text_.size() : found;
    QString line = text_.mid(at_, end - at_);
    at_ = end + 1;
    ++lineNo;
    return line;
}

/// The next line with its continuation lines.
QString BatchInterpreter::joinedLine()
{
    lineStartNo_ = lineNo;
    QString joined = takeLine();
    // On the last line the backslash has nothing to continue on and stays as text.
    for (int at = 0; at_ <= text_.size() && endsInBackslash(joined, at);) {
        joined.truncate(at);
        joined += takeLine();
    }
    return joined;
}

BatchOutcome BatchInterpreter::step()
{
    BatchOutcome outcome;
    if (at_ > text_.size()) {
        outcome.kind = BatchOutcome::Ended;
        return outcome;
    }
    outcome.line = CmdLine(joinedLine());
    outcome.line.lineNo = lineStartNo_ + 1;
    outcome.line.ofConfig = ofConfig_;
    runLine(outcome);
    return outcome;
}

void BatchInterpreter::runLine(BatchOutcome& outcome)
{
    const CmdLine& line = outcome.line;
    const BatchKeyword keyword = line.valid ? keywordId(line) : KeywordNone;
    if (keyword == KeywordEnd) {
        outcome.kind = BatchOutcome::Ended;
        return;
    }
    if (keyword == KeywordRemStart || keyword == KeywordRemEnd)
        inRem = keyword == KeywordRemStart;
    outcome.inRem = inRem;
    const bool isCommand = isExCmd(line);
    if (isCommand)
        outcome.kind = BatchOutcome::Command;
    if (!inRem) {
        execKeyword(keyword, outcome);
        if (isCommand) {
            replaceArguments(outcome);
            outcome.log =
                line.word + QLatin1String(" : ") + loggedArgs(line.args) + QLatin1Char('\n');
        } else if (line.valid && keyword == KeywordNone) {
            outcome.failure = unknownWord(line);
            if (outcome.failure)
                outcome.log =
                    (lineOpen_ ? QStringLiteral("\n") : QString()) + batchLogText(*outcome.failure);
        }
    }
    if (!outcome.log.isEmpty())
        lineOpen_ = !outcome.log.endsWith(QLatin1Char('\n'));
}

/// Nothing when the line was told before: a loop must not repeat it for ever.
std::optional<CommandFailure> BatchInterpreter::unknownWord(const CmdLine& line)
{
    if (toldLines_.contains(line.lineNo))
        return {};
    toldLines_.insert(line.lineNo);
    return CommandFailure(line, QStringLiteral("unknown word, the line is skipped"));
}

void BatchInterpreter::execKeyword(int keyword, BatchOutcome& outcome)
{
    const CmdLine& line = outcome.line;
    if (keyword == KeywordFor)
        outcome.log = execFor(line);
    else if (keyword == KeywordNext)
        outcome.log = execNext(line);
    else if (keyword == KeywordEcho)
        outcome.log = execEcho(outcome);
    else if (keyword == KeywordLet)
        variables.setValue(QLatin1Char('$') + line.arg(0) + QLatin1Char('$'), line.arg(1));
}

QString BatchInterpreter::execFor(const CmdLine& line)
{
    // The arguments are taken apart once more: an item that was quoted falls apart at its blanks.
    const QStringList items = splitItems(line.args.join(blank));
    BatchLoop loop;
    loop.name = items.value(0);
    loop.startLine = lineNo - 1;
    loop.behind = at_;
    loop.var = items.value(1);
    loop.first = items.value(2);
    loop.last = items.value(3);
    loop.current = loop.first;
    loop.step = items.value(4);
    loops.erase(std::remove_if(loops.begin(), loops.end(),
                               [&loop](const BatchLoop& old) { return old.name == loop.name; }),
                loops.end());
    loops.append(loop);
    return QStringLiteral("for %1 : %2 = %3\n").arg(loop.name, loop.var, loop.current);
}

QString BatchInterpreter::execNext(const CmdLine& line)
{
    BatchLoop shown;
    for (BatchLoop& loop : loops) {
        if (loop.name != line.arg(0))
            continue;
        if (loop.advance())
            goBehind(loop);
        shown = loop;
        break;
    }
    return QStringLiteral("next %1 : %2 = %3\n").arg(shown.name, shown.var, shown.current);
}

QString BatchInterpreter::execEcho(BatchOutcome& outcome)
{
    replaceArguments(outcome);
    // No line end: the next log line goes on behind the text.
    const QString text = QLatin1String("echo ") + outcome.line.arg(0);
    outcome.messages.append(text);
    return text;
}

/// Goes on at the line behind the loop's ":for".
void BatchInterpreter::goBehind(BatchLoop& loop)
{
    if (loop.behind < 0) {
        goTo(loop.startLine + 1);
        loop.behind = at_;
    }
    at_ = loop.behind;
    lineNo = loop.startLine + 1;
}

void BatchInterpreter::replaceArguments(BatchOutcome& outcome)
{
    outcome.cutShort = replaceIn(outcome.line.args);
    if (outcome.cutShort)
        outcome.messages.append(
            QStringLiteral("Batch: replacement in the arguments of line %1 was ended at its limit")
                .arg(outcome.line.lineNo));
}

bool BatchInterpreter::replaceIn(QStringList& args)
{
    const Cfg::Rows& rows = variables.rows();
    ReplaceLimit limit;
    for (QString& arg : args) {
        limit.beginArgument();
        for (const BatchLoop& loop : qAsConst(loops)) {
            if (!limit.argumentDone())
                replaceWhileFound(arg, loop.var, loop.current, limit);
        }
        for (int row = 0; row < rows.keys.size() && !limit.argumentDone(); ++row) {
            if (replaceWhileFound(arg, rows.keys[row], rows.values[row], limit))
                variables.markUsed(row);
        }
        if (limit.lineDone())
            break;
    }
    return limit.reached();
}
