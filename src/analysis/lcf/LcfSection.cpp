#include "analysis/lcf/LcfSection.h"

#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfWalk.h"
#include "batch/BatchLine.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "display/FileDialogs.h"
#include "display/NumberFields.h"
#include "maps/MapBook.h"
#include "ui_LcfSection.h"

#include <QCheckBox>
#include <QDebug>

namespace {

constexpr int rowsAtStart = 4;
constexpr int captionAir = 4; ///< between captions that no field holds apart [pixels]

QFileDialog* newLoadDialog(QWidget* parent)
{
    auto* const dialog = new FileDialog(parent);
    dialog->setWindowTitle(LcfSection::tr("Load References"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters(
        {LcfSection::tr("XAFS Data File (*.dat)"), LcfSection::tr("Any Files (* *.*)")});
    return dialog;
}

} // namespace

LcfSection::LcfSection(XafsView& view, QWidget* parent)
    : AnalysisSection(AnalysisWalk::Fits, QStringLiteral("SelMLCFAnal"),
                      tr("Exec. LCF / MLCF Analysis"), parent)
    , ui_(std::make_unique<Ui_LcfSection>())
    , view_(view)
    , loadDialog_(new LateDialog([this] { return newLoadDialog(this); }, this))
{
    ui_->setupUi(body());
    chooser()->setToolTip(tr("Fit each spectrum as a weighted sum of the references"));
    chooser()->setChecked(true);
    for (int i = 0; i < rowsAtStart; ++i)
        addNewRef();
    watchFields();
    placeCaptions();
    connectForm();
}

LcfSection::~LcfSection() = default;

void LcfSection::addNewRef()
{
    auto* const row = new LCFReference(ui_->RefBase);
    QWidget* before = refs_.isEmpty() ? ui_->AddRef : refs_.last()->tabChain().last();
    ui_->RefRows->addWidget(row);
    for (QWidget* next : row->tabChain()) {
        setTabOrder(before, next);
        before = next;
    }
    row->setHint(hint_);
    refs_.append(row);
    addReferenceCurve();
    numbers()->watch(row->shiftField(), tr("dE of reference %1").arg(refs_.size()));
    connectRow(row);
    Q_EMIT rowAdded();
}

void LcfSection::connectForm()
{
    connect(ui_->ShowView, &QPushButton::clicked, this, &LcfSection::viewAsked);
    connect(ui_->AddRef, &QPushButton::clicked, this, &LcfSection::addNewRef);
    connect(ui_->LoadRefs, &QPushButton::clicked, loadDialog_, &LateDialog::show);
    connect(loadDialog_, &LateDialog::filesSelected, this, &LcfSection::loadReferences);
    for (const QLineEdit* field : {ui_->LCFRange1, ui_->LCFRange2}) {
        connect(field, &QLineEdit::editingFinished, this, &LcfSection::askReanalyze);
        connect(field, &QLineEdit::textChanged, this, &LcfSection::changed);
    }
    for (const QCheckBox* box : {ui_->MLCF, ui_->AsOldLCF}) {
        connect(box, &QCheckBox::toggled, this, &LcfSection::changed);
        connect(box, &QCheckBox::toggled, this, &LcfSection::askReanalyze);
    }
    connect(ui_->AsOldLCF, &QCheckBox::toggled, this,
            [](bool f) { qDebug() << "lcf old flg" << f; });
    connect(ui_->OwnWeights, &QCheckBox::toggled, this, &LcfSection::changed);
}

void LcfSection::watchFields()
{
    numbers()->watch(ui_->LCFRange1, tr("Start of the fitting range"));
    numbers()->watch(ui_->LCFRange2, tr("End of the fitting range"));
}

/// Over the fields of the rows, which are all alike.
void LcfSection::placeCaptions()
{
    const LCFReference::Columns columns = refs_.first()->columns();
    ui_->Captions->setSpacing(columns.gap);
    ui_->Captions->setContentsMargins(0, 0, columns.arrow + columns.gap, 0);
    ui_->ShowUseCaption->setContentsMargins(0, 0, captionAir, 0);
    QFont small = font();
    small.setPointSizeF(0.85 * small.pointSizeF());
    for (QLabel* label : {ui_->ShowUseCaption, ui_->ReferenceCaption, ui_->ShareCaption,
                          ui_->JumpCaption, ui_->ShiftCaption})
        label->setFont(small);
    ui_->JumpCaption->setMinimumWidth(columns.jump);
    ui_->ShiftCaption->setMinimumWidth(columns.shift);
    for (QLabel* label : {ui_->ShareCaption, ui_->JumpCaption, ui_->ShiftCaption})
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void LcfSection::chooseReferences()
{
    loadDialog_->show();
}

QVector<ImageButton> LcfSection::imageButtons() const
{
    return {{FixedImage::Zansa, ui_->ShowZ}};
}

/// Kind by kind, and the residual behind them.
QVector<MapKey> LcfSection::maps() const
{
    QVector<MapKey> keys;
    for (const MapKind kind : {MapKind::LcfJump, MapKind::LcfWeight}) {
        for (int row = 0; row < refs_.size(); ++row)
            keys.append({kind, row});
    }
    keys.append({MapKind::Zansa});
    return keys;
}

QVector<MapKey> LcfSection::jumpMaps() const
{
    QVector<MapKey> keys;
    for (const int row : activeRows())
        keys.append({MapKind::LcfJump, row});
    return keys;
}

std::optional<MapKey> LcfSection::firstMap() const
{
    const QVector<int> rows = activeRows();
    if (rows.isEmpty())
        return std::nullopt;
    return MapKey{MapKind::LcfWeight, rows.first()};
}

QStringList LcfSection::files() const
{
    QStringList files;
    for (const int row : activeRows())
        files.append(refs_.at(row)->fileName());
    return files;
}

WhyNot LcfSection::notReady(const SpectraInfo& spectra) const
{
    if (!fittedRows(spectra).isEmpty())
        return {};
    return {QStringLiteral("LCF is left out, no reference in use has a point inside the fitting "
                           "range and the scan"),
            activeRows().isEmpty()
                ? tr("No reference in use: load one above")
                : tr("No reference in use has a point inside the fitting range and the scan")};
}

LcfRequest LcfSection::request(const SpectraInfo& spectra) const
{
    LcfRequest request;
    request.rows.reserve(refs_.size());
    for (const LCFReference* row : refs_)
        request.rows.append(row->data());
    request.rangeStart = fieldValue(ui_->LCFRange1);
    request.rangeEnd = fieldValue(ui_->LCFRange2);
    request.scan = spectra.scan;
    request.holdGap = holdGap_;
    request.inWalk = spectra.inWalk;
    request.ownWeights = spectra.inWalk && ui_->OwnWeights->isChecked();
    request.sElm = spectra.elm;
    // The form on the raw absorption goes before the older one.
    if (ui_->MLCF->isChecked())
        request.method = LcfMethod::Mlcf;
    else if (ui_->AsOldLCF->isChecked())
        request.method = LcfMethod::OldLcf;
    return request;
}

std::unique_ptr<WalkKernel> LcfSection::kernel(const SpectraInfo& spectra) const
{
    const LcfRequest conditions = request(spectra);
    return std::make_unique<LcfKernel>(conditions, activeRows());
}

std::unique_ptr<WalkSink> LcfSection::sink(const SpectraInfo& spectra, MapBook& book) const
{
    LcfSink::Maps maps{activeRows(), {}, {}, &book.at({MapKind::Zansa})};
    for (const int row : qAsConst(maps.rows)) {
        maps.jumps.append(&book.at({MapKind::LcfJump, row}));
        maps.weights.append(&book.at({MapKind::LcfWeight, row}));
    }
    return std::make_unique<LcfSink>(request(spectra), maps);
}

SectionConditions LcfSection::conditions(const SpectraInfo& spectra) const
{
    const LcfRequest fit = request(spectra);
    SectionConditions c{analysisName(),
                        {fit.rangeStart, fit.rangeEnd, double(fit.holdGap), double(fit.ownWeights),
                         double(fit.method)},
                        {}};
    for (int row = 0; row < fit.rows.size(); ++row) {
        const LcfReferenceData& reference = fit.rows.at(row);
        if (!reference.active)
            continue;
        c.numbers << row << reference.spectrum.eShift;
        c.curves << reference.spectrum.points << reference.spectrum.doubleNormalizedPreBase.points;
    }
    return c;
}

void LcfSection::aboutToWalk(const SpectraInfo& spectra)
{
    markLeftOut(spectra);
    const LcfPlan plan(request(spectra));
    for (const LcfNote& note : plan.notes()) {
        qDebug().noquote() << QStringLiteral("Reference %1 (%2): %3")
                                  .arg(note.row)
                                  .arg(refs_.at(note.row)->fileName(), note.text);
    }
}

QVector<int> LcfSection::fittedRows(const SpectraInfo& spectra) const
{
    return request(spectra).fittedRows();
}

/// The residual of the position.
void LcfSection::showPosition(const MapBook& book, QPoint position)
{
    if (const Analyzed2DRes* const map = book.find({MapKind::Zansa}))
        noticedNewZ(map->valueAt(position.x(), position.y()));
}

void LcfSection::noticedNewZ(double z)
{
    ui_->DispZansa->setText(fieldText(z));
}

void LcfSection::setOwnWeights(bool f)
{
    ui_->OwnWeights->setChecked(f);
}

void LcfSection::bindFields(CommandBook& book)
{
    book.onOff(ExCmdAnalyzerSetLCFMode, ui_->MLCF);
    book.onOff(ExCmdAnalyzerZansaOwnWeights, ui_->OwnWeights);
    book.onOff(ExCmdAnalyzerLCFOld, ui_->AsOldLCF);
    History& history = book.history();
    history.follow([this] {
        return QStringList(
            batchLine(ExCmdAnalyzerLCFRange, {energyText(fieldValue(ui_->LCFRange1)),
                                              energyText(fieldValue(ui_->LCFRange2))}));
    });
    connect(ui_->AddRef, &QPushButton::clicked, &history,
            [&history] { history.add(ExCmdAnalyzerAddRef); });
}

void LcfSection::setLCFMode(int f)
{
    ui_->MLCF->setChecked(f == 1);
}

void LcfSection::setLcfOld(bool f)
{
    ui_->AsOldLCF->setChecked(f);
}

void LcfSection::setRange(double from, double to)
{
    ui_->LCFRange1->setText(energyText(from));
    ui_->LCFRange2->setText(energyText(to));
    Q_EMIT askReanalyze();
}
