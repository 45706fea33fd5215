#include "spectrum/Remark.h"

#include <QCoreApplication>
#include <QDebug>

namespace {

/// A "%" that comes with the last argument stays: texts of a file are put last.
QString filled(QString text, const QStringList& args)
{
    for (const QString& arg : args)
        text = text.arg(arg);
    return text;
}

} // namespace

QString Remark::english() const
{
    return filled(QLatin1String(text), args);
}

QString Remark::shown() const
{
    // An outcome as an argument has words of its own; other arguments have no translation.
    QStringList words;
    for (const QString& arg : args)
        words.append(QCoreApplication::translate("Outcome", qPrintable(arg)));
    return filled(QCoreApplication::translate("Remark", text), words);
}

void Remark::log(const QString& fname) const
{
    qDebug().noquote() << fname + QLatin1String(": ") + english();
}
