#include "common/FileNames.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// Base name (a path or the last part of one) and extension joined by a point, if there is one.
QString joined(const QString& base, const QString& extension)
{
    return extension.isEmpty() ? base : base + QLatin1Char('.') + extension;
}

/// The name without its extension and the point in front of it.
QString withoutExtension(const QString& name)
{
    const QString path = QDir::fromNativeSeparators(name);
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1) + QFileInfo(path).completeBaseName();
}

} // namespace

QString withExtension(const QString& name, const QString& defaultExt)
{
    if (name.isEmpty())
        return name;
    const QString own = QFileInfo(name).suffix();
    const QString full = joined(withoutExtension(name), own.isEmpty() ? defaultExt : own);
    return QFileInfo(full).absoluteFilePath();
}

QString withReplacedExtension(const QString& name, const QString& ext)
{
    return name.isEmpty() ? name : joined(withoutExtension(name), ext);
}

QString addSuffix(const QString& name, const QString& suffix)
{
    return joined(withoutExtension(name) + QLatin1Char('-') + suffix, QFileInfo(name).suffix());
}

QString withInsertedNumber(const QString& name, const QString& num)
{
    return addSuffix(name, num);
}
