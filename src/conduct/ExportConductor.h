#pragma once

#include "batch/CommandEnd.h"
#include "common/ExCmdId.h"
#include "conduct/WalkConductor.h"
#include "output/SpectrumExport.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class CommandBook;
class History;
class LateDialog;
class QWidget;
class RunRow;
class SaveBox;
class SourceReader;
class StackConductor;
struct FourierSums;
struct Measurement;

/// Writes the spectra of an area into text files, and runs the Fourier analysis of the stack: walks
/// that run beside the analyses, one of them at a time.
class ExportConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        const Measurement& data;
        const SourceReader& reader;
        SaveBox& saveBox;
    };
    /// The dialog belongs to the window.
    ExportConductor(const Parts& parts, StackConductor& stacks, WalkConductor& walks,
                    QWidget& window);
    ~ExportConductor() override;

    void bindCommands(CommandBook& book);

    bool isRunning() const { return run_ != nullptr; }

public Q_SLOTS:
    /// The forms that are checked in the box, each into a file of its own (spectrumFileName()).
    void saveEachSpectrum(const QString& fname);
    void saveEachNormalizedXafsSpectrum(const QString& fname);
    void saveEachRawXafsSpectrum(const QString& fname);
    void saveEachRawSpectrum(const QString& fname);
    /// Transforms the counts of each block over the images; the correlation of each frequency with
    /// the first image goes to the log.
    void execFourierA();
    /// What runs ends, and writes no file.
    void stop();
    /// Shows why neither can start, if there is a reason.
    void tellReadiness();

Q_SIGNALS:
    void progressed(double percent);
    void runningChanged(bool running);
    void saved(const QString& file);

private:
    struct Run;

    LateDialog* newDialog(QWidget& window);
    void connectRows();
    void note(EX_CMD_ID id, const QStringList& arguments = {});
    void exportForms(const QVector<SpectrumForm>& forms, const QString& fname, CommandEnd end);
    void startFourier(CommandEnd end);
    QString startFault(AnalyzeCond& area) const;
    bool openFiles(const QVector<SpectrumForm>& forms, const QString& fname,
                   const AnalyzeCond& area, WalkOrder& order, Run& run) const;
    void begin(std::unique_ptr<Run> run, WalkOrder order, RunRow& row, CommandEnd end);
    void positionsTaken(const WalkRun& taken);
    void finish();
    void leave(const QStringList& faults);

    const Parts parts_;
    WalkConductor& walks_;
    LateDialog* dialog_;
    History* history_ = nullptr; ///< once commands are bound
    std::unique_ptr<Run> run_;   ///< null when none runs
};
