#include "maps/Analyzed2DRes.h"

#include "common/SafeFile.h"
#include "common/ShortestText.h"

#include <QThread>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <future>
#include <limits>
#include <queue>

// The forms in which the numbers of a map leave the program.

namespace {

constexpr double levels16 = 65535.0;

/// A part of a text is a millisecond's work, and its buffer small enough to be kept when freed.
constexpr qint64 valuesAPart = 16384;
constexpr int numberTextSize = 11; ///< the longest text of an integer

/// The low 16 bits of the value cut to an integer; values out of the scale wrap on purpose.
quint16 wrappedTo16(double v)
{
    constexpr double int64End = 9223372036854775808.0;
    if (std::fabs(v) < int64End)
        return static_cast<quint16>(static_cast<qint64>(v));
    if (!std::isfinite(v))
        return 0;
    return static_cast<quint16>(static_cast<qint64>(std::fmod(v, levels16 + 1.0)));
}

/// A scale may run downward.
double clampedTo(const Analyzed2DRes::Scale& s, double v)
{
    return std::clamp(v, std::min(s.min, s.max), std::max(s.min, s.max));
}

double scaled(double v, const Analyzed2DRes::Scale& s)
{
    return (v - s.min) / (s.max - s.min) * levels16;
}

/// What is no number has no place in the scale, and is 0.
quint16 clampedTo16(double v, const Analyzed2DRes::Scale& s)
{
    return std::isfinite(v) ? wrappedTo16(scaled(clampedTo(s, v), s)) : quint16(0);
}

/// Whether a number, scaled to t, comes back as another one.
bool wraps(double v, double t)
{
    return std::isfinite(v) && (t <= -1.0 || t >= levels16 + 1.0);
}

/// An area typed by hand may lie so far outside that its walk ends at the largest integers.
int afterSteps(int from, qint64 steps, int step)
{
    const qint64 to = from + steps * std::max(step, 1);
    return static_cast<int>(std::min<qint64>(to, std::numeric_limits<int>::max()));
}

/// The walk at its position of this number, counted from 0.
AnalyzeCond positionOf(AnalyzeCond walk, qint64 number)
{
    const qint64 column = number % walk.columns();
    walk.start();
    walk.cx = afterSteps(walk.cx, column, walk.stepX);
    walk.cy = afterSteps(walk.cy, number / walk.columns(), walk.stepY);
    walk.newLine = column == 0;
    return walk;
}

/// Text of `count` values, each of at most `size` characters: append() writes one at its argument
/// and returns the end of it.
template<typename Append>
QByteArray partText(int count, int size, Append append)
{
    QByteArray text(count * size, Qt::Uninitialized);
    char* out = text.data();
    for (int i = 0; i < count; ++i)
        out = append(out);
    text.truncate(static_cast<int>(out - text.constData()));
    return text;
}

/// Casts between numbers that can not hold each other are undefined.
float toFloat(double v)
{
    if (std::fabs(v) > double(std::numeric_limits<float>::max()) && std::isfinite(v))
        return std::copysign(std::numeric_limits<float>::infinity(), v > 0.0 ? 1.0F : -1.0F);
    return static_cast<float>(v);
}

} // namespace

QString Analyzed2DRes::whyNotSaved(bool asAnalyzed) const
{
    if (!hasValues_)
        return QStringLiteral("it holds no values");
    if (asAnalyzed && qint64(stepper.columns()) * stepper.rows() > maxPositions)
        return QStringLiteral("it has too many positions");
    return {};
}

Analyzed2DRes::Scale Analyzed2DRes::scaleForSave(bool fixedScaleGiven, double scaleMin,
                                                 double scaleMax) const
{
    return fixedScaleGiven ? Scale{scaleMin, scaleMax} : fieldScale();
}

LazyField Analyzed2DRes::shownPositions() const
{
    LazyField values(static_cast<std::size_t>(stepper.columns()) *
                     static_cast<std::size_t>(stepper.rows()));
    double* out = values.data();
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        *out++ = shownValueAt(walk.cx, walk.cy);
    } while (walk.next());
    return values;
}

quint16* Analyzed2DRes::tiffDataForSave(bool fixedScaleGiven, double scaleMin, double scaleMax,
                                        bool asAnalyzed, bool clamp)
{
    savedSamples = wrappedSamples = 0;
    if (shownField().empty() || !whyNotSaved(asAnalyzed).isEmpty())
        return nullptr;
    const LazyField positions = asAnalyzed ? shownPositions() : LazyField();
    const LazyField& field = asAnalyzed ? positions : shownField();
    const Scale s = scaleForSave(fixedScaleGiven, scaleMin, scaleMax);
    auto* const out = new quint16[field.size()];
    savedSamples = static_cast<int>(field.size());
    if (asAnalyzed || clamp) {
        std::transform(field.begin(), field.end(), out,
                       [&s](double v) { return clampedTo16(v, s); });
        return out;
    }
    std::transform(field.begin(), field.end(), out, [this, &s](double v) {
        const double t = scaled(v, s);
        wrappedSamples += wraps(v, t) ? 1 : 0;
        return wrappedTo16(t);
    });
    return out;
}

std::vector<float> Analyzed2DRes::floatsForSave(bool asAnalyzed) const
{
    if (shownField().empty() || !whyNotSaved(asAnalyzed).isEmpty())
        return {};
    const LazyField positions = asAnalyzed ? shownPositions() : LazyField();
    const LazyField& field = asAnalyzed ? positions : shownField();
    std::vector<float> values(field.size());
    std::transform(field.begin(), field.end(), values.begin(), toFloat);
    return values;
}

bool Analyzed2DRes::saveAsText(const QFileInfo& fi, bool /*asAnalyzed*/, bool useComma,
                               bool asXYZ) const
{
    const char separator = useComma ? ',' : ' ';
    return writeFile(fi.filePath(), [this, separator, asXYZ](QIODevice& file) {
        writeParts(file, [this, separator, asXYZ](const AnalyzeCond& first, int count) {
            return asXYZ ? pointsText(first, count, separator) : rowsText(first, count, separator);
        });
        if (!asXYZ)
            file.write("\n");
        return QString();
    });
}

/// Forms the text part by part, some at a time, and writes it in the order of the walk. So a large
/// map takes all processors, and no more memory than a few parts do.
template<typename PartText>
void Analyzed2DRes::writeParts(QIODevice& file, PartText textOf) const
{
    const qint64 positions = qint64(stepper.columns()) * stepper.rows();
    const bool large = positions > 4 * valuesAPart;
    // Where there is no further thread, a part is formed when it is asked for.
    const auto how = large ? std::launch::async | std::launch::deferred : std::launch::deferred;
    const int atOnce = large ? std::max(QThread::idealThreadCount(), 1) : 1;
    std::queue<std::future<QByteArray>> underWay;
    const auto writeNext = [&] {
        file.write(underWay.front().get());
        underWay.pop();
    };
    for (qint64 done = 0; done < positions; done += valuesAPart) {
        const auto count = static_cast<int>(std::min(valuesAPart, positions - done));
        underWay.push(std::async(how, textOf, positionOf(stepper, done), count));
        if (static_cast<int>(underWay.size()) > atOnce)
            writeNext();
    }
    while (!underWay.empty())
        writeNext();
}

QByteArray Analyzed2DRes::pointsText(AnalyzeCond walk, int count, char separator) const
{
    return partText(count, 2 * (numberTextSize + 1) + shortestTextSize + 1, [&](char* out) {
        out = std::to_chars(out, out + numberTextSize, walk.cx).ptr;
        *out++ = separator;
        out = std::to_chars(out, out + numberTextSize, walk.cy).ptr;
        *out++ = separator;
        out = writeShortest(valueAt(walk.cx, walk.cy), out);
        *out++ = '\n';
        walk.next();
        return out;
    });
}

QByteArray Analyzed2DRes::rowsText(AnalyzeCond walk, int count, char separator) const
{
    return partText(count, 1 + shortestTextSize, [&](char* out) {
        // Each row opens with its line end, the first one too, so the file begins with an empty
        // line. Deliberate.
        *out++ = walk.newLine ? '\n' : separator;
        out = writeShortest(valueAt(walk.cx, walk.cy), out);
        walk.next();
        return out;
    });
}
