#include "Compare.h"
#include "DemoFiles.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace {
constexpr int usageError = 2;

QTextStream& standardOut()
{
    static QTextStream stream(stdout);
    return stream;
}

int fail(const QString& message)
{
    QTextStream(stderr) << "morvenkite-demo: " << message << '\n';
    return usageError;
}

/// An option's integer within [least, largest]; false, with a message, for another text.
bool integerOption(const QCommandLineParser& parser, const QString& name, int least, int largest,
                   int* value)
{
    if (!parser.isSet(name)) {
        return true;
    }
    bool ok = false;
    const int given = parser.value(name).toInt(&ok);
    if (!ok || given < least || given > largest) {
        fail(QStringLiteral("--%1 takes a whole number from %2 to %3")
                 .arg(name)
                 .arg(least)
                 .arg(largest));
        return false;
    }
    *value = given;
    return true;
}

bool seedOption(const QCommandLineParser& parser, quint64* seed)
{
    bool ok = true;
    if (parser.isSet(QStringLiteral("seed"))) {
        *seed = parser.value(QStringLiteral("seed")).toULongLong(&ok);
    }
    if (!ok) {
        fail(QStringLiteral("--seed takes a whole number that is not negative"));
    }
    return ok;
}

bool noiseOption(const QCommandLineParser& parser, bool* noise)
{
    const QString value = parser.value(QStringLiteral("noise"));
    if (value != QLatin1String("on") && value != QLatin1String("off")) {
        fail(QStringLiteral("--noise takes on or off"));
        return false;
    }
    *noise = value == QLatin1String("on");
    return true;
}

int write(const QCommandLineParser& parser, const QString& folder)
{
    const bool hard = parser.isSet(QStringLiteral("hard"));
    ExperimentConditions conditions = usualConditions(hard ? Difficulty::Hard : Difficulty::Easy);
    ImageFormat format = ImageFormat::Tiff;
    if (!seedOption(parser, &conditions.seed) || !noiseOption(parser, &conditions.noise) ||
        !integerOption(parser, QStringLiteral("size"), 40, 2048, &conditions.size) ||
        !integerOption(parser, QStringLiteral("energies"), 41, 2001, &conditions.energies) ||
        !integerOption(parser, QStringLiteral("half"), 0, 8, &conditions.halfWidth) ||
        !integerOption(parser, QStringLiteral("drift"), 0, 20, &conditions.drift)) {
        return usageError;
    }
    if (hard && parser.isSet(QStringLiteral("energies"))) {
        return fail(QStringLiteral("--hard has energies of its own: leave --energies out"));
    }
    if (hard && conditions.drift > 0) {
        return fail(QStringLiteral("--hard has a sample that stays: leave --drift out"));
    }
    const QString formatName = parser.value(QStringLiteral("format"));
    if (!imageFormatOf(formatName, &format)) {
        return fail(QStringLiteral("--format takes tiff, img16, img32 or brnx"));
    }
    QString error;
    if (!writeExperiment(folder, conditions, format, &error)) {
        return fail(error);
    }
    const int stacks = hard ? 2 : 3; // there is no standard in the hard experiment
    standardOut() << "Wrote " << stacks * scanOf(conditions).size() << " images of "
                  << conditions.size << " x " << conditions.size << " pixels (" << formatName
                  << ") to " << folder << '\n';
    return 0;
}

int compare(const QCommandLineParser& parser, const QString& folder)
{
    int halfWidth = -1;
    if (!integerOption(parser, QStringLiteral("half"), 0, 100, &halfWidth)) {
        return usageError;
    }
    if (parser.isSet(QStringLiteral("other"))) {
        return compareFolders(folder, parser.value(QStringLiteral("other")), halfWidth,
                              standardOut());
    }
    return compareWithTruth(folder, halfWidth, standardOut());
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Writes the demonstration experiment, and compares the maps that Morvenkite "
                       "made of it with what was planted.\n\n"
                       "  morvenkite-demo write <folder>    images, references, configuration and "
                       "batch\n"
                       "  morvenkite-demo compare <folder>  exit code 0: within the limits, 1: "
                       "outside, 2: a file is missing"));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("write or compare"));
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QStringLiteral("the experiment's folder"));
    const auto add = [&parser](const char* name, const char* text, const char* value,
                               const char* standard) {
        parser.addOption({QLatin1String(name), QLatin1String(text), QLatin1String(value),
                          QLatin1String(standard)});
    };
    parser.addOption({QStringLiteral("hard"),
                      QStringLiteral("write: the hard experiment, with few counts, uneven energies "
                                     "and strong oscillations")});
    add("seed", "write: seed of noise and bad pixels (1)", "n", "");
    add("size", "write: width and height of the images (200)", "pixels", "");
    add("energies", "write: images of a stack (81)", "n", "");
    add("format", "write: tiff, img16, img32 or brnx", "name", "tiff");
    add("noise", "write: on or off", "switch", "on");
    add("drift", "write: the sample moves by so many pixels during the scan (0)", "pixels", "");
    add("half",
        "half width of the analysed blocks (2, with --hard 1; compare: that of the experiment)",
        "pixels", "");
    add("other", "compare: hold the maps against those of this folder", "folder", "");
}
} // namespace

int main(int argc, char* argv[])
{
    // Pictures are painted into images: no display, and so no GUI application.
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("morvenkite-demo"));
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 2) {
        return fail(QStringLiteral("give write or compare, and a folder (--help tells more)"));
    }
    if (arguments[0] == QLatin1String("write")) {
        return write(parser, arguments[1]);
    }
    if (arguments[0] == QLatin1String("compare")) {
        return compare(parser, arguments[1]);
    }
    return fail(QStringLiteral("unknown command %1: write or compare").arg(arguments[0]));
}
