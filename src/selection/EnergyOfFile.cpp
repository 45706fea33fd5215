#include "selection/EnergyOfFile.h"

#include "common/Bragg.h"
#include "common/CappedLine.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr double eVPerKeV = 1000.0;
constexpr double energyWithoutReference = 8000.0;
/// Longest line taken from a scan file, and most energies of a list.
constexpr qint64 maxLineBytes = 65536;
constexpr int maxEnergies = 1000000;

double byName(const EnergyRule& rule, const QString& fileName, int fNo)
{
    double energy = fNo;
    const QRegularExpression pattern(rule.pattern);
    const QRegularExpressionMatch match =
        pattern.isValid() ? pattern.match(fileName) : QRegularExpressionMatch();
    if (match.hasMatch()) {
        QString text = match.captured().toUpper();
        text.replace(QLatin1Char('_'), QLatin1Char('.'));
        text.remove(QLatin1String("KEV"));
        text.remove(QLatin1String("EV"));
        energy = text.toDouble();
    }
    return rule.factor > 0.0 ? energy * rule.factor : energy;
}

/// Step fNo of rule.points even steps in angle between two energies [eV]. A start below the
/// crystal's reach has the angle -1 degree, on purpose.
double byEvenAngles(const EnergyRule& rule, double start, double end, int fNo)
{
    const double first = angleOfEnergy(start, rule.spacing);
    const double last = angleOfEnergy(end, rule.spacing);
    return energyOfAngle(first + (last - first) / rule.points * fNo, rule.spacing);
}

double byCalculation(const EnergyRule& rule, int fNo)
{
    const double value = rule.delta * fNo + rule.start;
    if (rule.unit == EnergyRule::Degrees)
        return energyOfAngle(value, rule.spacing);
    const double toEv = rule.unit == EnergyRule::keV ? eVPerKeV : 1.0;
    if (rule.evenInEnergy)
        return value * toEv;
    return byEvenAngles(rule, rule.start * toEv, rule.end * toEv, fNo);
}

double byReference(const EnergyRule& rule, int fNo)
{
    if (rule.refEnergies.isEmpty())
        return fNo + energyWithoutReference;
    return rule.refEnergies[qBound(0, fNo, rule.refEnergies.size() - 1)];
}

QStringList fieldsOf(const QByteArray& line)
{
    return QString::fromUtf8(line).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

double energyOfFile(const EnergyRule& rule, const QString& fileName, int fNo)
{
    switch (rule.source) {
    case EnergyRule::ByName:
        return byName(rule, fileName, fNo);
    case EnergyRule::ByReference:
        return byReference(rule, fNo);
    default:
        return byCalculation(rule, fNo);
    }
}

QVector<double> readRefEnergies(QIODevice& in, double spacing)
{
    QVector<double> energies;
    QByteArray line = readCappedLine(in, maxLineBytes);
    const bool scanFormat = fieldsOf(line).value(0) == QLatin1String("9809");
    const int column = scanFormat ? 1 : 0;
    bool inData = !scanFormat;
    for (; !line.isEmpty() && energies.size() < maxEnergies;
         line = readCappedLine(in, maxLineBytes)) {
        const QStringList fields = fieldsOf(line);
        if (!inData) {
            inData = fields.value(0) == QLatin1String("Offset");
            continue;
        }
        if (fields.size() > column && !fields[0].startsWith(QLatin1Char('#')))
            energies.append(energyOfAngle(fields[column].toDouble(), spacing));
    }
    return energies;
}
