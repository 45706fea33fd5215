#include "spectrum/ReferenceFile.h"

#include "common/Bragg.h"
#include "common/PortableMath.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr int longestLine = 64 * 1024; // [characters]
constexpr int blockSize = 16 * 1024;
constexpr double defaultSpacing = 3.13553; // Si(111) [angstrom]

/// No scan in eV ends below this; in keV all do.
constexpr double largestKeV = 200.0;

constexpr int longestLabels = 200; // [characters]

constexpr const char* columnsText =
    QT_TRANSLATE_NOOP("Remark", "%1 columns: the first two are taken as energy and mu");
constexpr const char* labelledColumnsText =
    QT_TRANSLATE_NOOP("Remark", "%1 columns (%2): the first two are taken as energy and mu");
constexpr const char* keVText =
    QT_TRANSLATE_NOOP("Remark", "the largest energy is %1 eV: are the energies in keV?");
constexpr const char* fluorescenceText = "fluorescence: mu is I1 / I0";
constexpr const char* repeatedText = "%1 points are left out: their energies came before";

/// Lines of a stream, whatever ends them. Between CR and LF they give an empty line, which holds
/// nothing in any layout.
class Lines
{
public:
    explicit Lines(QTextStream& in)
        : in_(in)
    {
    }

    /// False at the end of the stream. A line that is too long comes as an empty one.
    bool next(QString& line)
    {
        line.clear();
        bool tooLong = false;
        for (bool ended = false; !ended;) {
            if (at_ == block_.size() && !fetch())
                return !line.isEmpty() && !tooLong;
            const int end = endOfLine();
            tooLong = tooLong || line.size() + end - at_ >= longestLine;
            if (!tooLong)
                line.append(block_.constData() + at_, end - at_);
            ended = end < block_.size();
            at_ = ended ? end + 1 : end;
        }
        if (tooLong)
            line.clear();
        return true;
    }

private:
    bool fetch()
    {
        block_ = in_.read(blockSize);
        at_ = 0;
        return !block_.isEmpty();
    }

    int endOfLine() const
    {
        const auto isEnd = [](QChar c) { return c == QLatin1Char('\n') || c == QLatin1Char('\r'); };
        return int(std::find_if(block_.begin() + at_, block_.end(), isEnd) - block_.begin());
    }

    QTextStream& in_;
    QString block_;
    int at_ = 0;
};

bool isSeparator(QChar c)
{
    return c == QLatin1Char(',') || c == QLatin1Char(';');
}

/// Items of a line. A separator in front of the first one, or two in a row, make an empty item:
/// so ";" begins a line that holds no data.
QStringList itemsOf(const QString& line)
{
    QStringList items;
    const QString text = line.simplified();
    for (int at = 0; at < text.size(); ++at) {
        const int start = at;
        while (at < text.size() && text[at] != QLatin1Char(' ') && !isSeparator(text[at]))
            ++at;
        items.append(text.mid(start, at - start));
        // A blank before a separator and one behind it belong to it.
        if (at + 1 < text.size() && text[at] == QLatin1Char(' ') && isSeparator(text[at + 1]))
            ++at;
        if (at + 1 < text.size() && isSeparator(text[at]) && text[at + 1] == QLatin1Char(' '))
            ++at;
    }
    return items;
}

/// The number that an item holds; nan for any other text.
double numberOf(QString item)
{
    bool isNumber = false;
    const double v =
        item.replace(QLatin1Char('D'), QLatin1Char('e'), Qt::CaseInsensitive).toDouble(&isNumber);
    return isNumber ? v : std::numeric_limits<double>::quiet_NaN();
}

/// The same with 0 for what is no number.
double intensityOf(const QString& item)
{
    const double v = numberOf(item);
    return std::isnan(v) ? 0.0 : v;
}

bool holdsData(const QStringList& items)
{
    return items.size() >= 2 && std::isfinite(numberOf(items[0])) &&
           std::isfinite(numberOf(items[1]));
}

/// What the lines above the data call the columns.
class ColumnLabels
{
public:
    void take(QStringList items)
    {
        if (items.isEmpty())
            return;
        QString& first = items.first();
        while (!first.isEmpty() && QStringLiteral("#%;!/*").contains(first[0]))
            first.remove(0, 1);
        if (first.isEmpty())
            items.removeFirst();
        if (items.size() < 2)
            return;
        const int number = numberedColumn(items.first());
        if (number > 0)
            numbered_[number] = items[1];
        else
            last_ = items;
    }

    /// The labels, or none when the head does not name just these columns.
    QStringList of(int columns) const
    {
        if (last_.size() == columns)
            return last_;
        QStringList labels;
        for (int i = 1; i <= columns && numbered_.contains(i); ++i)
            labels.append(numbered_[i]);
        return labels.size() == columns ? labels : QStringList();
    }

private:
    static constexpr int mostNumbered = 100;

    /// Number in "Column.3:"; 0 for another item.
    static int numberedColumn(const QString& item)
    {
        const QString key = QStringLiteral("Column.");
        if (!item.startsWith(key, Qt::CaseInsensitive) || !item.endsWith(QLatin1Char(':')))
            return 0;
        const int number = item.mid(key.size(), item.size() - key.size() - 1).toInt();
        return number <= mostNumbered ? number : 0;
    }

    QStringList last_; ///< items of the last line that may be one of labels
    QMap<int, QString> numbered_;
};

/// What the head of a scan tells.
struct ScanHead
{
    double spacing = defaultSpacing;
    bool fluorescence = false;
};

void takeHeadItems(const QStringList& items, ScanHead& head)
{
    for (int i = 0; i < items.size(); ++i) {
        if (items[i] == QLatin1String("D=") && i + 1 < items.size())
            head.spacing = intensityOf(items[i + 1]);
        if (items[i].startsWith(QLatin1String("Fluorescence(")))
            head.fluorescence = true;
    }
}

/// Reads up to the line "Offset"; `line` is the first one.
ScanHead readHead(Lines& lines, QString line)
{
    ScanHead head;
    do {
        const QStringList items = itemsOf(line);
        if (items.value(0) == QLatin1String("Offset"))
            break;
        takeHeadItems(items, head);
    } while (lines.next(line));
    return head;
}

double absorption(double i0, double i1, bool fluorescence)
{
    if (fluorescence)
        return i0 != 0.0 ? i1 / i0 : 0.0;
    return i0 * i1 > 0.0 ? portable::log(i0 / i1) : 1.0;
}

void readScan(Lines& lines, const QString& firstLine, ReferenceFile& file)
{
    const ScanHead head = readHead(lines, firstLine);
    for (QString line; lines.next(line);) {
        const QStringList items = itemsOf(line);
        if (items.size() < 5 || !holdsData(items))
            continue;
        const double E = energyOfAngle(numberOf(items[1]), head.spacing);
        if (!std::isfinite(E))
            continue;
        const double i0 = intensityOf(items[3]);
        const double i1 = intensityOf(items[4]);
        file.mu.append(E, absorption(i0, i1, head.fluorescence));
        file.i0.append(E, i0);
        file.i1.append(E, i1);
    }
    if (head.fluorescence)
        file.remarks.append({fluorescenceText, {}, false});
}

Remark columnsRemark(int columns, const QStringList& labels)
{
    const QString count = QString::number(columns);
    if (labels.isEmpty())
        return {columnsText, {count}};
    return {labelledColumnsText, {count, labels.join(QLatin1String(", ")).left(longestLabels)}};
}

void readSimple(Lines& lines, QString line, ReferenceFile& file)
{
    ColumnLabels labels;
    do {
        const QStringList items = itemsOf(line);
        if (!holdsData(items)) {
            if (file.mu.isEmpty())
                labels.take(items);
            continue;
        }
        if (file.mu.isEmpty() && items.size() > 2)
            file.remarks.append(columnsRemark(items.size(), labels.of(items.size())));
        file.mu.append(numberOf(items[0]), numberOf(items[1]));
    } while (lines.next(line));
}

/// The points at the places given, in that order.
Spectrum pointsAt(const Spectrum& s, const QVector<int>& places)
{
    QVector<QPointF> points;
    points.reserve(places.size());
    for (const int i : places)
        points.append(s.points.at(i));
    Spectrum picked;
    picked.setPoints(points);
    return picked;
}

} // namespace

ReferenceFile readReferenceFile(QTextStream& in)
{
    ReferenceFile file;
    in.seek(0);
    Lines lines(in);
    QString first;
    lines.next(first);
    file.is9809 = first.simplified().startsWith(QLatin1String("9809"));
    if (file.is9809)
        readScan(lines, first, file);
    else
        readSimple(lines, first, file);
    if (!file.mu.isEmpty() && file.mu.xMax < largestKeV)
        file.remarks.append({keVText, {QString::number(file.mu.xMax)}});
    return file;
}

ReferenceFile loadReferenceFile(const QString& fname)
{
    qDebug() << "loading in xafs spectrum" << fname;
    QFile device(fname);
    if (!QFileInfo(fname).isFile() || !device.open(QIODevice::ReadOnly))
        return {};
    QTextStream in(&device);
    ReferenceFile file = readReferenceFile(in);
    file.isOpened = true;
    qDebug() << (file.is9809 ? "9809" : "mute");
    for (const Remark& remark : qAsConst(file.remarks))
        remark.log(fname);
    return file;
}

void orderByEnergy(ReferenceFile& file)
{
    QVector<int> places(file.mu.size());
    std::iota(places.begin(), places.end(), 0);
    const QPointF* points = file.mu.points.constData();
    std::stable_sort(places.begin(), places.end(),
                     [points](int a, int b) { return points[a].x() < points[b].x(); });
    const auto last = std::unique(places.begin(), places.end(), [points](int a, int b) {
        return points[a].x() == points[b].x();
    });
    const auto repeated = int(places.end() - last);
    places.erase(last, places.end());
    if (repeated > 0)
        file.remarks.append({repeatedText, {QString::number(repeated)}, false});
    for (Spectrum* curve : {&file.mu, &file.i0, &file.i1}) {
        if (!curve->isEmpty())
            *curve = pointsAt(*curve, places);
    }
}
