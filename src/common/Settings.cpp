#include "common/Settings.h"

#include "common/Cfg.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

const auto defaultRoot = QStringLiteral("C:/Data");
const auto analyzer2Key = QStringLiteral("ShowAnalyzer2Button");

/// The option's value replaces `target` when the option is present, even by an empty text.
void takeOption(Cfg& cfg, const QString& option, QString& target)
{
    target = cfg.value(option, target);
}

bool isOn(const QString& value)
{
    return value.toInt() == 1;
}

} // namespace

QString DataRoot = defaultRoot;
QString BatchRoot = defaultRoot;
bool ShowAnalyzer2Button = false;
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
    options.debug = cfg.contains(QStringLiteral("-dbg"));
    DebugMode = options.debug;
    return options;
}
