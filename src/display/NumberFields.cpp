#include "display/NumberFields.h"

#include <QLineEdit>

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
    const int no = watched_.size();
    watched_.append({field, name, kind, field->toolTip(), field->styleSheet(), true});
    connect(field, &QLineEdit::textChanged, this, [this, no] { check(no); });
    check(no);
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

void NumberFields::check(int no)
{
    Watched& watched = watched_[no];
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
