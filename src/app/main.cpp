#include "app/Body.h"
#include "app/Translation.h"
#include "batch/BatchCtrl.h"
#include "common/Cfg.h"
#include "common/LogRelay.h"
#include "common/Memory.h"
#include "common/Settings.h"

#include <QApplication>
#include <QDebug>
#include <QIcon>
#include <QStyleFactory>
#include <QTranslator>

namespace {

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icon-%1.png").arg(size));
    return icon;
}

} // namespace

int main(int argc, char** argv)
{
    keepFreedMemory();
    const LogRelay logRelay;
    theCfg() = Cfg(argc, argv, QString(), QStringList());
    QApplication app(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral(MORVENKITE_VERSION));
    QTranslator translator;
    QApplication::setWindowIcon(programIcon());
    QApplication::setStyle(QStringLiteral("Fusion"));
    qDebug() << "application folder" << QCoreApplication::applicationDirPath();

    const QString cfgPath = configPath(theCfg(), QCoreApplication::applicationDirPath());
    theCfg().readFile(cfgPath);
    applySettings(theCfg());
    const StartOptions options = readStartOptions(theCfg());
    DebugMode = options.debug;
    if (!options.english)
        installTranslation(translator);

    Body body;
    QObject::connect(&body, &Body::finishing, &app, &QApplication::closeAllWindows);
    // A run on its own neither follows nor changes where the user had the windows.
    if (!options.execBatch)
        body.restoreWindows();
    body.show();
    if (!options.batchFile.isEmpty())
        body.batchCtrl()->setBatchFile(options.batchFile);
    if (options.execBatch)
        body.batchCtrl()->execBatchSlot();
    return QApplication::exec();
}
