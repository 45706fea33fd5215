#include "app/ConsoleModes.h"

#include "app/ProgramOptions.h"
#include "batch/BatchCheck.h"
#include "batch/BatchFile.h"
#include "batch/CommandTable.h"
#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/InstructionSet.h"
#include "common/Settings.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <fftw3.h>
#include <tiffio.h>

#include <algorithm>
#include <cstdio>

namespace {

/// Exit codes; see docs/file-formats.md.
constexpr int nothingFound = 0;
constexpr int somethingFound = 1;
constexpr int notChecked = 2;

void print(const QString& line)
{
    std::printf("%s\n", line.toLocal8Bit().constData());
}

int failed(const QString& why)
{
    std::fprintf(stderr, "Not checked: %s\n", why.toLocal8Bit().constData());
    return notChecked;
}

int checkFile(const QString& fname)
{
    QString text;
    const FaultCollector faults;
    readConfiguration(theCfg(), QCoreApplication::applicationDirPath());
    applySettings(theCfg());
    const QString why = fname.isEmpty() ? QStringLiteral("--check needs the name of a batch file")
                                        : readBatchFile(fname, text);
    if (!why.isEmpty() || !faults.faults().isEmpty())
        return failed(why.isEmpty() ? faults.faults().first() : why);
    BatchCheckOptions options;
    options.before = configuredBatch(theCfg());
    const BatchReport report = checkBatch(text, options);
    for (const QString& line : report.lines(fname))
        print(line);
    return report.count == 0 ? nothingFound : somethingFound;
}

/// A text of the tables as a terminal shows it.
QString plain(QString text)
{
    return text.remove(QLatin1Char('`'));
}

void listRows(const QVector<ProgramOption>& rows)
{
    for (const ProgramOption& row : rows)
        print(QStringLiteral("%1\n    %2").arg(row.usage, plain(row.effect)));
}

int listOptions()
{
    for (const QString& usage : programUsages())
        print(QLatin1String("morvenkite ") + usage);
    print(QString());
    listRows(programOptions());
    print(QStringLiteral("\nIn the environment:"));
    listRows(programVariables());
    return nothingFound;
}

int listCommands()
{
    for (const KeywordRow& keyword : keywordTable())
        print(QStringLiteral("%1\n    %2").arg(keyword.usage(), keyword.effect));
    for (const ExCmdRow& command : exCmdTable() + extensionTable()) {
        if (command.id == ExCmdNone)
            continue;
        const bool waits = command.later && command.id != ExCmdQuit;
        print(command.usage() + QLatin1String("\n    ") + command.effect +
              (waits ? QLatin1String("; the run waits for it") : QLatin1String()));
        if (!command.example.isEmpty())
            print(QLatin1String("    ") + command.exampleLine());
    }
    return nothingFound;
}

int tellVersion(const char* version)
{
    const QString tiff = QString::fromLatin1(TIFFGetVersion()).section(QLatin1Char('\n'), 0, 0);
    print(QStringLiteral("Morvenkite ") + QLatin1String(version));
    print(QStringLiteral("Qt ") + QLatin1String(qVersion()));
    print(tiff);
    print(QLatin1String(fftw_version));
    print(QStringLiteral("instruction set ") + QLatin1String(nameOf(instructionSet())));
    return nothingFound;
}

} // namespace

std::optional<int> runConsoleMode(int argc, char** argv, const char* version)
{
    const QString check = QStringLiteral("--check");
    const QString commands = QStringLiteral("--help-commands");
    const QString help = QStringLiteral("--help");
    const QStringList modes{check, commands, help, QStringLiteral("--version")};
    Cfg& cfg = theCfg();
    if (std::none_of(modes.begin(), modes.end(), [&](const QString& m) { return cfg.contains(m); }))
        return {};
    // The log is for those who look at a run.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QCoreApplication application(argc, argv);
    if (cfg.contains(check))
        return checkFile(cfg.value(check));
    if (cfg.contains(commands))
        return listCommands();
    return cfg.contains(help) ? listOptions() : tellVersion(version);
}
