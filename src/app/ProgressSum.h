#pragma once

#include "common/TimeLeft.h"

#include <QMap>
#include <QProgressBar>

/// Pieces of work that the bar of the program adds up.
struct ProgressPart
{
    enum Number
    {
        LoadingI1,
        LoadingI0,
        Walking,
        Calibrating,
        Exporting,
        CheckingDark,
        Registering,
        Count
    };
};

/// A progress bar over several pieces of work that may run at the same time, with the time left;
/// hidden while none does.
class ProgressSum : public QProgressBar
{
    Q_OBJECT
public:
    explicit ProgressSum(QWidget* parent = nullptr);

    /// Tells how far a piece of work has come, in steps of its own; 0 of 0 when it has ended. It
    /// counts as done until all have ended, so that the bar does not go back.
    void setPart(int part, int done, int total);

Q_SIGNALS:
    /// A piece of work has told how far it is, and the bar shows it.
    void partTold(int part, int done, int total);

private:
    struct Part
    {
        int done = 0;
        int total = 0;
        bool ended = false;
    };
    void showTimeLeft(double share);

    QMap<int, Part> parts_; ///< begun since nothing was at work
    TimeLeft left_;
};
