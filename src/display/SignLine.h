#pragma once

#include <QWidget>

class QLabel;

/// What a line of text means at a glance. The signs differ by shape, so colours need not be seen.
enum class Sign
{
    Good,    ///< a tick in a circle
    Look,    ///< a triangle
    Prevents ///< a cross in a square
};

/// A sign, and a text beside it that takes as many lines as it needs.
class SignLine : public QWidget
{
    Q_OBJECT
public:
    explicit SignLine(QWidget* parent = nullptr);

    void setLine(Sign sign, const QString& text);
    Sign sign() const { return sign_; }
    QString text() const;

private:
    void showSign();

    Sign sign_ = Sign::Good;
    QLabel* const picture_;
    QLabel* const text_;
};
