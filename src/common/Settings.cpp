#include "common/Settings.h"

#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

/// More would only take memory.
constexpr int mostThreads = 256;

const auto defaultRoot = QStringLiteral("C:/Data");
const auto analyzer2Key = QStringLiteral("ShowAnalyzer2Button");

/// The option's value replaces `target` when the option is present, even by an empty text.
void takeOption(Cfg& cfg, const QString& option, QString& target)
{
    target = cfg.value(option, target);
}

double readTimeout(Cfg& cfg)
{
    const QString option = QStringLiteral("-timeout");
    if (!cfg.contains(option))
        return 0.0;
    const QString text = cfg.value(option);
    const double seconds = text.toDouble();
    if (seconds > 0.0)
        return seconds;
    fault(QStringLiteral("-timeout needs a number of seconds above 0, not ") + quoted(text));
    return 0.0;
}

/// Threads of walks by key and option; 0 for the machine's.
int readThreads(Cfg& cfg)
{
    const QString key = QStringLiteral("Threads");
    const QString option = QStringLiteral("-threads");
    QString text;
    takeOption(cfg, key, text);
    takeOption(cfg, option, text);
    if (!cfg.contains(key) && !cfg.contains(option))
        return 0;
    const int threads = text.toInt();
    if (threads > 0)
        return qMin(threads, mostThreads);
    qDebug().noquote() << "Threads need a number above 0, not" << quoted(text)
                       << ": those of the machine are used";
    return 0;
}

QVector<QPair<QString, QString>> readVariables(Cfg& cfg)
{
    QVector<QPair<QString, QString>> variables;
    for (const QString& text : cfg.linesOf(QStringLiteral("-LET"))) {
        const int equals = text.indexOf(QLatin1Char('='));
        if (equals > 0)
            variables.append({text.left(equals), text.mid(equals + 1)});
        else
            fault(QStringLiteral("-let needs a name, \"=\" and a value, not ") + quoted(text));
    }
    return variables;
}

bool isOn(const QString& value)
{
    return value.toInt() == 1;
}

} // namespace

QString DataRoot = defaultRoot;
QString BatchRoot = defaultRoot;
bool ShowAnalyzer2Button = false;
int WalkThreads = 0;
bool VerboseMode = false;
QVector<QPair<QString, QString>> BatchVariables;
bool DebugMode = false;

Cfg& theCfg()
{
    static Cfg cfg;
    return cfg;
}

void initSettings()
{
    DataRoot = defaultRoot;
    BatchRoot = defaultRoot;
    ShowAnalyzer2Button = false;
    WalkThreads = 0;
    VerboseMode = false;
    BatchVariables.clear();
    DebugMode = false;
}

QString configPath(Cfg& cfg, const QString& applicationDir)
{
    QString path =
        QFileInfo(QDir(applicationDir), QStringLiteral("config.cfg")).canonicalFilePath();
    takeOption(cfg, QStringLiteral("-c"), path);
    takeOption(cfg, QStringLiteral("-config"), path);
    qDebug() << "cfg file" << path;
    return path;
}

void readConfiguration(Cfg& cfg, const QString& applicationDir)
{
    const QString path = configPath(cfg, applicationDir);
    const bool named =
        cfg.contains(QStringLiteral("-c")) || cfg.contains(QStringLiteral("-config"));
    if (path.isEmpty() && !named)
        qDebug() << "Can't open config file : no config.cfg beside the program";
    else
        cfg.readFile(path);
}

void applySettings(Cfg& cfg)
{
    takeOption(cfg, QStringLiteral("DataRoot"), DataRoot);
    takeOption(cfg, QStringLiteral("-d"), DataRoot);
    takeOption(cfg, QStringLiteral("BatchRoot"), BatchRoot);
    takeOption(cfg, QStringLiteral("-br"), BatchRoot);

    QString show = ShowAnalyzer2Button ? QStringLiteral("1") : QStringLiteral("0");
    takeOption(cfg, analyzer2Key, show);
    takeOption(cfg, QStringLiteral("-showA2B"), show);
    ShowAnalyzer2Button = isOn(show);

    WalkThreads = readThreads(cfg);
    VerboseMode = cfg.contains(QStringLiteral("-v"));
    BatchVariables = readVariables(cfg);

    qDebug() << "show analyzer 2" << ShowAnalyzer2Button;
    qDebug() << "Keys of Cfg::" << cfg.keys();
    qDebug() << analyzer2Key << cfg.contains(analyzer2Key) << cfg.value(analyzer2Key);
}

StartOptions readStartOptions(Cfg& cfg)
{
    StartOptions options;
    // "-j" belongs to the command line of older scripts: it is accepted and changes nothing.
    cfg.value(QStringLiteral("-j"));
    options.english = cfg.contains(QStringLiteral("-e"));
    takeOption(cfg, QStringLiteral("-b"), options.batchFile);
    options.execBatch = cfg.contains(QStringLiteral("-x"));
    options.timeout = readTimeout(cfg);
    options.debug = cfg.contains(QStringLiteral("-dbg"));
    DebugMode = options.debug;
    return options;
}

QString configuredBatch(Cfg& cfg)
{
    return cfg.linesOf(QStringLiteral("BATCH")).join(QLatin1Char('\n'));
}
