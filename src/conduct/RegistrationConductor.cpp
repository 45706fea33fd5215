#include "conduct/RegistrationConductor.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "conduct/StackConductor.h"
#include "conduct/StopReason.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/ImageBox.h"
#include "image/Measurement.h"
#include "registration/AlignmentRun.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Between 0 and 1: what is set in a binary image.
constexpr double half = 0.5;

QString shiftText(const QPoint& shift)
{
    return QStringLiteral("%1, %2").arg(shift.x()).arg(shift.y());
}

QPoint shiftOf(const TiffData& image)
{
    return {image.shiftX, image.shiftY};
}

/// "81 images of I1 moved by -3, 0 to 5, 2; least product 0.93 at image 12".
QString foundText(const ImageStack& stack, const StackShifts& found)
{
    QPoint least = found.shifts.first();
    QPoint most = least;
    for (const QPoint& shift : found.shifts) {
        least = {std::min(least.x(), shift.x()), std::min(least.y(), shift.y())};
        most = {std::max(most.x(), shift.x()), std::max(most.y(), shift.y())};
    }
    return QStringLiteral("%1 images of %2 moved by %3 to %4; least product %5 at image %6")
        .arg(found.shifts.size())
        .arg(stack.name, shiftText(least), shiftText(most), fieldText(found.leastProduct))
        .arg(found.worst);
}

} // namespace

RegistrationConductor::RegistrationConductor(const Parts& parts, StackConductor& stacks,
                                             const ViewConductor& view, WalkConductor& walks,
                                             QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , stacks_(stacks)
    , view_(view)
    , walks_(walks)
{
    connectPanel();
    connectConductors(view);
    tellShifts();
}

RegistrationConductor::~RegistrationConductor()
{
    leaveSearch();
}

void RegistrationConductor::connectPanel()
{
    const ImgProc* const panel = &parts_.panel;
    connect(panel, &ImgProc::askGiveData, this, &RegistrationConductor::giveProcData);
    connect(panel, &ImgProc::imgShift, this, &RegistrationConductor::setImgShift);
    connect(panel, &ImgProc::askClearAllShifts, this, &RegistrationConductor::clearAllShifts);
    connect(panel, &ImgProc::referenceTaken, this,
            qOverload<>(&RegistrationConductor::takeReference));
    connect(panel, &ImgProc::autoAllAsked, this, &RegistrationConductor::autoAll);
    connect(panel, &ImgProc::settingsChanged, this, &RegistrationConductor::tellShifts);
    connect(panel, &ImgProc::autoShiftAsked, this, [this] { note(ExCmdRegistrationAutoShift); });
}

void RegistrationConductor::connectConductors(const ViewConductor& view)
{
    connect(&view, &ViewConductor::imageTaken, this, &RegistrationConductor::imageShown);
    connect(&view, &ViewConductor::shownChanged, this, &RegistrationConductor::imageShown);
    connect(&stacks_, &StackConductor::cleared, this,
            [this](const ImageStack* stack) { stackCleared(*stack); });
    connect(&stacks_, &StackConductor::loaded, this, &RegistrationConductor::tellShifts);
    connect(&stacks_, &StackConductor::moved, this, &RegistrationConductor::imagesMoved);
    connect(&stacks_, &StackConductor::aboutToChange, this,
            [this](const ImageStack* stack, const QString& what) {
                if (stack == search_.stack)
                    stopSearch(stopReason(what));
            });
}

void RegistrationConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    history_ = &book.history();
    history_->follow([this] { return stateLines(); }, History::InState);
    book.action(ExCmdRegistrationSetReference, [this](const Cmd& c) {
        takeReference(c.args.isEmpty() ? view_.currentNumber(view_.shownStack()) : intArg(c, 0));
    });
    book.action(ExCmdRegistrationSetShift, [this](const Cmd& c) {
        ImageStack& stack = view_.shownStack();
        const int shown = view_.currentNumber(stack);
        const QPoint shift(intArg(c, 0), intArg(c, 1));
        const int number = c.args.size() > 2 ? intArg(c, 2) : shown;
        if (number == shown)
            parts_.panel.showShift(shift);
        moveImage(stack, number, shift);
    });
    book.action(ExCmdRegistrationClearShifts,
                [this](const Cmd&) { parts_.panel.clearAllShifts(); });
    book.later(ExCmdRegistrationAutoAll, [this](const Cmd& c, CommandEnd end) {
        startSearch(onArg(c, 0), onArg(c, 1), std::move(end));
    });
}

/// Tells the history what the user does, behind what has brought it about.
void RegistrationConductor::note(EX_CMD_ID id, const QStringList& arguments)
{
    if (!history_)
        return;
    history_->settle();
    history_->add(id, arguments);
}

SharedImage RegistrationConductor::shownImage() const
{
    const ImageStack& stack = view_.shownStack();
    return stack.images.value(view_.currentNumber(stack));
}

bool RegistrationConductor::hasImage(const ImageStack& stack, int number) const
{
    if (number >= 0 && number < stack.images.size())
        return true;
    fault(QStringLiteral("%1 has no image %2").arg(stack.name).arg(number));
    return false;
}

void RegistrationConductor::giveProcData()
{
    const SharedImage image = shownImage();
    parts_.panel.setImage(image ? image->withShift(QPoint()) : nullptr);
}

void RegistrationConductor::imageShown()
{
    if (parts_.panel.wantsEachImage())
        giveProcData();
    else
        parts_.panel.forgetImage();
    tellShifts();
}

void RegistrationConductor::stackCleared(const ImageStack& stack)
{
    if (reference_.stack == &stack)
        reference_ = Reference();
    if (!shownImage())
        parts_.panel.setImage(nullptr);
    tellShifts();
}

void RegistrationConductor::imagesMoved()
{
    if (reference_.stack)
        parts_.panel.setReferenceShift(shiftOf(*reference_.stack->images.at(reference_.number)));
    tellShifts();
}

/// The lines of the panel that tell of the stack.
void RegistrationConductor::tellShifts()
{
    const ImageStack& stack = view_.shownStack();
    const SharedImage image = shownImage();
    const auto moved = std::count_if(stack.images.begin(), stack.images.end(),
                                     [](const SharedImage& i) { return !shiftOf(*i).isNull(); });
    parts_.panel.showStoredShift(image ? tr("This image is moved by %1; %2 of %3 images are moved")
                                             .arg(shiftText(shiftOf(*image)))
                                             .arg(moved)
                                             .arg(stack.images.size())
                                       : QString());
    const bool toOneBefore = parts_.panel.settings().toOneBefore;
    QString reason;
    if (stack.images.isEmpty())
        reason = tr("No images: load them in step 1");
    else if (!toOneBefore && parts_.panel.reference().isEmpty())
        reason = tr("No reference: press Set Ref. on one of the images");
    parts_.panel.setAutoAllReason(reason);
}

/// The panel has taken its image.
void RegistrationConductor::takeReference()
{
    const ImageStack& stack = view_.shownStack();
    keepReference(stack, view_.currentNumber(stack));
}

void RegistrationConductor::takeReference(int number)
{
    const ImageStack& stack = view_.shownStack();
    if (!hasImage(stack, number))
        return;
    if (number == view_.currentNumber(stack)) {
        parts_.panel.setRefBin();
        return;
    }
    const RegistrationSettings settings = parts_.panel.settings();
    const auto read = stack.images.at(number)->withShift(QPoint());
    const ProcImage data = settings.edges ? edgeImage(*read) : dataImage(*read);
    parts_.panel.setReference(binarized(data, thresholdOf(data, settings.thousandths)));
    keepReference(stack, number);
}

void RegistrationConductor::keepReference(const ImageStack& stack, int number)
{
    reference_ = {&stack, number, parts_.panel.settings()};
    parts_.panel.setReferenceShift(shiftOf(*stack.images.at(number)));
    parts_.panel.showReferenceText(tr("Image %1 of %2").arg(number).arg(stack.name));
    tellShifts();
    note(ExCmdRegistrationSetReference, {QString::number(number)});
}

void RegistrationConductor::setImgShift(int dx, int dy)
{
    ImageStack& stack = view_.shownStack();
    moveImage(stack, view_.currentNumber(stack), QPoint(dx, dy));
}

void RegistrationConductor::moveImage(ImageStack& stack, int number, const QPoint& shift)
{
    if (!hasImage(stack, number))
        return;
    QVector<QPoint> shifts = stack.shifts();
    shifts[number] = shift;
    if (stacks_.setShifts(stack, shifts))
        note(ExCmdRegistrationSetShift,
             {QString::number(shift.x()), QString::number(shift.y()), QString::number(number)});
}

void RegistrationConductor::clearAllShifts()
{
    for (ImageStack* stack : {&parts_.data.i1, &parts_.data.i0})
        stacks_.setShifts(*stack, QVector<QPoint>(stack->images.size()));
    note(ExCmdRegistrationClearShifts);
}

void RegistrationConductor::autoAll()
{
    if (isRunning()) {
        stop();
        return;
    }
    const RegistrationSettings settings = parts_.panel.settings();
    QStringList arguments{QString::number(int(settings.toOneBefore))};
    if (settings.movesI0)
        arguments << QStringLiteral("1");
    note(ExCmdRegistrationAutoAll, arguments);
    startSearch(settings.toOneBefore, settings.movesI0, {});
}

/// Why the stack on show can't be searched, or an empty text.
QString RegistrationConductor::whyNotSearched(bool toOneBefore) const
{
    const ImageStack& stack = view_.shownStack();
    if (stack.images.isEmpty())
        return QStringLiteral("no %1 images").arg(stack.name);
    if (toOneBefore)
        return {};
    return parts_.panel.reference().isEmpty() ? QStringLiteral("no ref bin image") : QString();
}

/// Starts a search in place of the one that runs.
void RegistrationConductor::startSearch(bool toOneBefore, bool movesI0, CommandEnd end)
{
    stop();
    const QString why = whyNotSearched(toOneBefore);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Auto All not started: ") + why);
        end.done();
        return;
    }
    search_.stack = &view_.shownStack();
    search_.movesI0 = movesI0 && search_.stack == &parts_.data.i1;
    search_.end = std::move(end);
    search_.run = new AlignmentRun(orderOf(toOneBefore), walks_.pool(), this);
    connect(search_.run, &AlignmentRun::advanced, this, [this](int done, int total) {
        parts_.panel.setDone(done, total);
        Q_EMIT progressed(done, total);
    });
    connect(search_.run, &AlignmentRun::found, this, &RegistrationConductor::shiftsFound);
    parts_.panel.setDone(0, 1);
    parts_.panel.setRunning(true);
    Q_EMIT runningChanged(true);
    search_.run->start();
}

AlignmentOrder RegistrationConductor::orderOf(bool toOneBefore) const
{
    const ImageStack& stack = view_.shownStack();
    const RegistrationSettings settings = parts_.panel.settings();
    AlignmentOrder order;
    order.images = stack.images;
    order.thousandths = settings.thousandths;
    order.edges = settings.edges;
    order.toOneBefore = toOneBefore;
    if (toOneBefore)
        return order;
    order.reference = BitImage(parts_.panel.reference(), half);
    order.referenceShift = parts_.panel.referenceShift();
    order.referenceNumber = reference_.stack == &stack ? reference_.number : -1;
    return order;
}

void RegistrationConductor::shiftsFound(const StackShifts& found)
{
    ImageStack& stack = *search_.stack;
    const bool movesI0 = search_.movesI0;
    CommandEnd end = leaveSearch();
    if (found.otherSizes > 0)
        fault(QStringLiteral("size mis-match: %1 images of %2 stay where they are")
                  .arg(found.otherSizes)
                  .arg(stack.name));
    if (stacks_.setShifts(stack, found.shifts))
        qDebug().noquote() << QStringLiteral("Auto All:") << foundText(stack, found);
    if (movesI0)
        moveI0();
    if (const SharedImage image = shownImage())
        parts_.panel.showShift(shiftOf(*image));
    parts_.panel.drawOnImage();
    Q_EMIT ended(true);
    end.done();
}

/// A place of the sample that has gone to another pixel is seen in the light of that pixel: I0 is
/// read where I1 is.
void RegistrationConductor::moveI0()
{
    const TiffStack& i1 = parts_.data.i1.images;
    QVector<QPoint> shifts;
    for (const SharedImage& image : parts_.data.i0.images) {
        const auto distance = [&image](const SharedImage& other) {
            return std::abs(other->energy - image->energy);
        };
        const auto nearest = std::min_element(
            i1.begin(), i1.end(), [&distance](const SharedImage& a, const SharedImage& b) {
                return distance(a) < distance(b);
            });
        shifts.append(shiftOf(**nearest));
    }
    stacks_.setShifts(parts_.data.i0, shifts);
}

/// Returns what the command that started the search waits for.
CommandEnd RegistrationConductor::leaveSearch()
{
    Search left = std::exchange(search_, Search());
    if (!left.run)
        return {};
    left.run->stop();
    // It may be its own signal that has led here.
    left.run->disconnect(this);
    left.run->deleteLater();
    parts_.panel.setRunning(false);
    Q_EMIT runningChanged(false);
    return std::move(left.end);
}

void RegistrationConductor::stop()
{
    stopSearch(stopReason());
}

void RegistrationConductor::stopSearch(const QString& why)
{
    if (!isRunning())
        return;
    CommandEnd end = leaveSearch();
    qDebug().noquote() << QStringLiteral("Auto All") << why;
    Q_EMIT ended(false);
    end.failed(why);
}

void RegistrationConductor::addShiftLines(QStringList& lines, const ImageStack& stack,
                                          int choice) const
{
    const QVector<QPoint> shifts = stack.shifts();
    QStringList own;
    for (int i = 0; i < shifts.size(); ++i) {
        if (!shifts.at(i).isNull())
            own << batchLine(ExCmdRegistrationSetShift,
                             {QString::number(shifts.at(i).x()), QString::number(shifts.at(i).y()),
                              QString::number(i)});
    }
    if (!own.isEmpty())
        lines << batchLine(ExCmdSelectDispImage, {QString::number(choice)}) << own;
}

/// What brings all shifts and the reference about, and back to what is on show.
QStringList RegistrationConductor::stateLines() const
{
    QStringList lines;
    addShiftLines(lines, parts_.data.i1, ShowDataId);
    addShiftLines(lines, parts_.data.i0, ShowI0Id);
    const auto settingLines = [&lines](const RegistrationSettings& settings) {
        lines << batchLine(ExCmdRegistrationThreshold, {QString::number(settings.thousandths)})
              << batchLine(ExCmdRegistrationEdges, settings.edges);
    };
    if (reference_.stack) {
        const int choice = reference_.stack == &parts_.data.i1 ? ShowDataId : ShowI0Id;
        lines << batchLine(ExCmdSelectDispImage, {QString::number(choice)});
        settingLines(reference_.settings);
        lines << batchLine(ExCmdRegistrationSetReference, {QString::number(reference_.number)});
        settingLines(parts_.panel.settings());
    }
    if (lines.isEmpty())
        return {batchLine(ExCmdRegistrationClearShifts)};
    lines << batchLine(ExCmdSelectDispImage, {QString::number(parts_.imageBox.choice())});
    if (!view_.isMapChosen())
        lines << batchLine(ExCmdSeekImage,
                           {QString::number(view_.currentNumber(view_.shownStack()))});
    return lines;
}
