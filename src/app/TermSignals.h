#pragma once

#include <QObject>

/// While it lives, SIGTERM and SIGINT do not end the process but are told by received(), from the
/// event loop, where everything may be called. One at a time, of the GUI thread.
class TermSignals : public QObject
{
    Q_OBJECT
public:
    explicit TermSignals(QObject* parent = nullptr);
    ~TermSignals() override;

Q_SIGNALS:
    void received(int signalNumber);

private:
    void readSignal();

    int pipe_[2] = {-1, -1}; ///< read end, write end
};
