#include "app/Translation.h"

#include <QCoreApplication>
#include <QTranslator>

// Must be outside any namespace.
static void initTranslationResource()
{
    Q_INIT_RESOURCE(translation);
}

bool installTranslation(QTranslator& translator)
{
    initTranslationResource();
    // An empty suffix, unlike a null one, keeps the loader from looking for "*.qm" first.
    return translator.load(QStringLiteral(":Morvenkite_ja_JP"),
                           QCoreApplication::applicationDirPath(), QLatin1String(""),
                           QLatin1String("")) &&
           QCoreApplication::installTranslator(&translator);
}
