#pragma once

#include "registration/ShiftClimb.h"

#include <QVector>

#include <condition_variable>
#include <functional>
#include <mutex>

/// How the images of a stack are made binary and what they are compared with. A value: nothing that
/// changes later reaches a search that runs.
struct AlignmentOrder
{
    TiffStack images;         ///< with the shifts that they have; at least one
    int thousandths = 500;    ///< threshold, of the way between the extremes of each image
    bool edges = false;       ///< of the edge images
    bool toOneBefore = false; ///< each image against the one before it, else all against this:
    BitImage reference;
    QPoint referenceShift;    ///< of the image that the reference was made of
    int referenceNumber = -1; ///< of that image in the stack; -1 when it is none of it
};

/// What was found of each image.
struct StackShifts
{
    QVector<QPoint> shifts;
    double leastProduct = 1.0; ///< with the reference, or the image before
    int worst = 0;             ///< the image that has it
    int otherSizes = 0;        ///< images of another size than what they were compared with: as
                               ///< they were
};

/// Finds the shifts of a stack's images, in pieces that any thread may work on.
///
/// A climb finds the top that its start is on the slope of, so it has to start near. Neighbours in
/// a stack lie close together: each is compared with the one before, by which all have a place, and
/// from there, each by itself, with the reference. No piece depends on the order of another but for
/// these stages, so the shifts do not depend on the number of threads.
class StackAlignment
{
public:
    explicit StackAlignment(AlignmentOrder order);

    /// Does a piece of work, once there is one; false when there is none left.
    bool work();
    /// No piece is begun any more, those at hand end soon, and nothing is told.
    void stop();

    /// Called with the lock held whenever a piece is done.
    void setTold(std::function<void()> told);
    /// Pieces done, and all.
    int done();
    int total() const;
    /// All is done; shifts() is of use then.
    bool isThrough();
    StackShifts shifts() const;

private:
    enum Stage
    {
        Binarizing,
        Comparing, ///< each image with the one before it
        Refining,  ///< each image with the reference
        Through
    };

    int images() const { return order_.images.size(); }
    int pieces(Stage stage) const;
    void doPiece(Stage stage, int piece);
    void binarize(int image);
    ProcImage takeSpare();
    void compare(int image);
    void refine(int image);
    void enterNextStage();
    void chain();

    const AlignmentOrder order_;
    std::atomic<bool> stopped_{false};
    // Each piece writes into its own place of these.
    std::vector<BitImage> binaries_;
    std::vector<FoundShift> steps_; ///< from the image before
    std::vector<QPoint> chained_;
    std::vector<FoundShift> found_;

    std::mutex mutex_; ///< over all below
    std::condition_variable changed_;
    std::function<void()> told_;
    std::vector<ProcImage> spare_; ///< whose memory serves again
    Stage stage_ = Binarizing;
    int next_ = 0; ///< piece of the stage that is begun next
    int doneOfStage_ = 0;
    int done_ = 0;
};

/// Finds them on this thread and `threads` others, without an event loop.
StackShifts alignStack(AlignmentOrder order, int threads);
