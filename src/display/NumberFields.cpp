#include "display/NumberFields.h"

#include <QLineEdit>

namespace {

const auto paleRed = QStringLiteral("background-color: rgb(255, 208, 208); color: black;");

bool isNumber(const QString& text)
{
    bool ok = text.trimmed().isEmpty();
    if (!ok)
        text.toDouble(&ok);
    return ok;
}

} // namespace

NumberFields::NumberFields(QObject* parent)
    : QObject(parent)
{
}

void NumberFields::watch(QLineEdit* field, const QString& name)
{
    const int no = watched_.size();
    watched_.append({field, name, field->toolTip(), true});
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
    const bool readable = isNumber(watched.field->text());
    if (readable == watched.readable)
        return;
    watched.readable = readable;
    show(watched);
    Q_EMIT changed();
}

void NumberFields::show(Watched& watched)
{
    if (watched.readable) {
        watched.field->setStyleSheet(QString());
        watched.field->setToolTip(watched.toolTip);
        return;
    }
    watched.toolTip = watched.field->toolTip();
    watched.field->setStyleSheet(paleRed);
    watched.field->setToolTip(tr("This is no number: it counts as 0"));
}
