#include "batch/BatchCheck.h"

#include "batch/ArgumentFaults.h"
#include "batch/BatchFiles.h"
#include "batch/BatchInterpreter.h"
#include "batch/CommandTable.h"
#include "batch/ShownArgument.h"
#include "common/TextItems.h"
#include "spectrum/ElementList.h"
#include "spectrum/ElementTable.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr QChar blank = QLatin1Char(' ');

/// Place of a line in a text, that of the configuration's lines first.
using Place = std::pair<bool, int>;

Place placeOf(const CmdLine& line)
{
    return {!line.ofConfig, line.lineNo};
}

/// The findings, each told once, however often a loop comes by.
class FindingList
{
public:
    explicit FindingList(int mostOfLine)
        : mostOfLine_(mostOfLine)
    {
    }

    void add(const CmdLine& line, const QString& reason)
    {
        OfLine& ofLine = lines_[placeOf(line)];
        if (ofLine.reasons.contains(reason))
            return;
        ofLine.reasons.insert(reason);
        ++count_;
        if (ofLine.reasons.size() <= mostOfLine_)
            ofLine.listed.append(CommandFailure(line, reason));
        else
            ofLine.line = line;
    }

    void give(BatchReport& report) const
    {
        report.count = count_;
        for (const auto& row : lines_) {
            const OfLine& ofLine = row.second;
            report.findings += ofLine.listed;
            const int more = ofLine.reasons.size() - ofLine.listed.size();
            if (more > 0)
                report.findings.append(
                    CommandFailure(ofLine.line, QStringLiteral("and %1 more").arg(more)));
        }
    }

private:
    struct OfLine
    {
        QSet<QString> reasons;
        QVector<CommandFailure> listed;
        CmdLine line;
    };

    const int mostOfLine_;
    std::map<Place, OfLine> lines_;
    int count_ = 0;
};

bool isLoad(EX_CMD_ID id)
{
    return id == ExCmdLoadI1Files || id == ExCmdLoadI0Files || id == ExCmdLoadI1FilesOfPattern ||
           id == ExCmdLoadI0FilesOfPattern;
}

/// Goes through a text step by step, as a run does.
class Walk
{
public:
    explicit Walk(const BatchCheckOptions& options)
        : options_(options)
        , findings_(options.limits.findingsOfLine)
    {
        timer_.start();
    }

    void walk(const QString& text, bool ofConfig);
    BatchReport report() const;

private:
    bool takeStep();
    bool mayGoOn(const CmdLine& line);
    void checkLine(const BatchOutcome& outcome);
    void checkKeyword(const CmdLine& line);
    void checkFor(const CmdLine& line, const QStringList& items);
    void checkNext(const CmdLine& line);
    void checkCommand(const CmdLine& line, EX_CMD_ID id);
    bool checkArguments(const CmdLine& line, const QString& description, const QString& usage);
    void checkFiles(const CmdLine& line, EX_CMD_ID id);
    void checkElements(const CmdLine& line, EX_CMD_ID id);
    void checkElement(const CmdLine& line, const QString& word);
    void tellOpenLoops();
    void add(const CmdLine& line, const QString& reason);
    const QVector<Argument>& argumentsAs(const QString& description);

    const BatchCheckOptions options_;
    BatchInterpreter interpreter_;
    FindingList findings_;
    BatchFiles files_;
    QHash<QString, QVector<Argument>> arguments_; ///< by their descriptions
    QHash<QString, CmdLine> openLoops_;           ///< without a ":next" so far, by name
    std::optional<QVector<ListedElement>> rows_;  ///< those of the text's own list of elements
    std::optional<CommandFailure> notWalked_;
    QElapsedTimer timer_;
    qint64 images_ = 0;
    int passes_ = 0;
    int steps_ = 0;
};

void Walk::walk(const QString& text, bool ofConfig)
{
    openLoops_.clear();
    interpreter_.leaveRem();
    interpreter_.start(text, ofConfig);
    while (takeStep()) {
    }
}

BatchReport Walk::report() const
{
    BatchReport report;
    findings_.give(report);
    report.images = images_;
    report.notWalked = notWalked_;
    return report;
}

void Walk::add(const CmdLine& line, const QString& reason)
{
    if (!reason.isEmpty())
        findings_.add(line, reason);
}

/// False at the end of the walk.
bool Walk::takeStep()
{
    const BatchOutcome outcome = interpreter_.step();
    const CmdLine& line = outcome.line;
    if (outcome.kind == BatchOutcome::Ended) {
        if (!line.valid)
            tellOpenLoops();
        return false;
    }
    if (!outcome.inRem && line.valid)
        checkLine(outcome);
    const bool quits = !outcome.inRem && exCmdId(line) == ExCmdQuit;
    return !quits && mayGoOn(line);
}

/// Whether the limits allow another step behind the line; past that of the passes loops are left.
bool Walk::mayGoOn(const CmdLine& line)
{
    const BatchCheckLimits& limits = options_.limits;
    if (interpreter_.lineNo < line.lineNo && ++passes_ > limits.passes && !notWalked_)
        notWalked_ = CommandFailure(
            line, QStringLiteral("loops were left after %1 passes").arg(limits.passes));
    if (passes_ > limits.passes) {
        for (BatchLoop& loop : interpreter_.loops)
            loop.leave();
    }
    if (++steps_ < limits.steps && timer_.elapsed() < limits.milliseconds)
        return true;
    notWalked_ =
        CommandFailure(line, QStringLiteral("the walk was too long, the rest was not walked"));
    return false;
}

void Walk::checkLine(const BatchOutcome& outcome)
{
    const CmdLine& line = outcome.line;
    if (outcome.failure)
        add(line, outcome.failure->reason);
    if (outcome.cutShort)
        add(line, QStringLiteral("a text that contains itself is replaced without end"));
    if (isKeyword(line))
        checkKeyword(line);
    else if (isExCmd(line))
        checkCommand(line, exCmdId(line));
}

void Walk::checkKeyword(const CmdLine& line)
{
    const BatchKeyword id = keywordId(line);
    CmdLine taken = line;
    // The interpreter takes its arguments apart once more.
    if (id == KeywordFor)
        taken.args = splitItems(line.args.join(blank));
    const KeywordRow& row = keywordTable()[id];
    if (!checkArguments(taken, row.arguments, row.usage()))
        return;
    if (id == KeywordFor)
        checkFor(line, taken.args);
    else if (id == KeywordNext)
        checkNext(line);
}

void Walk::checkFor(const CmdLine& line, const QStringList& items)
{
    openLoops_.insert(items.value(0), line);
    if (items.value(4).toInt() < 0)
        add(line, QStringLiteral("a loop with a step below 0 never ends"));
}

void Walk::checkNext(const CmdLine& line)
{
    const QString name = line.arg(0);
    openLoops_.remove(name);
    const QVector<BatchLoop>& loops = interpreter_.loops;
    if (std::none_of(loops.begin(), loops.end(),
                     [&name](const BatchLoop& loop) { return loop.name == name; }))
        add(line, QStringLiteral("no loop has the name ") + shown(name));
}

void Walk::tellOpenLoops()
{
    for (const CmdLine& line : qAsConst(openLoops_))
        add(line, QStringLiteral("the loop has no :next, its lines run once"));
}

void Walk::checkCommand(const CmdLine& line, EX_CMD_ID id)
{
    const ExCmdRow& row = *exCmdRow(id);
    if (!checkArguments(line, row.arguments, row.usage()))
        return;
    checkElements(line, id);
    if (options_.files)
        checkFiles(line, id);
}

const QVector<Argument>& Walk::argumentsAs(const QString& description)
{
    auto known = arguments_.find(description);
    if (known == arguments_.end())
        known = arguments_.insert(description, argumentsOf(description));
    return *known;
}

/// Number and values of the arguments; false when some are missing.
bool Walk::checkArguments(const CmdLine& line, const QString& description, const QString& usage)
{
    const QVector<Argument>& arguments = argumentsAs(description);
    add(line, countFault(line, arguments, usage, isLoad(exCmdId(line))));
    const int known = qMin(arguments.size(), line.args.size());
    for (int i = 0; i < known; ++i)
        add(line, valueFault(arguments[i], line.args[i]));
    return line.args.size() >= leastArguments(arguments);
}

void Walk::checkFiles(const CmdLine& line, EX_CMD_ID id)
{
    if (id == ExCmdLoadI1FilesOfPattern || id == ExCmdLoadI0FilesOfPattern) {
        int found = 0;
        add(line, files_.patternFault(line, found));
        images_ += found;
        return;
    }
    const QVector<Argument>& arguments = argumentsAs(exCmdRow(id)->arguments);
    const bool repeats = mostArguments(arguments) < 0;
    const int named = repeats ? line.args.size() : qMin(arguments.size(), line.args.size());
    for (int i = 0; i < named; ++i) {
        const ArgumentKind kind = arguments[qMin(i, arguments.size() - 1)].kind;
        const QString& name = line.args[i];
        if (kind == ArgumentKind::File) {
            const QString why = files_.readFault(name);
            add(line, why);
            images_ += isLoad(id) && why.isEmpty() ? 1 : 0;
        } else if (kind == ArgumentKind::NewFile) {
            add(line, files_.writeFault(line, name));
            files_.wrote(line, name);
        }
    }
}

void Walk::checkElements(const CmdLine& line, EX_CMD_ID id)
{
    if (id == ExCmdSuggestingElm) {
        if (atomicNumber(line.arg(0)) < 1)
            add(line, QStringLiteral("unknown element ") + shown(line.arg(0)));
    } else if (id == ExCmdAnalyzerTargetElements) {
        QStringList faults;
        rows_ = readElementList(line.args.join(blank), faults);
        for (const QString& why : qAsConst(faults))
            add(line, why);
    } else if (argumentsAs(exCmdRow(id)->arguments).value(0).kind == ArgumentKind::Element) {
        checkElement(line, line.arg(0));
    }
}

/// An element that is to have a row. Which rows there are is known behind a list of the text.
void Walk::checkElement(const CmdLine& line, const QString& word)
{
    QStringList faults;
    if (!rows_) {
        if (readElementList(word, faults).isEmpty())
            add(line, QStringLiteral("unknown element ") + shown(word));
    } else if (std::none_of(rows_->begin(), rows_->end(), [&word](const ListedElement& element) {
                   return isCalled(element, word);
               })) {
        add(line, QStringLiteral("no element row has the name ") + shown(word));
    }
}

QString textOf(const CommandFailure& finding, const QString& file)
{
    const QString place =
        finding.ofConfig
            ? QStringLiteral("batch line %1 of the configuration: ").arg(finding.lineNo)
        : file.isEmpty() ? QStringLiteral("%1: ").arg(finding.lineNo)
                         : QStringLiteral("%1:%2: ").arg(file).arg(finding.lineNo);
    return place + finding.word + QLatin1String(": ") + finding.reason;
}

QString counted(qint64 number, const QString& one)
{
    return QStringLiteral("%1 %2%3").arg(number).arg(one,
                                                     number == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

QStringList BatchReport::lines(const QString& file) const
{
    QStringList lines;
    for (const CommandFailure& finding : findings)
        lines.append(textOf(finding, file));
    if (notWalked)
        lines.append(textOf(*notWalked, file));
    lines.append(summary());
    return lines;
}

QString BatchReport::summary() const
{
    return QStringLiteral("%1; %2%3 to load")
        .arg(counted(count, QStringLiteral("finding")),
             notWalked ? QStringLiteral("at least ") : QString(),
             counted(images, QStringLiteral("image")));
}

BatchReport checkBatch(const QString& text, const BatchCheckOptions& options)
{
    Walk walk(options);
    if (!options.before.isEmpty())
        walk.walk(options.before, true);
    walk.walk(text, false);
    return walk.report();
}
