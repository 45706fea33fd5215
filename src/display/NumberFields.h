#pragma once

#include <QObject>
#include <QStringList>
#include <QVector>

class QLineEdit;

/// Its number; 0 for a field that can't be read as one.
double fieldValue(const QLineEdit* field);

/// Tells which of a panel's number fields can not be read as a number. Such a field keeps the value
/// that it always had, 0, and is no longer silent about it: it turns pale red, and its tool tip
/// says why. An empty field counts as readable, and as 0.
class NumberFields : public QObject
{
    Q_OBJECT
public:
    /// What a field is read as. A number with a fraction is no whole one, and counts as 0 there.
    enum Kind
    {
        Number,
        Whole
    };

    explicit NumberFields(QObject* parent = nullptr);

    /// Watches a field from now on, under the name that people know it by. Its own tool tip and
    /// style stay while it can be read.
    void watch(QLineEdit* field, const QString& name, Kind kind = Number);

    /// Watches it no longer: it is about to go.
    void forget(const QLineEdit* field);

    /// Names of the fields that can't be read, in the order of watching.
    QStringList unreadable() const;

Q_SIGNALS:
    void changed(); ///< a field can or can't be read any more

private:
    struct Watched
    {
        QLineEdit* field;
        QString name;
        Kind kind;
        QString toolTip;
        QString style;
        bool readable;
    };

    void check(const QLineEdit* field);
    void show(Watched& watched);

    QVector<Watched> watched_;
};
