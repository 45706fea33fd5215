#include "selection/EnergyOfFile.h"

#include "common/Bragg.h"
#include "common/CappedLine.h"

#include <QFileInfo>
#include <QIODevice>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr double eVPerKeV = 1000.0;
constexpr double energyWithoutReference = 8000.0;
/// Longest line taken from a scan file, and most angles of a list.
constexpr qint64 maxLineBytes = 65536;
constexpr int maxAngles = 1000000;

/// The match in the name of the file or else in its path.
QRegularExpressionMatch matchIn(const QString& path, const QRegularExpression& pattern)
{
    if (!pattern.isValid())
        return {};
    const QRegularExpressionMatch match = pattern.match(QFileInfo(path).fileName());
    return match.hasMatch() ? match : pattern.match(path);
}

QString energyTextOf(const QRegularExpressionMatch& match)
{
    const QString group = QStringLiteral("E");
    const bool hasGroup = match.regularExpression().namedCaptureGroups().contains(group);
    QString text = (hasGroup ? match.captured(group) : match.captured()).toUpper();
    text.replace(QLatin1Char('_'), QLatin1Char('.'));
    text.remove(QLatin1String("KEV"));
    text.remove(QLatin1String("EV"));
    return text;
}

FileEnergy byName(const EnergyRule& rule, const QString& fileName, int fNo)
{
    FileEnergy energy{double(fNo), NameMatch::NoMatch};
    const QRegularExpressionMatch match = matchIn(fileName, QRegularExpression(rule.pattern));
    if (match.hasMatch()) {
        bool isNumber = false;
        const double value = energyTextOf(match).toDouble(&isNumber);
        isNumber = isNumber && std::isfinite(value); // "nan" and "inf" are read as numbers
        energy = {isNumber ? value : 0.0, isNumber ? NameMatch::Number : NameMatch::NoNumber};
    }
    if (rule.factor > 0.0)
        energy.eV *= rule.factor;
    return energy;
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
    const ScanAngles& scan = rule.reference;
    if (scan.degrees.isEmpty())
        return fNo + energyWithoutReference;
    return energyOfAngle(scan.degrees[qBound(0, fNo, scan.degrees.size() - 1)],
                         scan.spacing > 0.0 ? scan.spacing : rule.spacing);
}

QStringList fieldsOf(const QByteArray& line)
{
    return QString::fromUtf8(line).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Takes the spacing behind "D=" among the fields of a head's line.
void takeSpacing(const QStringList& fields, ScanAngles& scan)
{
    const int at = fields.indexOf(QLatin1String("D="));
    if (at < 0)
        return;
    const double told = fields.value(at + 1).toDouble();
    scan.wrongSpacing = !isSpacing(told);
    scan.spacing = scan.wrongSpacing ? 0.0 : told;
}

} // namespace

FileEnergy energyOfFile(const EnergyRule& rule, const QString& fileName, int fNo)
{
    switch (rule.source) {
    case EnergyRule::ByName:
        return byName(rule, fileName, fNo);
    case EnergyRule::ByReference:
        return {byReference(rule, fNo), NameMatch::Number};
    default:
        return {byCalculation(rule, fNo), NameMatch::Number};
    }
}

QVector<double> plannedEnergies(const EnergyRule& rule)
{
    constexpr int mostFiles = 100000;
    int files = 0;
    if (rule.source == EnergyRule::ByCalculation)
        files = rule.points;
    else if (rule.source == EnergyRule::ByReference)
        files = rule.reference.degrees.size();
    QVector<double> energies;
    for (int i = 0; i < std::min(files, mostFiles); ++i)
        energies.append(energyOfFile(rule, QString(), i).eV);
    return energies;
}

void NameMatches::add(NameMatch match, const QString& fileName)
{
    ++files_;
    if (match == NameMatch::Number)
        return;
    ++(match == NameMatch::NoMatch ? withoutMatch_ : withoutNumber_);
    if (first_.isEmpty())
        first_ = fileName;
}

QString NameMatches::complaint() const
{
    if (first_.isEmpty())
        return {};
    return QStringLiteral("no energy in %1 of %2 file names (%3 without a match, %4 with a text "
                          "that is no number), first %5")
        .arg(withoutMatch_ + withoutNumber_)
        .arg(files_)
        .arg(withoutMatch_)
        .arg(withoutNumber_)
        .arg(first_);
}

ScanAngles readScanAngles(QIODevice& in)
{
    ScanAngles scan;
    QByteArray line = readCappedLine(in, maxLineBytes);
    const bool scanFormat = fieldsOf(line).value(0) == QLatin1String("9809");
    const int column = scanFormat ? 1 : 0;
    bool inData = !scanFormat;
    for (; !line.isEmpty() && scan.degrees.size() < maxAngles;
         line = readCappedLine(in, maxLineBytes)) {
        const QStringList fields = fieldsOf(line);
        if (!inData) {
            inData = fields.value(0) == QLatin1String("Offset");
            takeSpacing(fields, scan);
            continue;
        }
        if (fields.size() > column && !fields[0].startsWith(QLatin1Char('#')))
            scan.degrees.append(fields[column].toDouble());
    }
    return scan;
}
