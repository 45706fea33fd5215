#include "DemoFiles.h"

#include "BatchText.h"
#include "ReferenceText.h"
#include "Truth.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {
QString badPixelText(const Phantom& phantom)
{
    const int size = phantom.conditions.size;
    QString text = QStringLiteral("# Size %1 %1\n").arg(size);
    for (const QVector<QPoint>& list : {phantom.hot, phantom.dead}) {
        for (const QPoint& p : list) {
            text += QStringLiteral("%1 %2\n").arg(p.x()).arg(p.y());
        }
    }
    return text;
}

QString configurationText(const QString& folder)
{
    return QStringLiteral("# Configuration of the demonstration experiment\n"
                          "DataRoot \"%1\"\n"
                          "BatchRoot \"%1\"\n"
                          "ErrPoints \"%1/bad-pixels.txt\"\n")
        .arg(folder);
}

bool saveText(const QString& fname, const QString& text, QString* error)
{
    QSaveFile file(fname);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.toUtf8());
        if (file.commit()) {
            return true;
        }
    }
    *error = QStringLiteral("Can't write %1: %2").arg(fname, file.errorString());
    return false;
}

bool makeFolders(const QString& folder, QString* error)
{
    // Configuration and batch lines can't hold quotes and line ends, and the batch would replace
    // its loop's variable.
    if (folder.contains(QLatin1Char('"')) || folder.contains(QLatin1Char('\n')) ||
        folder.contains(QLatin1String("$ref$"))) {
        *error = QStringLiteral("The folder's path must not hold a double quote, a line end or "
                                "$ref$: ") +
                 folder;
        return false;
    }
    for (const char* name : {"images", "references", "maps", "pictures"}) {
        const QString path = folder + QLatin1Char('/') + QLatin1String(name);
        if (!QDir().mkpath(path)) {
            *error = QStringLiteral("Can't make the folder %1").arg(path);
            return false;
        }
    }
    return true;
}

/// What an earlier experiment left in the folder would be loaded, or compared, with this one.
void removeEarlierFiles(const QString& folder)
{
    for (const char* name : {"images", "maps", "pictures"}) {
        QDir dir(folder + QLatin1Char('/') + QLatin1String(name));
        const QStringList filters{
            QStringLiteral("i?_????.*"),         QStringLiteral("std_????.*"),
            QStringLiteral("i?_????_*eV.*"),     QStringLiteral("*ratio-ref*"),
            QStringLiteral("*dmut-ref*"),        QStringLiteral("raw-ref*"),
            QStringLiteral("shift.emp"),         QStringLiteral("screen-*.png"),
            QStringLiteral("truth-result-*.png")};
        for (const QString& file : dir.entryList(filters, QDir::Files)) {
            dir.remove(file);
        }
    }
}

bool writeImages(const QString& folder, const Phantom& phantom, ImageFormat format, QString* error)
{
    const int size = phantom.conditions.size;
    QVector<Stack> stacks{Stack::I1, Stack::I0};
    if (!phantom.conditions.isHard()) {
        stacks.append(Stack::Standard);
    }
    for (int i = 0; i < phantom.scan.size(); ++i) {
        for (const Stack stack : qAsConst(stacks)) {
            const QString fname = demoFiles::imageFile(folder, phantom, stack, i, format);
            if (!writeImage(format, fname, size, size, exposure(phantom, stack, i))) {
                *error = QStringLiteral("Can't write %1").arg(fname);
                return false;
            }
        }
    }
    return true;
}

bool writeReferences(const QString& folder, Difficulty difficulty, QString* error)
{
    for (int s = 0; s < speciesCount; ++s) {
        if (!saveText(demoFiles::referenceFile(folder, s), referenceText(difficulty, s), error)) {
            return false;
        }
    }
    return difficulty == Difficulty::Easy ||
           saveText(demoFiles::kevReference(folder), kevReferenceText(), error);
}
} // namespace

QString demoFiles::stackName(Stack stack)
{
    switch (stack) {
    case Stack::I1:
        return QStringLiteral("i1");
    case Stack::I0:
        return QStringLiteral("i0");
    default:
        return QStringLiteral("std");
    }
}

QString demoFiles::imagePattern(Stack stack, ImageFormat format)
{
    return stackName(stack) + QStringLiteral("_*.") + imageSuffix(format);
}

QString demoFiles::imageFile(const QString& folder, const Phantom& phantom, Stack stack, int index,
                             ImageFormat format)
{
    QString number = QStringLiteral("%1").arg(index, 4, 10, QLatin1Char('0'));
    if (phantom.conditions.isHard()) {
        number += QStringLiteral("_%1eV").arg(phantom.scan[index], 0, 'f', 2);
    }
    return folder +
           QStringLiteral("/images/%1_%2.%3").arg(stackName(stack), number, imageSuffix(format));
}

QString demoFiles::referenceFile(const QString& folder, int species)
{
    return folder + QStringLiteral("/references/species-%1.dat").arg(species);
}

QString demoFiles::kevReference(const QString& folder)
{
    return folder + QStringLiteral("/references/in-keV.dat");
}

QString demoFiles::truthFile(const QString& folder)
{
    return folder + QStringLiteral("/truth.dat");
}

QString demoFiles::mapText(const QString& folder, const QString& kind, int species)
{
    // The program adds the number of the row on show.
    return folder + QStringLiteral("/maps/%1-ref%2-%2.dat").arg(kind).arg(species);
}

QString demoFiles::mapTiff(const QString& folder, const QString& kind, int species)
{
    return folder + QStringLiteral("/maps/%1-ref%2-%2.tif").arg(kind).arg(species);
}

QString demoFiles::analysisMap(const QString& folder, const QString& word)
{
    // The program adds the word of the map.
    return folder + QStringLiteral("/maps/map-%1.dat").arg(word);
}

QString demoFiles::shiftMap(const QString& folder)
{
    return folder + QStringLiteral("/maps/shift.emp");
}

QString demoFiles::pictureFolder(const QString& folder)
{
    return folder + QStringLiteral("/pictures");
}

bool writeExperiment(const QString& folder, const ExperimentConditions& conditions,
                     ImageFormat format, QString* error)
{
    const QString path = QFileInfo(folder).absoluteFilePath();
    if (!makeFolders(path, error)) {
        return false;
    }
    removeEarlierFiles(path);
    const Phantom phantom = makePhantom(conditions);
    return writeImages(path, phantom, format, error) &&
           writeReferences(path, conditions.difficulty, error) &&
           saveText(path + QStringLiteral("/bad-pixels.txt"), badPixelText(phantom), error) &&
           saveText(path + QStringLiteral("/config.cfg"), configurationText(path), error) &&
           saveText(path + QStringLiteral("/demo.bat"), batchText(path, phantom, format), error) &&
           saveText(demoFiles::truthFile(path), truthText(phantom), error);
}
