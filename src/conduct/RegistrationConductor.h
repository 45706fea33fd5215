#pragma once

#include "batch/CommandEnd.h"
#include "common/ExCmdId.h"
#include "registration/ImgProc.h"
#include "registration/StackAlignment.h"

#include <QObject>

class AlignmentRun;
class CommandBook;
class History;
class ImageBox;
class StackConductor;
class ViewConductor;
class WalkConductor;
struct ImageStack;
struct Measurement;

/// Registration of the stack that is browsed: gives the panel the image on show, keeps what image
/// its reference is of, moves images by the shifts that are set, and has those of a whole stack
/// found on the threads of the walks.
class RegistrationConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        Measurement& data;
        const ImageBox& imageBox;
        ImgProc& panel;
    };
    RegistrationConductor(const Parts& parts, StackConductor& stacks, const ViewConductor& view,
                          WalkConductor& walks, QObject* parent = nullptr);
    ~RegistrationConductor() override;

    void bindCommands(CommandBook& book);

    /// The shifts of a whole stack are being searched.
    bool isRunning() const { return search_.run != nullptr; }
    /// Ends that search, if there is one: no image is moved.
    void stop();

public Q_SLOTS:
    /// Gives the panel the image on show, as it was read.
    void giveProcData();
    /// Moves the image on show.
    void setImgShift(int dx, int dy);
    /// Moves all images of both stacks back.
    void clearAllShifts();
    /// The button: searches the shifts of the whole stack, or stops the search.
    void autoAll();

Q_SIGNALS:
    void progressed(int done, int total);
    void runningChanged(bool running);
    void ended(bool whole);

private:
    /// What image the reference is of, and how it was made.
    struct Reference
    {
        const ImageStack* stack = nullptr; ///< null when its image is gone
        int number = -1;
        RegistrationSettings settings;
    };

    /// The search that runs.
    struct Search
    {
        AlignmentRun* run = nullptr; ///< a child; null when none runs
        ImageStack* stack = nullptr;
        bool movesI0 = false; ///< by the shifts of I1
        CommandEnd end;       ///< of the batch command that started it
    };

    void connectPanel();
    void connectConductors(const ViewConductor& view);
    void tellDeeds();
    SharedImage shownImage() const;
    bool hasImage(const ImageStack& stack, int number) const;
    void imageShown();
    void stackCleared(const ImageStack& stack);
    void imagesMoved();
    void tellShifts();
    void takeReference();
    void takeReference(int number);
    void keepReference(const ImageStack& stack, int number);
    void moveImage(ImageStack& stack, int number, const QPoint& shift);
    QString whyNotSearched(bool toOneBefore) const;
    void startSearch(bool toOneBefore, bool movesI0, CommandEnd end);
    AlignmentOrder orderOf(bool toOneBefore) const;
    void shiftsFound(const StackShifts& found);
    void moveI0();
    CommandEnd leaveSearch();
    void stopSearch(const QString& why);
    void note(EX_CMD_ID id, const QStringList& arguments = {});
    QStringList stateLines() const;
    void addShiftLines(QStringList& lines, const ImageStack& stack, int choice) const;

    const Parts parts_;
    StackConductor& stacks_;
    const ViewConductor& view_;
    WalkConductor& walks_;
    History* history_ = nullptr; ///< once commands are bound
    Reference reference_;
    Search search_;
};
