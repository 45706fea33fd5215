#pragma once

#include "app/StepStates.h"
#include "common/TimeLeft.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class AnalysisConductor;
class CalibConductor;
class CursorConductor;
class DarkConductor;
class SaveConductor;
class StackConductor;
class XafsSpectrum;
struct ImageStack;
struct Measurement;
struct Panels;

/// Gathers the facts that the steps' states are made of, whenever one of them changes, and tells
/// the states at once. What is asked at each move of the mouse is the edge at the cursor alone.
class StepWatch : public QObject
{
    Q_OBJECT
public:
    /// What it watches; all of it outlives it.
    struct Parts
    {
        const Measurement& data;
        const Panels& panels;
        StackConductor& stacks;
        DarkConductor& dark;
        CursorConductor& cursor;
        CalibConductor& calibration;
        AnalysisConductor& analysis;
        SaveConductor& saving;
    };
    explicit StepWatch(const Parts& parts);

    const StepStates& states() const { return states_; }
    const StepFacts& facts() const { return facts_; }

Q_SIGNALS:
    void changed(const StepStates& states);

private:
    void connectData();
    void connectWalks();
    void connectForms();
    void readStack(StackFacts& facts, const ImageStack& stack) const;
    void readData();
    void readLoad(const ImageStack* stack, int done, int total);
    void readSpectrum(const XafsSpectrum& spectrum);
    void readCalibration();
    void readAnalysis();
    void readSaving();
    void readFields();
    void readAll();
    void tell();

    /// Files of a stack's load gone through, of all.
    struct Loading
    {
        int done = 0;
        int total = 0;
    };

    const Parts parts_;
    StepFacts facts_;
    StepStates states_;
    Loading loading_[2];
    TimeLeft loadLeft_;
    TimeLeft calibrationLeft_;
    TimeLeft analysisLeft_;
    QTimer reading_; ///< what changed in forms is read once for all fields of one act
};
