#include "analysis/diagnostics/Analyzer2.h"

#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "display/NumberFields.h"
#include "display/PanelDock.h"
#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "display/RunRow.h"
#include "ui_Analyzer2.h"

#include <QDebug>

Analyzer2::Analyzer2(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_Analyzer2>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    ui_->DarkRun->setNames(QStringLiteral("DarkCheck"), QStringLiteral("DarkProgress"));
    ui_->DarkRun->setStartText(tr("Dark Check"));
    ui_->DarkRun->setTips({tr("Find the pixels that stay dark in all I1 images, and write the "
                              "files of the check into the working folder"),
                           tr("Stop the check; nothing is written")});
    watchFields();
    setDarkOutcome({});
    setUseErrPMaskEnabled(false);
    fitButtons(*this);
    tabInReadingOrder(this);
    connect(ui_->CollectQInfo, &QPushButton::clicked, this, &Analyzer2::startCollectQInfo);
    connect(ui_->DarkRun, &RunRow::pressed, this, &Analyzer2::askedDarkCheck);
    connect(ui_->UseErrPMask, &QCheckBox::toggled, this, &Analyzer2::useErrPMaskToggled);
}

Analyzer2::~Analyzer2() = default;

void Analyzer2::watchFields()
{
    numbers_->watch(ui_->DarkTh, tr("Threshold of the dark check"));
    numbers_->watch(ui_->HistgMax, tr("Upper end of the histogram"));
    numbers_->watch(ui_->HistgBins, tr("Bins of the histogram"), NumberFields::Whole);
}

DarkCheckSettings Analyzer2::darkCheckSettings() const
{
    return {fieldValue(ui_->DarkTh), fieldValue(ui_->HistgMax), ui_->HistgBins->text().toInt()};
}

RunRow& Analyzer2::darkRun() const
{
    return *ui_->DarkRun;
}

void Analyzer2::setDarkOutcome(const QString& words)
{
    ui_->DarkOutcome->setText(words);
    ui_->DarkOutcome->setVisible(!words.isEmpty());
}

void Analyzer2::doCollectQInfo(const AnalyzeCond& /*ac*/)
{
    qDebug().noquote() << "do collect Q Info";
}

void Analyzer2::setUseErrPMaskEnabled(bool f)
{
    ui_->UseErrPMask->setEnabled(f);
    ui_->UseErrPMask->setToolTip(
        f ? tr("Correct the bad pixels of the configuration's list in images without a list of "
               "their own, such as the dark image, when they are read")
          : tr("There is no list: the key ErrPoints of the configuration names none that can be "
               "read"));
}

void Analyzer2::setUseErrPMaskChecked(bool f)
{
    ui_->UseErrPMask->setChecked(f);
}

bool Analyzer2::useErrPMask() const
{
    return ui_->UseErrPMask->isChecked();
}

void Analyzer2::setErrPMaskFileName(const QString& fname)
{
    ui_->ErrPMaskFileName->setLine(fname);
}

void Analyzer2::bindCommands(CommandBook& book)
{
    book.action(ExCmdAnalyzer2ShowWindow, [this](const CmdLine&) { raisePanel(this); });
    book.number(ExCmdAnalyzer2DarkThreshold, ui_->DarkTh);
    book.number(ExCmdAnalyzer2HistogramMax, ui_->HistgMax);
    book.whole(ExCmdAnalyzer2HistogramBins, ui_->HistgBins);
    book.action(ExCmdAnalyzer2UseErrorPoints,
                [this](const CmdLine& c) { useErrPMaskByCommand(onArg(c, 0)); });
    book.history().follow(ExCmdAnalyzer2UseErrorPoints, [this] {
        return useErrPMask() ? QStringLiteral("1") : QStringLiteral("0");
    });
}

void Analyzer2::useErrPMaskByCommand(bool f)
{
    if (ui_->UseErrPMask->isEnabled())
        setUseErrPMaskChecked(f);
    else
        fault(QStringLiteral("The configuration's key ErrPoints names no list of bad pixels that "
                             "can be read"));
}
