#include "app/ProgramOptions.h"
#include "batch/CommandTable.h"

#include <QFile>

#include <cstdio>

// Writes the manual page from the tables that the program itself goes by: make_manual <file>

namespace {

/// Plain text as the typesetter takes it: no character of it commands.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    text.replace(QLatin1Char('\''), QLatin1String("\\(aq"));
    if (text.startsWith(QLatin1Char('.')))
        text.prepend(QLatin1String("\\&"));
    return text;
}

/// The same with what stands between backticks in bold.
QString marked(const QString& text)
{
    QString shown;
    bool bold = false;
    for (const QString& part : text.split(QLatin1Char('`'))) {
        shown +=
            bold ? QLatin1String("\\fB") + escaped(part) + QLatin1String("\\fR") : escaped(part);
        bold = !bold;
    }
    return shown;
}

/// A paragraph with a bold head; the effect is a sentence without its full stop.
QString item(const QString& head, const QString& effect)
{
    return QStringLiteral(".TP\n\\fB%1\\fR\n%2.\n").arg(escaped(head), marked(effect));
}

QString section(const QString& title)
{
    return QStringLiteral(".SH %1\n").arg(title);
}

QString rows(const QVector<ProgramOption>& options)
{
    QString text;
    for (const ProgramOption& option : options)
        text += item(option.usage, option.effect);
    return text;
}

QString synopsis()
{
    QString text;
    for (const QString& usage : programUsages())
        text += QStringLiteral(".B morvenkite\n%1\n.br\n").arg(escaped(usage));
    return text;
}

QString commands()
{
    QString text;
    for (const KeywordRow& keyword : keywordTable())
        text += item(keyword.usage(), keyword.effect);
    for (const ExCmdRow& command : exCmdTable() + extensionTable()) {
        if (command.id != ExCmdNone)
            text += item(command.usage(), command.effect);
    }
    return text;
}

QString page()
{
    return QStringLiteral(".TH MORVENKITE 1 \"\" \"Morvenkite %1\" \"User commands\"\n")
               .arg(QLatin1String(MORVENKITE_VERSION)) +
           section(QStringLiteral("NAME")) +
           QStringLiteral("morvenkite \\- viewer and analyser of imaging X\\-ray absorption "
                          "spectra\n") +
           section(QStringLiteral("SYNOPSIS")) + synopsis() +
           section(QStringLiteral("DESCRIPTION")) +
           QStringLiteral(
               "Morvenkite takes the image stacks of an energy scan, with the sample and without, "
               "forms an\nabsorption spectrum for every block of pixels, calibrates and "
               "normalises it, and makes maps of\nfits by reference spectra, of edge shifts and "
               "of elements. It is used at the desktop, and\nunattended by batch files.\n") +
           section(QStringLiteral("OPTIONS")) + rows(programOptions()) +
           section(QStringLiteral("BATCH COMMANDS")) +
           QStringLiteral("A batch file has one command a line. Words are taken in any case; a "
                          "line that begins with #\nis a comment; an argument with blanks stands "
                          "in double quotes.\n") +
           commands() + section(QStringLiteral("ENVIRONMENT")) + rows(programVariables()) +
           section(QStringLiteral("EXIT STATUS")) +
           QStringLiteral("A run with \\-x ends with 0 when all went well, 1 after failures, 2 "
                          "when it could not start, 3\nwhen it made no progress for as long as "
                          "\\-timeout allows, and 128 + n by signal n. A check\nends with 0 "
                          "without findings, 1 with some, 2 when it could not read the batch.\n") +
           section(QStringLiteral("FILES")) +
           item(QStringLiteral("/usr/share/doc/morvenkite/docs"),
                QStringLiteral("the user guide, the formats of all files, the batch language "
                               "with examples"));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: morvenkite-manual <file>\n");
        return 2;
    }
    QFile file(QFile::decodeName(argv[1]));
    const QByteArray text = page().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        std::perror(argv[1]);
        return 1;
    }
    return 0;
}
