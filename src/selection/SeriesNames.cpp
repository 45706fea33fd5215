#include "selection/SeriesNames.h"

#include "common/FileNames.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

/// A name with the place of its number left open.
struct OpenName
{
    QString name;
    QString fine;       ///< but for the last run of digits: "i1_8948.*.tif"
    QString coarse;     ///< but for the number with its decimals: "i1_*.tif"; else like fine
    double value = 0.0; ///< of the number left open in coarse
};

OpenName opened(const QString& name)
{
    // The extension's own digits, which few have, are no running number.
    static const QRegularExpression number(
        QStringLiteral("(?:(?<whole>(?<!\\d)\\d{1,6})\\.|(?<whole2>(?<!\\d)[1-9]\\d{3,4})_"
                       "(?=\\d{1,4}(?!\\d)))?(?<last>\\d+)(?=[^\\d]*\\.[^.]*$)"));
    OpenName open{name, name, name};
    QRegularExpressionMatch match = number.match(name);
    if (!match.hasMatch())
        return open;
    const QString last = match.captured(QStringLiteral("last"));
    const QString behind = QLatin1Char('*') + name.mid(match.capturedEnd());
    open.fine = name.left(match.capturedStart(QStringLiteral("last"))) + behind;
    open.coarse = name.left(match.capturedStart()) + behind;
    const QString whole =
        match.captured(QStringLiteral("whole")) + match.captured(QStringLiteral("whole2"));
    open.value = (whole.isEmpty() ? last : whole + QLatin1Char('.') + last).toDouble();
    return open;
}

using Group = QVector<OpenName>;

/// Whole parts that change more often than their decimals are those of one running number.
bool isOneNumber(int files, int wholes)
{
    return wholes > 1 && files < wholes * wholes;
}

NamedSeries seriesOf(Group group, const QString& pattern, bool byValue)
{
    std::sort(group.begin(), group.end(), [byValue](const OpenName& a, const OpenName& b) {
        if (byValue && a.value != b.value)
            return a.value < b.value;
        return naturallyLess(a.name, b.name);
    });
    NamedSeries series;
    for (const OpenName& open : qAsConst(group))
        series.names.append(open.name);
    series.pattern = series.names.size() == 1 ? series.names.first() : pattern;
    return series;
}

} // namespace

QVector<NamedSeries> seriesOfNames(const QStringList& names)
{
    QMap<QString, QMap<QString, Group>> groups; // by coarse, then fine
    for (const QString& name : names) {
        const OpenName open = opened(name);
        groups[open.coarse][open.fine].append(open);
    }
    QVector<NamedSeries> all;
    for (auto coarse = groups.cbegin(); coarse != groups.cend(); ++coarse) {
        Group together;
        for (const Group& group : coarse.value())
            together += group;
        if (isOneNumber(together.size(), coarse.value().size())) {
            all.append(seriesOf(together, coarse.key(), true));
            continue;
        }
        for (auto fine = coarse.value().cbegin(); fine != coarse.value().cend(); ++fine)
            all.append(seriesOf(fine.value(), fine.key(), false));
    }
    std::sort(all.begin(), all.end(), [](const NamedSeries& a, const NamedSeries& b) {
        return naturallyLess(a.pattern, b.pattern);
    });
    return all;
}
