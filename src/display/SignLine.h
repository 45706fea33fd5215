#pragma once

#include "common/Mark.h"

#include <QWidget>

class QLabel;

/// A mark, and a text beside it that takes as many lines as it needs.
class SignLine : public QWidget
{
    Q_OBJECT
public:
    explicit SignLine(QWidget* parent = nullptr);

    void setLine(Mark mark, const QString& text);
    Mark sign() const { return mark_; }
    QString text() const;

private:
    Mark mark_ = Mark::Done;
    QLabel* const picture_;
    QLabel* const text_;
};
