#include "common/FileNames.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

/// Base name (a path or the last part of one) and extension joined by a point, if there is one.
QString joined(const QString& base, const QString& extension)
{
    return extension.isEmpty() ? base : base + QLatin1Char('.') + extension;
}

/// Extension of a name as it is written there; empty for one that the program does not know.
QString extensionOf(const QString& name)
{
    static const QStringList known{
        QStringLiteral("tif"), QStringLiteral("tiff"),   QStringLiteral("dat"),
        QStringLiteral("txt"), QStringLiteral("csv"),    QStringLiteral("png"),
        QStringLiteral("bmp"), QStringLiteral("jpg"),    QStringLiteral("emp"),
        QStringLiteral("bat"), QStringLiteral("session")};
    const QString own = QFileInfo(name).suffix();
    return known.contains(own, Qt::CaseInsensitive) ? own : QString();
}

/// The name without its extension, if it has one, and the point in front of it.
QString withoutExtension(const QString& name)
{
    const QString path = QDir::fromNativeSeparators(name);
    if (path.endsWith(QLatin1Char('.')) && !QFileInfo(path).completeBaseName().isEmpty())
        return path.left(path.size() - 1);
    const int length = extensionOf(path).size();
    return length > 0 ? path.left(path.size() - length - 1) : path;
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The number that starts at `from`, without leading zeros; `from` moves behind it.
QStringRef takeNumber(const QString& text, int& from)
{
    while (from < text.size() && text[from] == QLatin1Char('0'))
        ++from;
    const int first = from;
    while (from < text.size() && isDigit(text[from]))
        ++from;
    return text.midRef(first, from - first);
}

/// Nothing, or a folder alone: what is made of it would be a hidden file that nobody asked for.
bool namesNoFile(const QString& name)
{
    return name.isEmpty() || QDir::fromNativeSeparators(name).endsWith(QLatin1Char('/'));
}

} // namespace

QString withExtension(const QString& name, const QString& defaultExt)
{
    if (namesNoFile(name))
        return {};
    const QString own = extensionOf(name);
    const QString full = joined(withoutExtension(name), own.isEmpty() ? defaultExt : own);
    return QFileInfo(full).absoluteFilePath();
}

QString withReplacedExtension(const QString& name, const QString& ext)
{
    return namesNoFile(name) ? QString() : joined(withoutExtension(name), ext);
}

QString addSuffix(const QString& name, const QString& suffix)
{
    if (namesNoFile(name))
        return {};
    return joined(withoutExtension(name) + QLatin1Char('-') + suffix, extensionOf(name));
}

QString withInsertedNumber(const QString& name, const QString& num)
{
    return addSuffix(name, num);
}

bool naturallyLess(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const QStringRef n = takeNumber(a, i);
            const QStringRef m = takeNumber(b, j);
            if (n.size() != m.size())
                return n.size() < m.size();
            if (n != m)
                return n < m;
            continue;
        }
        const QChar x = a[i++].toCaseFolded();
        const QChar y = b[j++].toCaseFolded();
        if (x != y)
            return x < y;
    }
    const int restOfA = a.size() - i;
    const int restOfB = b.size() - j;
    return restOfA != restOfB ? restOfA < restOfB : a < b;
}

void sortNaturally(QStringList& names)
{
    std::sort(names.begin(), names.end(), naturallyLess);
}

QStringList filesOfPattern(const QString& folder, const QStringList& filters)
{
    QStringList files = QDir(folder).entryList(filters, QDir::Files, QDir::NoSort);
    sortNaturally(files);
    for (QString& file : files)
        file.prepend(folder);
    return files;
}

QString patternOfFiles(const QStringList& files, const QString& folder)
{
    QString start = files.first();
    for (const QString& file : files) {
        while (!file.startsWith(start))
            start.chop(1);
    }
    const QString name = start.mid(folder.size());
    const QString filter = name + QStringLiteral("*.") + QFileInfo(files.first()).suffix();
    const bool plain = start.size() >= folder.size() && !name.contains(QLatin1Char('*')) &&
                       !name.contains(QLatin1Char('?')) && !name.contains(QLatin1Char('['));
    return plain && files.size() > 1 && filesOfPattern(folder, {filter}) == files ? filter
                                                                                  : QString();
}
