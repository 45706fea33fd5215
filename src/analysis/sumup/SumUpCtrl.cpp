#include "analysis/sumup/SumUpCtrl.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "display/NumberFields.h"
#include "ui_SumUpCtrl.h"

namespace {

constexpr int mostShown = 12; ///< ranges that the line tells one by one

QString textOf(const SumUpRange& range)
{
    return QStringLiteral("%1-%2").arg(range.from).arg(range.to);
}

QString lineOf(const SumUpRange& range)
{
    return batchLine(ExCmdAnalyzerSumUpAdd,
                     {QString::number(range.from), QString::number(range.to)});
}

} // namespace

SumUpCtrl::SumUpCtrl(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SumUpCtrl>())
{
    ui_->setupUi(this);
    connect(ui_->SumUpAdd, &QPushButton::clicked, this, &SumUpCtrl::add);
    connect(ui_->SumUpDel, &QPushButton::clicked, this, &SumUpCtrl::del);
    connect(ui_->SumUpClear, &QPushButton::clicked, this, &SumUpCtrl::clear);
    showRanges();
}

SumUpCtrl::~SumUpCtrl() = default;

void SumUpCtrl::watchFields(NumberFields& numbers) const
{
    numbers.watch(ui_->SumUpFrom, tr("First image of the sum"), NumberFields::Whole);
    numbers.watch(ui_->SumUpTo, tr("End of the images of the sum"), NumberFields::Whole);
}

void SumUpCtrl::add()
{
    const SumUpRange range{ui_->SumUpFrom->text().toInt(), ui_->SumUpTo->text().toInt()};
    ranges_.append(range);
    ui_->SumUps->addItem(textOf(range));
    showRanges();
    Q_EMIT added(range);
    Q_EMIT changed();
}

void SumUpCtrl::del()
{
    if (ui_->SumUps->count() == 0)
        return;
    const int index = ui_->SumUps->currentIndex();
    if (index >= 1)
        ui_->SumUps->setCurrentIndex(index - 1);
    ui_->SumUps->removeItem(index);
    showRanges();
    Q_EMIT deleted(index);
}

void SumUpCtrl::clear()
{
    ranges_.clear();
    ui_->SumUps->clear();
    showRanges();
    Q_EMIT cleared();
    Q_EMIT changed();
}

void SumUpCtrl::showRanges()
{
    QStringList texts;
    for (const SumUpRange& range : ranges_.mid(0, mostShown))
        texts << textOf(range);
    if (ranges_.size() > mostShown)
        texts << tr("and %1 more").arg(ranges_.size() - mostShown);
    ui_->SumUpRanges->setText(ranges_.isEmpty()
                                  ? tr("No range counts: the sum is 0")
                                  : tr("These count: %1").arg(texts.join(QStringLiteral(", "))));
    ui_->SumUpDel->setEnabled(ui_->SumUps->count() > 0);
    ui_->SumUpClear->setEnabled(!ranges_.isEmpty());
}

void SumUpCtrl::deleteByNumber(int index)
{
    if (index < 0 || index >= ui_->SumUps->count()) {
        fault(QStringLiteral("No range of images has the number %1").arg(index));
        return;
    }
    ui_->SumUps->setCurrentIndex(index);
    del();
}

void SumUpCtrl::bindCommands(CommandBook& book)
{
    book.action(ExCmdAnalyzerSumUpAdd, [this](const CmdLine& c) {
        ui_->SumUpFrom->setText(QString::number(intArg(c, 0)));
        ui_->SumUpTo->setText(QString::number(intArg(c, 1)));
        add();
    });
    book.action(ExCmdAnalyzerSumUpDel, [this](const CmdLine& c) { deleteByNumber(intArg(c, 0)); });
    book.action(ExCmdAnalyzerSumUpClear, [this](const CmdLine&) { clear(); });
    History& history = book.history();
    connect(this, &SumUpCtrl::added, &history,
            [&history](const SumUpRange& range) { history.add(lineOf(range)); });
    connect(this, &SumUpCtrl::deleted, &history, [&history](int index) {
        history.add(ExCmdAnalyzerSumUpDel, {QString::number(index)});
    });
    connect(this, &SumUpCtrl::cleared, &history,
            [&history] { history.add(ExCmdAnalyzerSumUpClear); });
    history.follow([this] { return lines(); }, History::InState);
}

/// What makes the same sum again; the list then has the deleted ranges too.
QStringList SumUpCtrl::lines() const
{
    QStringList lines(batchLine(ExCmdAnalyzerSumUpClear));
    for (const SumUpRange& range : ranges_)
        lines << lineOf(range);
    return lines;
}
