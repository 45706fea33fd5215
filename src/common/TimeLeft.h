#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <optional>

/// The time that work has left at its pace so far. Nothing is told before it has run for 0.7 s and
/// done 3 %: until then it would be a guess.
class TimeLeft
{
    Q_DECLARE_TR_FUNCTIONS(TimeLeft)
public:
    void start() { begun_.start(); }

    /// For a share from 0 to 1 that is done now; none while nobody can tell. [s]
    std::optional<int> secondsAt(double share) const;

    /// "17 s left", "2 min 05 s left" from 100 s on.
    static QString text(int seconds);

private:
    QElapsedTimer begun_;
};
