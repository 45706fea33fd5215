#include "batch/CommandArguments.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

ArgumentKind kindOf(const QString& word)
{
    static const std::pair<const char*, ArgumentKind> kinds[] = {
        {"int", ArgumentKind::Whole},        {"double", ArgumentKind::Number},
        {"0|1", ArgumentKind::Switch},       {"0|1|2", ArgumentKind::Switch},
        {"mode", ArgumentKind::Mode},        {"file", ArgumentKind::File},
        {"new file", ArgumentKind::NewFile}, {"folder", ArgumentKind::Folder},
        {"filter", ArgumentKind::Filter},    {"elem", ArgumentKind::Element}};
    for (const auto& [name, kind] : kinds) {
        if (word == QLatin1String(name))
            return kind;
    }
    return ArgumentKind::Text;
}

} // namespace

QVector<Argument> argumentsOf(const QString& description)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"((\[?)<(new file|[^ >]+) ?([^>]*)>\]?(\.\.\.)?)"));
    QVector<Argument> arguments;
    auto matches = pattern.globalMatch(description);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        arguments.append({kindOf(match.captured(2)), match.captured(2), match.captured(3),
                          !match.captured(1).isEmpty(), !match.captured(4).isEmpty()});
    }
    return arguments;
}

int leastArguments(const QVector<Argument>& arguments)
{
    return int(std::count_if(arguments.begin(), arguments.end(), [](const Argument& argument) {
        return !argument.optional && argument.kind != ArgumentKind::Filter;
    }));
}

int mostArguments(const QVector<Argument>& arguments)
{
    return !arguments.isEmpty() && arguments.last().repeated ? -1 : arguments.size();
}
