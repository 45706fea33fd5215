#pragma once

#include "app/StepStates.h"

#include <QFrame>

class QLabel;
class QPushButton;

/// What stands above a step's form: its mark, one sentence, and at most one button that mends what
/// the sentence tells.
class StateStrip : public QFrame
{
    Q_OBJECT
public:
    explicit StateStrip(QWidget* parent = nullptr);

    void setState(const StepState& state);

Q_SIGNALS:
    void mendAsked(Mend mend);

private:
    void tint(Mark mark);

    QLabel* const mark_;
    QLabel* const sentence_;
    QPushButton* const button_;
    StepState shown_;
};
