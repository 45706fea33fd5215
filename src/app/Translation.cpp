#include "app/Translation.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLibraryInfo>
#include <QTranslator>

// Must be outside any namespace.
static void initTranslationResource()
{
    Q_INIT_RESOURCE(translation);
}

namespace {

/// Qt's own dialogs and buttons come with a translation of Qt, which may not be installed.
void installQtTranslation(QTranslator& ofProgram)
{
    auto* const ofQt = new QTranslator(&ofProgram);
    const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    const QString file = QStringLiteral("qtbase_ja");
    if (ofQt->load(file, folder))
        QCoreApplication::installTranslator(ofQt);
    else
        qDebug().noquote()
            << QStringLiteral("No Japanese texts of Qt's own dialogs: %1/%2.qm").arg(folder, file);
}

} // namespace

bool installTranslation(QTranslator& translator)
{
    initTranslationResource();
    installQtTranslation(translator);
    // An empty suffix, unlike a null one, keeps the loader from looking for "*.qm" first.
    return translator.load(QStringLiteral(":Morvenkite_ja_JP"),
                           QCoreApplication::applicationDirPath(), QLatin1String(""),
                           QLatin1String("")) &&
           QCoreApplication::installTranslator(&translator);
}
