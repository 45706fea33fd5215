#include "display/RunRow.h"

#include "display/RowMark.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int buttonWidth = 110; ///< least width of the button [pixels]

} // namespace

RunRow::RunRow(QWidget* parent)
    : QWidget(parent)
    , button_(new QPushButton(this))
    , progress_(new QLabel(QStringLiteral("0%"), this))
    , mark_(new RowMark(this))
    , bar_(new QProgressBar(this))
    , text_(new QLabel(this))
    , startText_(tr("Analyze"))
{
    button_->setMinimumWidth(buttonWidth);
    progress_->setToolTip(tr("How much of the run is done [%]"));
    bar_->setRange(0, 100);
    bar_->setAlignment(Qt::AlignCenter);
    bar_->hide();
    text_->setWordWrap(true);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(button_);
    row->addWidget(new QLabel(QStringLiteral("("), this));
    row->addWidget(progress_);
    row->addWidget(new QLabel(QStringLiteral(")"), this));
    row->addWidget(mark_);
    row->addStretch(1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(row);
    column->addWidget(bar_);
    column->addWidget(text_);
    connect(button_, &QPushButton::clicked, this, &RunRow::pressed);
    showReadiness();
}

void RunRow::setNames(const QString& button, const QString& progress)
{
    button_->setObjectName(button);
    progress_->setObjectName(progress);
    mark_->setObjectName(button + QStringLiteral("Mark"));
    bar_->setObjectName(button + QStringLiteral("Bar"));
    text_->setObjectName(button + QStringLiteral("Text"));
}

void RunRow::setTips(const Tips& tips)
{
    tips_ = tips;
    showReadiness();
}

void RunRow::setStartText(const QString& text)
{
    startText_ = text;
    showReadiness();
}

void RunRow::setReadiness(const QString& reason, const QString& walkText)
{
    reason_ = reason;
    walkText_ = walkText;
    showReadiness();
}

void RunRow::setRunning(bool f)
{
    running_ = f;
    bar_->setVisible(f);
    if (f) {
        timeLeft_.start();
        setDone(0.0);
    }
    showReadiness();
}

void RunRow::setHeldBack(bool f)
{
    heldBack_ = f;
    showReadiness();
}

void RunRow::showReadiness()
{
    const QString why = heldBack_ ? tr("Another analysis runs") : reason_;
    const bool ready = running_ || why.isEmpty();
    button_->setText(running_ ? tr("Stop") : startText_);
    button_->setEnabled(ready);
    button_->setToolTip(running_ ? tips_.stop : ready ? tips_.start : why);
    text_->setText(ready ? walkText_ : why);
    text_->setVisible(!text_->text().isEmpty());
}

void RunRow::setProgress(double perCent)
{
    progress_->setText(QString::asprintf("%5.2f", perCent));
}

void RunRow::setDone(double perCent)
{
    bar_->setValue(int(perCent));
    const auto seconds = timeLeft_.secondsAt(perCent / 100.0);
    bar_->setFormat(seconds ? QStringLiteral("%p %   ") + TimeLeft::text(*seconds)
                            : QStringLiteral("%p %"));
}

void RunRow::setStoppedAt(double perCent)
{
    // Cut, not rounded: a walk that was stopped never reads 100.
    progress_->setText(tr("stopped at %1 %").arg(int(perCent)));
}

void RunRow::setMark(const QString& reasons)
{
    mark_->setReasons(reasons);
}
