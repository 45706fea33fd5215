#pragma once

#include "LcfFixtures.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

/// Reference files of one edge spectrum each, in a folder that goes with the object.
class ReferenceFiles
{
public:
    /// Path of a file of the spectrum edgeShape(E, edge, step, wiggle).
    QString write(const QString& name, double edge, double step, double wiggle) const
    {
        QString text;
        QTextStream out(&text);
        out.setRealNumberPrecision(17);
        for (const double E : scanEnergies(220))
            out << E << ' ' << edgeShape(E, edge, step, wiggle) << '\n';
        return writeText(name, text);
    }

    QString writeText(const QString& name, const QString& text) const
    {
        QFile file(dir_.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            return {};
        return file.fileName();
    }

    QString missing() const { return dir_.filePath(QStringLiteral("missing.dat")); }

private:
    QTemporaryDir dir_;
};
