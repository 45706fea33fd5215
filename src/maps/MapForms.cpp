#include "maps/Analyzed2DRes.h"

#include "common/FieldText.h"
#include "common/SafeFile.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <limits>

// The forms in which the numbers of a map leave the program.

namespace {

constexpr double levels16 = 65535.0;

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

std::vector<double> Analyzed2DRes::shownPositions() const
{
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(stepper.columns()) *
                   static_cast<std::size_t>(stepper.rows()));
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        values.push_back(shownValueAt(walk.cx, walk.cy));
    } while (walk.next());
    return values;
}

quint16* Analyzed2DRes::tiffDataForSave(bool fixedScaleGiven, double scaleMin, double scaleMax,
                                        bool asAnalyzed, bool clamp)
{
    savedSamples = wrappedSamples = 0;
    if (shownField().empty() || !whyNotSaved(asAnalyzed).isEmpty())
        return nullptr;
    const std::vector<double> positions = asAnalyzed ? shownPositions() : std::vector<double>();
    const std::vector<double>& field = asAnalyzed ? positions : shownField();
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
    const std::vector<double> positions = asAnalyzed ? shownPositions() : std::vector<double>();
    const std::vector<double>& field = asAnalyzed ? positions : shownField();
    std::vector<float> values(field.size());
    std::transform(field.begin(), field.end(), values.begin(), toFloat);
    return values;
}

bool Analyzed2DRes::saveAsText(const QFileInfo& fi, bool /*asAnalyzed*/, bool useComma,
                               bool asXYZ) const
{
    const QChar separator = QLatin1Char(useComma ? ',' : ' ');
    return writeTextFile(fi.filePath(), [this, separator, asXYZ](QTextStream& out) {
        if (asXYZ)
            writePoints(out, separator);
        else
            writeRows(out, separator);
    });
}

void Analyzed2DRes::writePoints(QTextStream& out, QChar separator) const
{
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        out << walk.cx << separator << walk.cy << separator
            << shortestText(valueAt(walk.cx, walk.cy)) << '\n';
    } while (walk.next());
}

void Analyzed2DRes::writeRows(QTextStream& out, QChar separator) const
{
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        // Each row opens with its line end, the first one too, so the file begins with an empty
        // line. Deliberate.
        out << (walk.newLine ? QLatin1Char('\n') : separator)
            << shortestText(valueAt(walk.cx, walk.cy));
    } while (walk.next());
    out << '\n';
}
