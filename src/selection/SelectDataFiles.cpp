#include "selection/SelectDataFiles.h"

#include "common/FieldText.h"
#include "display/FileDialogs.h"
#include "display/FileDrop.h"
#include "selection/EOFSetup.h"
#include "selection/SelectDataFilesAdditionalSetup.h"
#include "ui_SelectDataFiles.h"

#include <utility>

namespace {

/// Of a file in the list: its place in the list of its load job. The energy is the item's data.
constexpr int fileNumberRole = Qt::UserRole + 1;

} // namespace

SelectDataFiles::SelectDataFiles(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SelectDataFiles>())
    , eofSetup_(new EOFSetup(this))
    , addSetup_(new SelectDataFilesAdditionalSetup(this))
    , dialog_(new LateDialog([this] { return new SelectImgDialog(this); }, this))
{
    ui_->setupUi(this);
    connect(ui_->Exposure, &QLineEdit::textChanged, this, &SelectDataFiles::exposureChanged);
    connect(ui_->Files, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &SelectDataFiles::newImageSelected);
    connect(ui_->Select, &QPushButton::clicked, dialog_, &LateDialog::show);
    const auto selected = [this](const QStringList& files) {
        Q_EMIT filesSelected(files, ui_->LoadNewFiles->isChecked());
    };
    connect(dialog_, &LateDialog::filesSelected, this, selected);
    auto* const drop =
        new FileDrop(this, FileDrop::ManyFiles, filterPatterns(SelectImgDialog::imageFilter()));
    connect(drop, &FileDrop::dropped, this, selected);
    connect(drop, &FileDrop::folderDropped, this, &SelectDataFiles::folderDropped);
    connect(ui_->Clear, &QPushButton::clicked, this, &SelectDataFiles::clear);
    connect(ui_->Setup, &QPushButton::clicked, eofSetup_, &QWidget::show);
    connect(ui_->AddSetup, &QPushButton::clicked, addSetup_, &QWidget::show);
    connect(eofSetup_, &EOFSetup::unitChanged, this,
            [this](const QString& unit) { ui_->XAxis->setText(tr("X ax.: %1").arg(unit)); });
    connect(eofSetup_, &EOFSetup::applied, this, &SelectDataFiles::energiesApplied);
    using Setup = SelectDataFilesAdditionalSetup;
    connect(addSetup_, &Setup::setDarkArea, this, &SelectDataFiles::setDarkArea);
    connect(addSetup_, &Setup::updateDarkArea, this, &SelectDataFiles::updateDarkArea);
    connect(addSetup_, &Setup::clearDarkArea, this, &SelectDataFiles::clearDarkArea);
}

SelectDataFiles::~SelectDataFiles() = default;

void SelectDataFiles::setCaption(const QString& caption)
{
    ui_->Caption->setText(caption);
    dialog_->setTitle(tr("Select %1").arg(caption));
    eofSetup_->dialog()->setTitle(tr("Select Energies of %1").arg(caption));
    addSetup_->dialog()->setTitle(tr("Select Bad Pixels of %1").arg(caption));
    eofSetup_->setWindowTitle(caption + QStringLiteral(": ") + eofSetup_->windowTitle());
    addSetup_->setWindowTitle(caption + QStringLiteral(": ") + addSetup_->windowTitle());
}

double SelectDataFiles::addFile(const QString& name, int fNo)
{
    const double energy = energyOf(name, fNo);
    // An empty box would choose its first item, and show it in the middle of a load.
    const QSignalBlocker quiet(ui_->Files);
    ui_->Files->addItem(name, energy);
    ui_->Files->setItemData(ui_->Files->count() - 1, fNo, fileNumberRole);
    showCount();
    return energy;
}

double SelectDataFiles::energyOf(const QString& name, int fNo)
{
    const FileEnergy energy = eofSetup_->energyOf(name, fNo);
    nameMatches_.add(energy.match, name);
    return energy.eV;
}

QVector<double> SelectDataFiles::applyEnergies()
{
    QVector<double> energies;
    nameMatches_ = NameMatches();
    for (int i = 0; i < ui_->Files->count(); ++i) {
        const int fNo = ui_->Files->itemData(i, fileNumberRole).toInt();
        energies.append(energyOf(ui_->Files->itemText(i), fNo));
        ui_->Files->setItemData(i, energies.last());
    }
    return energies;
}

QString SelectDataFiles::takeNameComplaint()
{
    return std::exchange(nameMatches_, NameMatches()).complaint();
}

void SelectDataFiles::setMark(const QString& reasons)
{
    ui_->Mark->setReasons(reasons);
}

QString SelectDataFiles::mark() const
{
    return ui_->Mark->reasons();
}

void SelectDataFiles::showCount()
{
    ui_->Number->setText(QString::number(ui_->Files->count()));
}

int SelectDataFiles::currentIndex() const
{
    return ui_->Files->currentIndex();
}

int SelectDataFiles::count() const
{
    return ui_->Files->count();
}

int SelectDataFiles::skip() const
{
    return ui_->Skip->text().toInt();
}

int SelectDataFiles::cutFirst() const
{
    return ui_->CutFirst->text().toInt();
}

int SelectDataFiles::cutLast() const
{
    return ui_->CutLast->text().toInt();
}

QString SelectDataFiles::exposureText() const
{
    return ui_->Exposure->text();
}

void SelectDataFiles::setExposure(double ms, bool uniform)
{
    ui_->Exposure->setText(fieldText(ms));
    ui_->Exposure->setStyleSheet(uniform ? QStringLiteral("background-color: rgb(255, 255, 255);")
                                         : QStringLiteral("background-color: rgb(255, 192, 192);"));
}

bool SelectDataFiles::showLatest() const
{
    return addSetup_->showLatest();
}

bool SelectDataFiles::ignoreLive() const
{
    return addSetup_->ignoreLive();
}

const ErrPoints& SelectDataFiles::errPoints() const
{
    return addSetup_->errPoints();
}

void SelectDataFiles::useErrPoints(const QString& fname)
{
    addSetup_->useErrPoints(fname);
}

void SelectDataFiles::newImageSelected(int i)
{
    Q_EMIT currentIndexChanged(i);
}

void SelectDataFiles::clearFiles()
{
    ui_->Files->clear();
    nameMatches_ = NameMatches();
    setMark(QString());
    showCount();
}

void SelectDataFiles::prev()
{
    select(currentIndex() - 1);
}

void SelectDataFiles::next()
{
    select(currentIndex() + 1);
}

void SelectDataFiles::select(int idx)
{
    if (idx >= 0 && idx < ui_->Files->count())
        ui_->Files->setCurrentIndex(idx);
}

void SelectDataFiles::setSkip(int skip)
{
    ui_->Skip->setText(QString::number(skip));
}

void SelectDataFiles::setCutF(int cutF)
{
    ui_->CutFirst->setText(QString::number(cutF));
}

void SelectDataFiles::setCutL(int cutL)
{
    ui_->CutLast->setText(QString::number(cutL));
}

void SelectDataFiles::setShowLatest(bool f)
{
    addSetup_->setShowLatest(f);
}

void SelectDataFiles::setEngByName(bool f)
{
    eofSetup_->setByName(f);
}

void SelectDataFiles::setEngByCalc(bool f)
{
    eofSetup_->setByCalc(f);
}

void SelectDataFiles::setEngCalcStart(double start)
{
    eofSetup_->setStart(start);
}

void SelectDataFiles::setEngCalcDelta(double delta)
{
    eofSetup_->setDelta(delta);
}

void SelectDataFiles::setEngCalcEnd(double end)
{
    eofSetup_->setEnd(end);
}

void SelectDataFiles::setEngCalcNum(int num)
{
    eofSetup_->setNumOfPoints(num);
}

void SelectDataFiles::setEvenInEng(bool f)
{
    eofSetup_->setEvenInEnergy(f);
}

void SelectDataFiles::setEvenInDeg(bool f)
{
    eofSetup_->setEvenInEnergy(!f);
}

void SelectDataFiles::setDispUnit(int idx)
{
    eofSetup_->setUnit(idx);
}

void SelectDataFiles::setEngByNameRegExp(const QString& pattern)
{
    eofSetup_->setPattern(pattern);
}

void SelectDataFiles::setEngByNameFactor(double factor)
{
    eofSetup_->setFactor(factor);
}

void SelectDataFiles::setExpTimeMS(double ms, bool ok)
{
    if (ok)
        ui_->Exposure->setText(fieldText(ms));
}

void SelectDataFiles::setEngByRef(const QString& fname)
{
    eofSetup_->setReference(fname);
}

void SelectDataFiles::setCrystalD(const QString& spacing)
{
    eofSetup_->setSpacing(spacing);
}

void SelectDataFiles::darkArea(const T20& area)
{
    addSetup_->darkArea(area);
}

void SelectDataFiles::noDarkArea()
{
    addSetup_->noDarkArea();
}
