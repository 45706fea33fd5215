#include "display/NumberFields.h"

#include <QLineEdit>

#include <algorithm>

namespace {

const auto paleRed = QStringLiteral("background-color: rgb(255, 208, 208); color: black;");

bool isNumber(const QString& text, NumberFields::Kind kind)
{
    if (text.trimmed().isEmpty())
        return true;
    bool ok = false;
    if (kind == NumberFields::Whole)
        text.toInt(&ok);
    else
        text.toDouble(&ok);
    return ok;
}

} // namespace

double fieldValue(const QLineEdit* field)
{
    return field->text().toDouble();
}

NumberFields::NumberFields(QObject* parent)
    : QObject(parent)
{
}

void NumberFields::watch(QLineEdit* field, const QString& name, Kind kind)
{
    watched_.append({field, name, kind, field->toolTip(), field->styleSheet(), true});
    connect(field, &QLineEdit::textChanged, this, [this, field] { check(field); });
    check(field);
}

void NumberFields::forget(const QLineEdit* field)
{
    const auto known = std::find_if(watched_.begin(), watched_.end(),
                                    [field](const Watched& w) { return w.field == field; });
    if (known == watched_.end())
        return;
    const bool wasReadable = known->readable;
    watched_.erase(known);
    disconnect(field, nullptr, this, nullptr);
    if (!wasReadable)
        Q_EMIT changed();
}

QStringList NumberFields::unreadable() const
{
    QStringList names;
    for (const Watched& watched : watched_) {
        if (!watched.readable)
            names.append(watched.name);
    }
    return names;
}

void NumberFields::check(const QLineEdit* field)
{
    Watched& watched = *std::find_if(watched_.begin(), watched_.end(),
                                     [field](const Watched& w) { return w.field == field; });
    const bool readable = isNumber(watched.field->text(), watched.kind);
    if (readable == watched.readable)
        return;
    watched.readable = readable;
    show(watched);
    Q_EMIT changed();
}

void NumberFields::show(Watched& watched)
{
    if (watched.readable) {
        watched.field->setStyleSheet(watched.style);
        watched.field->setToolTip(watched.toolTip);
        return;
    }
    watched.toolTip = watched.field->toolTip();
    watched.style = watched.field->styleSheet();
    watched.field->setStyleSheet(paleRed);
    watched.field->setToolTip(watched.kind == Whole ? tr("This is no whole number: it counts as 0")
                                                    : tr("This is no number: it counts as 0"));
}
