#include "selection/FolderGuess.h"

#include "common/SafeInt.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

/// What words tell of a series. The first that applies counts: a dark image of a sample is dark.
enum class Hint
{
    Dark,
    Other, ///< none of a measurement's own
    I0,
    I1,
    None
};

struct HintWord
{
    const char* word;
    Hint hint;
};

constexpr HintWord hintWords[] = {
    {"dark", Hint::Dark},     {"darks", Hint::Dark},      {"drk", Hint::Dark},
    {"dk", Hint::Dark},       {"bias", Hint::Dark},       {"offset", Hint::Dark},
    {"std", Hint::Other},     {"standard", Hint::Other},  {"standards", Hint::Other},
    {"foil", Hint::Other},    {"map", Hint::Other},       {"maps", Hint::Other},
    {"picture", Hint::Other}, {"pictures", Hint::Other},  {"i0", Hint::I0},
    {"io", Hint::I0},         {"ref", Hint::I0},          {"reference", Hint::I0},
    {"flat", Hint::I0},       {"flats", Hint::I0},        {"blank", Hint::I0},
    {"blanks", Hint::I0},     {"empty", Hint::I0},        {"white", Hint::I0},
    {"open", Hint::I0},       {"direct", Hint::I0},       {"air", Hint::I0},
    {"incident", Hint::I0},   {"i1", Hint::I1},           {"it", Hint::I1},
    {"sample", Hint::I1},     {"samples", Hint::I1},      {"smp", Hint::I1},
    {"trans", Hint::I1},      {"transmission", Hint::I1}, {"transmitted", Hint::I1},
};

/// "sampleI1_03" has the words "sample", "i1" and "03"; "dark2" counts as "dark" too.
QStringList wordsOf(const QString& name)
{
    static const QRegularExpression word(QStringLiteral("(?:[A-Z]?[a-z]+|[A-Z]+)(?<digits>\\d*)"));
    QStringList words;
    for (auto it = word.globalMatch(name); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString whole = match.captured().toLower();
        words.append(whole);
        const int digits = match.capturedLength(QStringLiteral("digits"));
        if (digits > 0)
            words.append(whole.left(whole.size() - digits));
    }
    return words;
}

Hint hintIn(const QString& name)
{
    Hint found = Hint::None;
    const QStringList words = wordsOf(name);
    for (const HintWord& known : hintWords) {
        if (words.contains(QLatin1String(known.word)))
            found = std::min(found, known.hint);
    }
    return found;
}

Hint hintOf(const ImageSeries& series)
{
    // The extension is a word of no meaning here.
    const Hint own = hintIn(QFileInfo(series.pattern).completeBaseName());
    return own != Hint::None ? own : hintIn(series.folder);
}

using Hints = QVector<Hint>;

/// Place of the series with the most files among those that a condition allows; -1 for none. The
/// first of several.
template<typename Allowed>
int largest(const QVector<ImageSeries>& series, Allowed allowed)
{
    int best = -1;
    for (int i = 0; i < series.size(); ++i) {
        if (allowed(i) && (best < 0 || series.at(i).files.size() > series.at(best).files.size()))
            best = i;
    }
    return best;
}

bool fit(const ImageSeries& a, const ImageSeries& b)
{
    return a.files.size() == b.files.size() && a.pixels == b.pixels;
}

/// The first and largest series without a hint that another one fits, of those that may be one.
int largestPaired(const QVector<ImageSeries>& series, const Hints& hints)
{
    return largest(series, [&](int i) {
        for (int k = i + 1; k < series.size() && hints.at(i) == Hint::None; ++k) {
            if (hints.at(k) == Hint::None && fit(series.at(i), series.at(k)) &&
                series.at(i).files.size() > 1)
                return true;
        }
        return false;
    });
}

int guessI1(const QVector<ImageSeries>& series, const Hints& hints)
{
    const auto of = [&hints](Hint hint) {
        return [&hints, hint](int i) { return hints.at(i) == hint; };
    };
    const int named = largest(series, of(Hint::I1));
    if (named >= 0)
        return named;
    const int i0 = largest(series, of(Hint::I0));
    const int fitting = i0 < 0 ? largestPaired(series, hints) : largest(series, [&](int i) {
        return hints.at(i) == Hint::None && fit(series.at(i), series.at(i0));
    });
    if (fitting >= 0)
        return fitting;
    const int unnamed = largest(series, of(Hint::None));
    // Better a series that is said to be something else than none at all.
    return unnamed >= 0 ? unnamed : largest(series, of(Hint::Other));
}

int guessI0(const QVector<ImageSeries>& series, const Hints& hints, int i1)
{
    for (const Hint hint : {Hint::I0, Hint::None}) {
        const int fitting = largest(series, [&](int i) {
            return i != i1 && hints.at(i) == hint && fit(series.at(i), series.at(i1)) &&
                   (hint == Hint::I0 || series.at(i).files.size() > 1);
        });
        if (fitting >= 0)
            return fitting;
    }
    return largest(series, [&](int i) { return i != i1 && hints.at(i) == Hint::I0; });
}

/// How energies stand in names, the surest first. Each of them finds a number in names that were
/// meant for another one too, but such numbers rarely rise by as much as a scan.
struct NamePattern
{
    const char* pattern;
    double factor;
    bool withUnit; ///< so that it is sure what the number means
};

constexpr NamePattern namePatterns[] = {
    {R"((?<![\dA-Za-z])(?<E>\d{1,3}_\d+)[ _]?(?i:kev))", 1000.0, true},
    {R"((?<![\d.])(?<E>\d{1,3}(?:\.\d+)?)[ _]?(?i:kev))", 1000.0, true},
    {R"((?<!\d)(?<E>[1-9]\d{2,5}_\d+)[ _]?(?i:ev))", 1.0, true},
    {R"((?<![\d.])(?<E>\d{3,6}(?:\.\d+)?)[ _]?(?i:ev))", 1.0, true},
    {R"((?<![\d.])(?<E>\d{3,6}\.\d+)(?!\d))", 1.0, false},
    {R"((?<!\d)(?<E>[1-9]\d{3,4}_\d{1,4})(?!\d))", 1.0, false},
    {R"((?<![\d.])(?<E>[1-9]\d{3,5}(?:\.\d+)?)(?!\d))", 1.0, false},
    {R"((?<![\d.])(?<E>[1-9]\d{3,5}(?:\.\d+)?)(?!.*\d))", 1.0, false},
};

constexpr double leastEnergy = 100.0; // [eV]
constexpr double greatestEnergy = 200000.0;
/// No scan is as short as that; numbers behind a point that count files are. [eV]
constexpr double shortestScan = 1.0;

/// Cameras count files from 1000 or 10001 on; a scan that does so too has to be told.
bool countsFiles(const QVector<double>& numbers)
{
    const int first = truncatedInt(numbers.first());
    if (first % 1000 > 1)
        return false;
    for (int i = 0; i < numbers.size(); ++i) {
        if (numbers.at(i) != first + i)
            return false;
    }
    return true;
}

bool tellsEnergies(const EnergyRule& rule, bool withUnit, const QStringList& files)
{
    QVector<double> energies;
    double last = leastEnergy;
    for (int i = 0; i < files.size(); ++i) {
        const FileEnergy energy = energyOfFile(rule, files.at(i), i);
        const bool rises = i == 0 ? energy.eV >= last : energy.eV > last;
        if (energy.match != NameMatch::Number || !rises || energy.eV > greatestEnergy)
            return false;
        last = energy.eV;
        energies.append(last);
    }
    return energies.size() == 1 ||
           (last - energies.first() >= shortestScan && (withUnit || !countsFiles(energies)));
}

} // namespace

void guessUses(QVector<ImageSeries>& series)
{
    Hints hints;
    for (ImageSeries& one : series) {
        one.use = SeriesUse::Unused;
        hints.append(hintOf(one));
    }
    const int i1 = guessI1(series, hints);
    if (i1 < 0)
        return;
    series[i1].use = SeriesUse::I1;
    const int i0 = guessI0(series, hints, i1);
    if (i0 >= 0)
        series[i0].use = SeriesUse::I0;
    const auto isDark = [&](int i) {
        return hints.at(i) == Hint::Dark && series.at(i).pixels == series.at(i1).pixels;
    };
    const int dark = largest(series, isDark);
    if (dark >= 0)
        series[dark].use = SeriesUse::Dark;
}

bool namesReferences(const QString& folder)
{
    const QStringList words = wordsOf(folder);
    for (const char* word :
         {"ref", "refs", "reference", "references", "std", "standard", "standards"}) {
        if (words.contains(QLatin1String(word)))
            return true;
    }
    return false;
}

EnergyRule energiesInNames(const QVector<QStringList>& stacks)
{
    EnergyRule rule;
    rule.source = EnergyRule::ByName;
    for (const NamePattern& known : namePatterns) {
        rule.pattern = QLatin1String(known.pattern);
        rule.factor = known.factor;
        const bool all = std::all_of(stacks.begin(), stacks.end(), [&](const QStringList& files) {
            return !files.isEmpty() && tellsEnergies(rule, known.withUnit, files);
        });
        if (all && !stacks.isEmpty())
            return rule;
    }
    rule.pattern.clear();
    return rule;
}

QVector<double> energiesOf(const EnergyRule& rule, const QStringList& files)
{
    QVector<double> energies;
    energies.reserve(files.size());
    for (int i = 0; i < files.size(); ++i)
        energies.append(energyOfFile(rule, files.at(i), i).eV);
    return energies;
}

PairDoubt doubtOf(const ImageSeries& i1, const ImageSeries& i0)
{
    const auto sizeText = [](const QSize& size) {
        return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
    };
    if (i1.pixels != i0.pixels)
        return {PairDoubt::tr("I1 has %1 pixels, I0 %2: they do not belong together")
                    .arg(sizeText(i1.pixels), sizeText(i0.pixels)),
                true};
    if (i1.files.size() != i0.files.size())
        return {PairDoubt::tr("I1 has %1 images, I0 %2").arg(i1.files.size()).arg(i0.files.size()),
                false};
    return {};
}
