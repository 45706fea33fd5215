#pragma once

#include "analysis/diagnostics/DarkCheck.h"
#include "batch/CommandEnd.h"
#include "maps/AnalyzeCond.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <memory>

class Analyzer2;
class CommandBook;
class DarkConductor;
class History;
class QThread;
class StackConductor;
struct Measurement;

/// Runs the dark check beside the event loop, on the images as they stand when it starts, and joins
/// the panel of the diagnostics to the configuration's list of bad pixels.
class DiagnosticsConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        const Measurement& data;
        Analyzer2& panel;
        int threads; ///< of a check; a number below 1 means as many as the machine has
    };
    DiagnosticsConductor(const Parts& parts, StackConductor& stacks, DarkConductor& dark,
                         QObject* parent = nullptr);
    /// Stops a check and waits for it.
    ~DiagnosticsConductor() override;

    void bindCommands(CommandBook& book);

    bool isChecking() const { return run_ != nullptr; }
    /// What the last check found, in people's words; empty before the first and when it failed.
    const QString& outcome() const { return outcome_; }

    /// Shows the configuration's list of bad pixels, once it was read.
    void showErrPMask();

public Q_SLOTS:
    /// The button: starts a dark check of the I1 images, or stops the one that runs.
    void darkCheck();
    /// A check that has found all by then is written all the same; of others nothing is.
    void stop();
    /// Nothing is collected yet; doCollectQInfo() is the way on which conditions will reach the
    /// panel.
    void startCollectQInfo() {}

Q_SIGNALS:
    void doCollectQInfo(const AnalyzeCond& ac);
    /// So much of the check is done. [%]
    void progressed(double percent);
    void runningChanged(bool running);

private:
    struct Run;

    void start(CommandEnd end);
    QString checkFault() const;
    void takeProgress(double percent);
    void finish();
    void tellReadiness();

    const Parts parts_;
    History* history_ = nullptr; ///< once commands are bound
    std::shared_ptr<Run> run_;   ///< the thread's too; null when none runs
    std::unique_ptr<QThread> thread_;
    CommandEnd end_; ///< of the command that started it
    QString outcome_;
};
