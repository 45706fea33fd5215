#include "registration/AlignmentRun.h"

#include "walk/Walk.h"

#include <QRunnable>

#include <utility>

namespace {

/// A worker's turn: one piece, and behind it the others of the pool.
class WorkPiece : public QRunnable
{
public:
    WorkPiece(std::shared_ptr<StackAlignment> alignment, WalkPool& pool)
        : alignment_(std::move(alignment))
        , pool_(pool)
    {
    }

    void run() override
    {
        if (alignment_->work())
            pool_.start(new WorkPiece(alignment_, pool_));
    }

private:
    const std::shared_ptr<StackAlignment> alignment_;
    WalkPool& pool_;
};

} // namespace

AlignmentRun::AlignmentRun(AlignmentOrder order, WalkPool& pool, QObject* parent)
    : QObject(parent)
    , pool_(pool)
    , alignment_(std::make_shared<StackAlignment>(std::move(order)))
{
    alignment_->setTold([this] {
        QMetaObject::invokeMethod(
            this, [this] { look(); }, Qt::QueuedConnection);
    });
}

AlignmentRun::~AlignmentRun()
{
    stop();
}

void AlignmentRun::start()
{
    for (int worker = 0; worker < pool_.threads(); ++worker)
        pool_.start(new WorkPiece(alignment_, pool_));
}

void AlignmentRun::stop()
{
    over_ = true;
    alignment_->stop();
}

void AlignmentRun::look()
{
    if (over_)
        return;
    Q_EMIT advanced(alignment_->done(), alignment_->total());
    if (over_ || !alignment_->isThrough())
        return;
    over_ = true;
    Q_EMIT found(alignment_->shifts());
}
