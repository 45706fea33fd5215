#pragma once

#include "app/StepStates.h"

#include <QPushButton>

/// The button of a step in the bar: its number and name, its mark, and one line of its state. The
/// line wraps where the button is too narrow for it: it holds numbers, which are not to be cut.
class StepButton : public QPushButton
{
    Q_OBJECT
public:
    explicit StepButton(QWidget* parent = nullptr);

    /// The number in front of the name, from 1.
    void setStep(int number, const QString& name);
    void setState(const StepState& state);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int textLeft() const;
    QFont nameFont() const;
    QFont lineFont() const;
    QRect lineBox(int width) const;

    int number_ = 0;
    QString name_;
    StepState state_;
};
