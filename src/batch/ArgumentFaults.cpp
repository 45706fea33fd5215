#include "batch/ArgumentFaults.h"

#include "batch/CmdLine.h"
#include "batch/ShownArgument.h"

namespace {

/// An empty text that is written as "" is dropped from the arguments, and reads as empty all the
/// same: this is how a field is emptied.
bool endsInEmptyText(const CmdLine& line, const QVector<Argument>& arguments)
{
    const int given = line.args.size();
    return given + 1 == leastArguments(arguments) && arguments[given].kind == ArgumentKind::Text &&
           line.line.contains(QLatin1String("\"\""));
}

} // namespace

QString valueFault(const Argument& argument, const QString& value)
{
    bool isNumber = false;
    switch (argument.kind) {
    case ArgumentKind::Whole:
        value.toInt(&isNumber);
        return isNumber ? QString()
                        : shown(value) + QStringLiteral(" is no whole number, it counts as 0");
    case ArgumentKind::Number:
        value.toDouble(&isNumber);
        return isNumber ? QString()
                        : shown(value) + QStringLiteral(" is no number, it counts as 0");
    case ArgumentKind::Switch: {
        const int number = value.toInt(&isNumber);
        const bool known =
            isNumber && argument.word.split(QLatin1Char('|')).contains(QString::number(number));
        return known ? QString()
                     : QStringLiteral("%1 is none of %2").arg(shown(value), argument.word);
    }
    default:
        return {};
    }
}

QString countFault(const CmdLine& line, const QVector<Argument>& arguments, const QString& usage,
                   bool waits)
{
    const int given = line.args.size();
    const int most = mostArguments(arguments);
    if (given < leastArguments(arguments) && !endsInEmptyText(line, arguments))
        return (waits ? QStringLiteral("an argument is missing, the run waits for \"Stop\": ")
                      : QStringLiteral("an argument is missing: ")) +
               usage;
    if (most < 0 || given <= most)
        return {};
    const bool comment = line.args[most].startsWith(QLatin1Char('#'));
    return (comment ? QStringLiteral("too many arguments, a # behind a word begins no comment: ")
                    : QStringLiteral("too many arguments: ")) +
           usage;
}
