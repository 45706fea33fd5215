#include "analysis/sumup/SumUpSection.h"

#include "analysis/sumup/SumUpCtrl.h"
#include "display/NumberFields.h"
#include "display/RunRow.h"
#include "maps/MapBook.h"

#include <QAbstractButton>
#include <QVBoxLayout>

SumUpSection::SumUpSection(QWidget* parent)
    : AnalysisSection(AnalysisWalk::SumUp, QStringLiteral("SelSumUp"), tr("Sum Up"), parent,
                      Fold::OneOfMany)
    , ctrl_(new SumUpCtrl(body()))
    , run_(new RunRow(body()))
{
    chooser()->setToolTip(tr("Show the map of the sum of images"));
    ctrl_->setObjectName(QStringLiteral("SumUpC"));
    ctrl_->watchFields(*numbers());
    auto* const column = new QVBoxLayout(body());
    column->setContentsMargins(4, 2, 4, 2);
    column->setSpacing(4);
    column->addWidget(ctrl_);
    column->addWidget(run_);
    run_->setNames(QStringLiteral("AskSumUp"), QStringLiteral("SumUpProgress"));
    run_->setStartText(tr("Sum Up"));
    run_->setTips({tr("Add the images of the ranges over the selected area, block by block, and "
                      "save the picture of the sum as sumUpImg.png"),
                   tr("Stop the sum; the map keeps what is done")});
    connect(ctrl_, &SumUpCtrl::changed, this, &SumUpSection::changed);
    connect(chooser(), &QAbstractButton::toggled, this, &SumUpSection::changedSelection);
}

QVector<ImageButton> SumUpSection::imageButtons() const
{
    return {{FixedImage::SumUp, chooser()}};
}

QVector<MapKey> SumUpSection::maps() const
{
    return {{MapKind::SumUp}};
}

WhyNot SumUpSection::notReady(const SpectraInfo& spectra) const
{
    if (spectra.inWalk)
        return {};
    return {QStringLiteral("a sum of images reads no spectrum"), {}};
}

std::unique_ptr<WalkKernel> SumUpSection::kernel(const SpectraInfo& /*spectra*/) const
{
    return std::make_unique<SumUpKernel>(ctrl_->ranges());
}

std::unique_ptr<WalkSink> SumUpSection::sink(const SpectraInfo& /*spectra*/, MapBook& book) const
{
    return std::make_unique<SumUpSink>(book.at({MapKind::SumUp}));
}

SectionConditions SumUpSection::conditions(const SpectraInfo& /*spectra*/) const
{
    QVector<double> ends;
    for (const SumUpRange& range : ctrl_->ranges())
        ends << range.from << range.to;
    return {analysisName(), ends, {}};
}

void SumUpSection::bindCommands(CommandBook& book)
{
    ctrl_->bindCommands(book);
}
