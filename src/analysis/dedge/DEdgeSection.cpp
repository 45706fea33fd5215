#include "analysis/dedge/DEdgeSection.h"

#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/FileDialogs.h"
#include "display/NumberFields.h"
#include "display/PanelForm.h"
#include "maps/MapBook.h"
#include "ui_DEdgeSection.h"

#include <QCheckBox>
#include <QDebug>

DEdgeSection::DEdgeSection(QWidget* parent)
    : AnalysisSection(AnalysisWalk::Fits, QStringLiteral("SelDEdgeAnal"), tr("Exec. Gen dEge Map"),
                      parent)
    , ui_(std::make_unique<Ui_DEdgeSection>())
{
    ui_->setupUi(body());
    chooser()->setToolTip(tr("Find how far the edge of each spectrum is shifted"));
    // A row of their own leaves the file's name the whole width.
    ui_->DEdgeCWFileRow->addWidget(ui_->DEdgeCWFileSelect->buttons());
    ui_->DEdgeCWFileSelect->dialog()->setTitle(tr("Select Comparison Spectrum"));
    fitButtons(*this);
    numbers()->watch(ui_->DEdgeCWStepAt, tr("Energy of the step that edges are compared with"));
    toggledDEdgeCompWith(false);
    connectForm();
}

DEdgeSection::~DEdgeSection() = default;

void DEdgeSection::connectForm()
{
    connect(ui_->DEdgeCompWith, &QRadioButton::toggled, this, &DEdgeSection::toggledDEdgeCompWith);
    connect(ui_->DEdgeCWFileSelect, &XafsFileSelect::newFile, this,
            &DEdgeSection::selectedNewDEdgeCWFile);
    connect(ui_->DEdgeCWFileSelect, &XafsFileSelect::cleared, this, &DEdgeSection::clearedFile);
}

QVector<ImageButton> DEdgeSection::imageButtons() const
{
    return {{FixedImage::DEdge, ui_->ShowDEdge}};
}

bool DEdgeSection::isMidPoint() const
{
    return ui_->DEdgeMidPoint->isChecked();
}

QStringList DEdgeSection::files() const
{
    return isMidPoint() ? QStringList() : QStringList{ui_->DEdgeCWFileSelect->fileName()};
}

WhyNot DEdgeSection::notReady(const SpectraInfo& /*spectra*/) const
{
    if (isMidPoint() || !comparison().isEmpty())
        return {};
    return {QStringLiteral("dEdge is left out, no comparison spectrum is loaded"),
            tr("No comparison spectrum: load one, or choose the mid point")};
}

DEdgeConditions DEdgeSection::shiftConditions(const SpectraInfo& spectra) const
{
    DEdgeConditions c;
    c.isMidPoint = isMidPoint();
    c.edgeE = spectra.elm.edgeE;
    if (!c.isMidPoint)
        c.comparison = comparison();
    return c;
}

std::unique_ptr<WalkKernel> DEdgeSection::kernel(const SpectraInfo& spectra) const
{
    return std::make_unique<DEdgeKernel>(shiftConditions(spectra));
}

std::unique_ptr<WalkSink> DEdgeSection::sink(const SpectraInfo& /*spectra*/, MapBook& book) const
{
    return std::make_unique<DEdgeSink>(book.at({MapKind::DEdge}));
}

/// The expected edge plays a part for the mid point alone.
SectionConditions DEdgeSection::conditions(const SpectraInfo& spectra) const
{
    const DEdgeConditions c = shiftConditions(spectra);
    if (c.isMidPoint)
        return {analysisName(), {1.0, c.edgeE}, {}};
    return {analysisName(),
            {0.0, c.comparison.midx},
            {c.comparison.points, c.comparison.doubleNormalizedPreBase.points}};
}

void DEdgeSection::show(const ShownResult& result)
{
    if (result.outcome == Outcome::Fitted)
        noticedNewDEdge(result.values.first());
}

void DEdgeSection::showPosition(const MapBook& book, QPoint position)
{
    if (const Analyzed2DRes* const map = book.find({MapKind::DEdge}))
        noticedNewDEdge(map->valueAt(position.x(), position.y()));
}

void DEdgeSection::setHint(const EdgeHint& hint)
{
    const bool otherCurve = comparison_.setHint(hint);
    showMark();
    if (otherCurve && !comparison().isEmpty())
        Q_EMIT changed();
}

void DEdgeSection::showMark()
{
    ui_->DEdgeCWFileSelect->setMark(comparison_.doubts().join(QLatin1Char('\n')));
}

void DEdgeSection::setDEdgeMode(int mode)
{
    if (mode != 0 && mode != 1) {
        fault(QStringLiteral("No way to measure the shift of the edge has the number %1: 0 is the "
                             "mid point, 1 the comparison")
                  .arg(mode));
        return;
    }
    (mode == 0 ? ui_->DEdgeMidPoint : ui_->DEdgeCompWith)->setChecked(true);
}

void DEdgeSection::setComparisonFile(const QString& fname)
{
    ui_->DEdgeCWFileSelect->load(fname);
}

void DEdgeSection::toggledDEdgeCompWith(bool f)
{
    ui_->DEdgeCWSelectBox->setEnabled(f);
    Q_EMIT changed();
    Q_EMIT askReanalyze();
}

void DEdgeSection::selectedNewDEdgeCWFile(const QString& fname)
{
    qDebug() << "loading" << fname;
    const QString why = comparison_.load(fname, VictLine::Straight);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Can't read comparison file \"%1\": %2").arg(fname, why));
        ui_->DEdgeCWFileSelect->fileNameValid(false);
        ui_->DEdgeCWFileSelect->clear();
        return;
    }
    ui_->DEdgeCWFileSelect->fileNameValid(true);
    showMark();
    Q_EMIT changed();
    Q_EMIT askReanalyze();
}

void DEdgeSection::clearedFile()
{
    comparison_.clear();
    showMark();
    Q_EMIT changed();
}

void DEdgeSection::noticedNewDEdge(double dEdge)
{
    ui_->DispDEdge->setText(fieldText(dEdge));
}

void DEdgeSection::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerDEdgeMode, [this](const Cmd& c) { setDEdgeMode(intArg(c, 0)); });
    book.action(ExCmdAnalyzerDEdgeFile, [this](const Cmd& c) {
        if (c.args.isEmpty())
            ui_->DEdgeCWFileSelect->clear();
        else
            setComparisonFile(c.arg(0));
    });
    History& history = book.history();
    history.follow(ExCmdAnalyzerDEdgeMode,
                   [this] { return QString::number(ui_->DEdgeCompWith->isChecked() ? 1 : 0); });
    history.follow(ExCmdAnalyzerDEdgeFile, [this] { return ui_->DEdgeCWFileSelect->fileName(); });
}
