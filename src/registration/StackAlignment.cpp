#include "registration/StackAlignment.h"

#include <thread>
#include <utility>

StackAlignment::StackAlignment(AlignmentOrder order)
    : order_(std::move(order))
    , binaries_(std::size_t(images()))
    , steps_(binaries_.size())
    , chained_(binaries_.size())
    , found_(binaries_.size())
{
}

int StackAlignment::pieces(Stage stage) const
{
    switch (stage) {
    case Binarizing:
        return images();
    case Comparing:
        return images() - 1;
    case Refining:
        return order_.toOneBefore ? 0 : images();
    case Through:
        break;
    }
    return 0;
}

int StackAlignment::total() const
{
    return pieces(Binarizing) + pieces(Comparing) + pieces(Refining);
}

bool StackAlignment::work()
{
    std::unique_lock<std::mutex> lock(mutex_);
    // Other threads have the last pieces of the stage, and soon done.
    changed_.wait(lock, [this] { return stopped_ || stage_ == Through || next_ < pieces(stage_); });
    if (stopped_ || stage_ == Through)
        return false;
    const Stage stage = stage_;
    const int piece = next_++;
    lock.unlock();
    doPiece(stage, piece);
    lock.lock();
    ++done_;
    if (++doneOfStage_ == pieces(stage) && !stopped_)
        enterNextStage();
    if (told_)
        told_();
    return stage_ != Through && !stopped_;
}

void StackAlignment::enterNextStage()
{
    do {
        stage_ = Stage(stage_ + 1);
        next_ = 0;
        doneOfStage_ = 0;
        spare_.clear(); // none is needed behind the first stage
        if (stage_ == Refining)
            chain();
    } while (stage_ != Through && pieces(stage_) == 0);
    changed_.notify_all();
}

void StackAlignment::stop()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    stopped_ = true;
    told_ = nullptr;
    changed_.notify_all();
}

void StackAlignment::setTold(std::function<void()> told)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    told_ = std::move(told);
}

int StackAlignment::done()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return done_;
}

bool StackAlignment::isThrough()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return stage_ == Through;
}

void StackAlignment::doPiece(Stage stage, int piece)
{
    if (stage == Binarizing)
        binarize(piece);
    else if (stage == Comparing)
        compare(piece + 1);
    else
        refine(piece);
}

ProcImage StackAlignment::takeSpare()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (spare_.empty())
        return {};
    ProcImage spare = std::move(spare_.back());
    spare_.pop_back();
    return spare;
}

/// As it was read: the shifts that are sought are those of the pixels.
void StackAlignment::binarize(int image)
{
    const std::shared_ptr<TiffData> read = order_.images.at(image)->withShift(QPoint());
    ProcImage data = order_.edges ? edgeImage(*read, takeSpare()) : dataImage(*read, takeSpare());
    binaries_[std::size_t(image)] = BitImage(data, thresholdOf(data, order_.thousandths));
    const std::lock_guard<std::mutex> lock(mutex_);
    spare_.push_back(std::move(data));
}

void StackAlignment::compare(int image)
{
    const BitImage& before = binaries_[std::size_t(image) - 1];
    const BitImage& here = binaries_[std::size_t(image)];
    if (here.size() == before.size())
        steps_[std::size_t(image)] = climbToShift(here, before, QPoint(), &stopped_);
}

void StackAlignment::refine(int image)
{
    const auto place = std::size_t(image);
    if (binaries_[place].size() != order_.reference.size())
        return;
    found_[place] = climbToShift(binaries_[place], order_.reference,
                                 chained_[place] - order_.referenceShift, &stopped_);
    found_[place].shift += order_.referenceShift;
}

/// Adds the steps up, from the image whose place is known.
void StackAlignment::chain()
{
    const bool ofStack = order_.referenceNumber >= 0 && order_.referenceNumber < images();
    std::size_t anchor = 0;
    if (order_.toOneBefore) {
        const TiffData& first = *order_.images.first();
        chained_[0] = QPoint(first.shiftX, first.shiftY);
    } else {
        anchor = ofStack ? std::size_t(order_.referenceNumber) : 0;
        chained_[anchor] = order_.referenceShift;
    }
    for (std::size_t i = anchor + 1; i < chained_.size(); ++i)
        chained_[i] = chained_[i - 1] + steps_[i].shift;
    for (std::size_t i = anchor; i > 0; --i)
        chained_[i - 1] = chained_[i] - steps_[i].shift;
}

StackShifts StackAlignment::shifts() const
{
    StackShifts result;
    for (int i = 0; i < images(); ++i) {
        const auto place = std::size_t(i);
        const bool isFirst = order_.toOneBefore && i == 0;
        const QSize with = order_.toOneBefore ? binaries_[isFirst ? 0 : place - 1].size()
                                              : order_.reference.size();
        if (binaries_[place].size() != with) {
            const TiffData& image = *order_.images.at(i);
            result.shifts.append(QPoint(image.shiftX, image.shiftY));
            ++result.otherSizes;
            continue;
        }
        const FoundShift& found = order_.toOneBefore ? steps_[place] : found_[place];
        result.shifts.append(order_.toOneBefore ? chained_[place] : found.shift);
        if (!isFirst && found.product < result.leastProduct) {
            result.leastProduct = found.product;
            result.worst = i;
        }
    }
    return result;
}

StackShifts alignStack(AlignmentOrder order, int threads)
{
    StackAlignment alignment(std::move(order));
    const auto workOn = [&alignment] {
        while (alignment.work()) {
        }
    };
    std::vector<std::thread> others;
    for (int i = 0; i < threads; ++i)
        others.emplace_back(workOn);
    workOn();
    for (std::thread& other : others)
        other.join();
    return alignment.shifts();
}
