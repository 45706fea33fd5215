#pragma once

#include "batch/CommandEnd.h"
#include "image/LoadTiff.h"

#include <QObject>
#include <QThread>

#include <map>
#include <memory>

class BatchCtrl;
class CmdLine;
class CommandBook;
class DataBox;
class History;
class SelectDataFiles;
struct ImagePair;
struct ImageStack;
struct Measurement;

/// Fills and clears the two stacks, each with a loader in a thread of its own, and gives the images
/// their energies. Everything here runs on the GUI thread; images come as queued signals.
class StackConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    StackConductor(Measurement& data, DataBox& box, const BatchCtrl& batch,
                   QObject* parent = nullptr);
    /// Ends the loaders within a row of a file. Loads that a batch waits for report a failure.
    ~StackConductor() override;

    void bindCommands(CommandBook& book);

    /// Asks the loaders to leave their work, for the program's end.
    void requestStop();

    /// A load of the stack is under way, and plots stay quiet.
    bool isLoading(const ImageStack& stack) const;
    /// Files of the stack's last load that could not be read.
    int failedFiles(const ImageStack& stack) const { return loadingOf(stack).failedFiles; }
    /// Ends the loads that are under way behind the file that is being read. What has come stays.
    void stopLoads();

    /// Moves the images of a stack by their shifts [pixels], as long as each keeps a pixel where
    /// the image is; one that would not is a fault, and none is moved then. False for that.
    bool setShifts(ImageStack& stack, const QVector<QPoint>& shifts);

public Q_SLOTS:
    void clearI1Files();
    void clearI0Files();
    void readI1Files(const QStringList& files, bool newFile);
    void readI0Files(const QStringList& files, bool newFile);
    void finishedLoadI1Files(int jobsDone);
    void finishedLoadI0Files(int jobsDone);
    /// Takes an image, which is its own from now on; null is none.
    void loadedI1(TiffData* image, int fNo);
    void loadedI0(TiffData* image, int fNo);
    /// Gives the images of a stack their energies by its setup as it now stands.
    void applyEnergies(ImageStack& stack);

Q_SIGNALS:
    void loadI1Files(const LoadJob& job);
    void loadI0Files(const LoadJob& job);
    /// The stack is about to lose or get images, as `what` tells: "the I1 images are gone".
    void aboutToChange(const ImageStack* stack, const QString& what);
    void cleared(ImageStack* stack);
    /// A new selection of I1 is being read: plots stay quiet until loaded().
    void quietLoadStarted();
    /// An image was added. `show` when the user follows the load.
    void imageCame(ImageStack* stack, bool show);
    /// All that was selected of the stack has come.
    void loaded(ImageStack* stack);
    void energiesApplied(ImageStack* stack);
    /// Images of the stack have other shifts.
    void moved(ImageStack* stack);
    /// Files gone through of those of all jobs; 0 of 0 when the stack's loader is idle.
    void progressed(const ImageStack* stack, int done, int total);

private:
    /// A load that a batch waits for.
    struct Waiting
    {
        CommandEnd end;
        int ticket = 0;
    };

    /// The loading of one stack.
    struct Loading
    {
        Loading(ImageStack* filled, SelectDataFiles* filesRow, EX_CMD_ID id);

        ImageStack* const stack;
        SelectDataFiles* const row;
        const EX_CMD_ID command;
        QThread thread;
        const std::unique_ptr<LoadTiff> loader;
        int jobsSent = 0;
        int firstValidJob = 0; ///< images of earlier jobs were cleared before they came
        int jobsDone = 0;
        int failedFiles = 0;            ///< of the last load
        std::map<int, Waiting> waiting; ///< by the job's number
        QVector<LoadJob> jobs;          ///< that the stack's images come of
    };

    void setup(Loading& loading);
    const Loading& loadingOf(const ImageStack& stack) const;
    void tellHistory(const Loading& loading, EX_CMD_ID ofI1, EX_CMD_ID ofI0,
                     const QStringList& arguments = {}) const;
    QString loadLine(const Loading& loading, const QStringList& files, bool newFile) const;
    QStringList jobLines(const Loading& loading, int skip, int cutFirst, int cutLast) const;
    QStringList stackLines(const Loading& loading) const;
    void tellLoad(const Loading& loading, const QStringList& files, bool newFile) const;
    void clear(Loading& loading);
    void load(Loading& loading, bool byPattern, const CmdLine& cmd, CommandEnd end);
    LoadJob newJob(Loading& loading, const QStringList& files, const CmdLine& cmd);
    LoadJob prepareRead(Loading& loading, const QStringList& files, bool newFile,
                        const CmdLine& cmd, CommandEnd end);
    void read(Loading& loading, const LoadJob& job);
    bool take(Loading& loading, TiffData* image, int fNo);
    void finishLoad(Loading& loading, int jobsDone);
    void reportEnds(Loading& loading, int ticket, const QStringList& faults);
    void tellEnergyDoubts(Loading& loading);
    void tellPair(const ImageStack& stack, const ImagePair& pair, const char* line,
                  const QString& mark, QStringList& marks) const;

    Measurement& data_;
    const BatchCtrl& batch_;
    History* history_ = nullptr; ///< once commands are bound
    Loading i1_;
    Loading i0_;
};
