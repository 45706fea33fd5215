#include "analysis/residual/ResidualSection.h"

#include "analysis/residual/ResidualWalk.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "display/NumberFields.h"
#include "display/RunRow.h"
#include "maps/MapBook.h"
#include "ui_ResidualSection.h"

#include <QCheckBox>

namespace {

constexpr MapKey jumpKey{MapKind::ResidualJump, 0};
constexpr MapKey restKey{MapKind::ResidualRest, 0};
constexpr MapKey ratioKey{MapKind::ResidualRatio, 0};

} // namespace

ResidualSection::ResidualSection(QWidget* parent)
    : AnalysisSection(AnalysisWalk::Residual, QStringLiteral("SelRAA"),
                      tr("Residual Absorption Analysis"), parent)
    , ui_(std::make_unique<Ui_ResidualSection>())
{
    ui_->setupUi(body());
    chooser()->setToolTip(
        tr("Find how much of the absorption is not that of the element of the edge"));
    ui_->RARun->setNames(QStringLiteral("AskRAAnalyze"), QStringLiteral("RAAProgress"));
    ui_->RARun->setTips({tr("Find the rest of each block of the selected area"),
                         tr("Stop the analysis; the maps keep what is done")});
    numbers()->watch(ui_->RAAtEV, tr("Energy of the residual absorption"));
    numbers()->watch(ui_->RAFactor, tr("Factor of the residual absorption"));
    for (const QLineEdit* field : {ui_->RAAtEV, ui_->RAFactor}) {
        connect(field, &QLineEdit::textChanged, this, &ResidualSection::changed);
        connect(field, &QLineEdit::editingFinished, this, &ResidualSection::askReanalyze);
    }
}

ResidualSection::~ResidualSection() = default;

QVector<ImageButton> ResidualSection::imageButtons() const
{
    return {{FixedImage::ResidualJump, ui_->ShowDMuT},
            {FixedImage::ResidualRest, ui_->ShowRest},
            {FixedImage::ResidualRatio, ui_->ShowRatio}};
}

QVector<MapKey> ResidualSection::maps() const
{
    return {jumpKey, restKey, ratioKey};
}

std::unique_ptr<WalkKernel> ResidualSection::kernel(const SpectraInfo& /*spectra*/) const
{
    return std::make_unique<ResidualKernel>(fieldValue(ui_->RAAtEV), fieldValue(ui_->RAFactor));
}

std::unique_ptr<WalkSink> ResidualSection::sink(const SpectraInfo& /*spectra*/, MapBook& book) const
{
    return std::make_unique<ResidualSink>(book.at(jumpKey), book.at(restKey));
}

SectionConditions ResidualSection::conditions(const SpectraInfo& /*spectra*/) const
{
    return {analysisName(), {fieldValue(ui_->RAAtEV), fieldValue(ui_->RAFactor)}, {}};
}

void ResidualSection::finishMaps(MapBook& book)
{
    fillResidualRatio(book.at(jumpKey), book.at(restKey), book.at(ratioKey));
}

void ResidualSection::show(const ShownResult& result)
{
    if (result.outcome != Outcome::NoPoints)
        showValues(result.values.at(0), result.values.at(1));
}

void ResidualSection::showPosition(const MapBook& book, QPoint position)
{
    const Analyzed2DRes* const jump = book.find(jumpKey);
    const Analyzed2DRes* const rest = book.find(restKey);
    if (jump != nullptr && rest != nullptr)
        showValues(jump->valueAt(position.x(), position.y()),
                   rest->valueAt(position.x(), position.y()));
}

void ResidualSection::showValues(double jump, double rest)
{
    ui_->DispRADMuT->setText(fieldText(jump));
    ui_->DispRARest->setText(fieldText(rest));
}

RunRow* ResidualSection::runRow() const
{
    return ui_->RARun;
}

void ResidualSection::setRaEnergy(double eng)
{
    ui_->RAAtEV->setText(energyText(eng));
    Q_EMIT askReanalyze();
}

void ResidualSection::setRaFactor(double factor)
{
    ui_->RAFactor->setText(shortestText(factor));
    Q_EMIT askReanalyze();
}

void ResidualSection::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSetRaEnergy, [this](const Cmd& c) { setRaEnergy(doubleArg(c, 0)); });
    book.action(ExCmdAnalyzerSetRaFactor, [this](const Cmd& c) { setRaFactor(doubleArg(c, 0)); });
    book.history().follow(ExCmdAnalyzerSetRaEnergy,
                          [this] { return energyText(fieldValue(ui_->RAAtEV)); });
    book.history().follow(ExCmdAnalyzerSetRaFactor,
                          [this] { return shortestText(fieldValue(ui_->RAFactor)); });
}
