#include "app/ProgramOptions.h"

const QVector<ProgramOption>& programOptions()
{
    static const QVector<ProgramOption> options{
        {QStringLiteral("-c <file>"),
         QStringLiteral("configuration file, by default `config.cfg` beside the program (`-config "
                        "<file>` is the same and wins)")},
        {QStringLiteral("-d <folder>, -br <folder>"),
         QStringLiteral("start folders of the dialogs for data and for batch files")},
        {QStringLiteral("-b <file>"), QStringLiteral("opens a batch file in the batch window")},
        {QStringLiteral("-x"),
         QStringLiteral("starts it, or the configuration's batch lines alone; the exit code then "
                        "tells how it went")},
        {QStringLiteral("-timeout <seconds>"),
         QStringLiteral("with `-x`: ends a run when the command that it waits for makes no "
                        "progress for so long")},
        {QStringLiteral("-v"), QStringLiteral("each batch command logs the seconds that it took")},
        {QStringLiteral("-let <name>=<value>"),
         QStringLiteral("sets the batch variable `$name$` before the first line; any number of "
                        "times")},
        {QStringLiteral("-threads <n>"),
         QStringLiteral("threads of walks over maps, by default the machine's; the maps are the "
                        "same for any number")},
        {QStringLiteral("-e"), QStringLiteral("shows the interface in English, not in Japanese")},
        {QStringLiteral("-showA2B 1"),
         QStringLiteral("shows the button of the second analysis panel")},
        {QStringLiteral("--check <file>"),
         QStringLiteral("tells what a batch would stumble over, without a window, and ends; the "
                        "exit code tells whether there was anything")},
        {QStringLiteral("--help"), QStringLiteral("lists these options, and ends")},
        {QStringLiteral("--help-commands"), QStringLiteral("lists all batch commands, and ends")},
        {QStringLiteral("--version"),
         QStringLiteral("tells the version, those of Qt, libtiff and FFTW, and the instruction set "
                        "in use, and ends")},
    };
    return options;
}

const QVector<QString>& programUsages()
{
    static const QVector<QString> usages{
        QStringLiteral("[-e] [-c <file>] [-b <file> [-x [-timeout <seconds>] [-v]]] "
                       "[-let <name>=<value>]... [-threads <n>]"),
        QStringLiteral("--check <file> [-c <file>] [-d <folder>]"),
        QStringLiteral("--help"),
        QStringLiteral("--help-commands"),
        QStringLiteral("--version"),
    };
    return usages;
}

const QVector<ProgramOption>& programVariables()
{
    static const QVector<ProgramOption> variables{
        {QStringLiteral("MORVENKITE_ISA"),
         QStringLiteral("`sse2`, `avx2` or `avx512` picks the vectors that walks use, by default "
                        "the widest of the processor; the maps are the same for each")},
        {QStringLiteral("SOURCE_DATE_EPOCH"),
         QStringLiteral("seconds since 1970 that files get as their date in place of the present, "
                        "so that two runs write the same bytes")},
    };
    return variables;
}
