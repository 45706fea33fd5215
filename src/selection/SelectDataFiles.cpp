#include "selection/SelectDataFiles.h"

#include "common/FieldText.h"
#include "display/FieldWidth.h"
#include "display/FileDialogs.h"
#include "display/FileDrop.h"
#include "display/NumberFields.h"
#include "display/PanelForm.h"
#include "display/WheelGuard.h"
#include "display/WrapLayout.h"
#include "selection/EOFSetup.h"
#include "selection/EnergyPreview.h"
#include "selection/SelectDataFilesAdditionalSetup.h"
#include "ui_SelectDataFiles.h"

#include <QScrollArea>
#include <QTimer>

#include <utility>

namespace {

/// Of a file in the list: its place in the list of its load job. The energy is the item's data.
constexpr int fileNumberRole = Qt::UserRole + 1;

} // namespace

SelectDataFiles::SelectDataFiles(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SelectDataFiles>())
    , eofSetup_(new EOFSetup)
    , addSetup_(new SelectDataFilesAdditionalSetup)
    , dialog_(new LateDialog([this] { return new SelectImgDialog(this); }, this))
    , numbers_(new NumberFields(this))
    , previewTimer_(new QTimer(this))
{
    ui_->setupUi(this);
    connectFiles();
    foldSetupsOut();
    connectSetups();
    watchNumbers();
    layOut();
    showFiles();
}

void SelectDataFiles::connectFiles()
{
    connect(ui_->Exposure, &QLineEdit::textChanged, this, &SelectDataFiles::exposureChanged);
    connect(ui_->Files, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &SelectDataFiles::newImageSelected);
    connect(ui_->Select, &QPushButton::clicked, dialog_, &LateDialog::show);
    const auto selected = [this](const QStringList& files) {
        Q_EMIT filesSelected(files, ui_->LoadNewFiles->isChecked());
    };
    connect(dialog_, &LateDialog::filesSelected, this, selected);
    // Made before the setups stand in the row: the file of reference takes its own.
    auto* const drop =
        new FileDrop(this, FileDrop::ManyFiles, filterPatterns(SelectImgDialog::imageFilter()));
    connect(drop, &FileDrop::dropped, this, selected);
    connect(drop, &FileDrop::folderDropped, this, &SelectDataFiles::folderDropped);
    connect(ui_->Clear, &QPushButton::clicked, this, &SelectDataFiles::clear);
}

void SelectDataFiles::foldSetupsOut()
{
    const std::pair<QPushButton*, QWidget*> folds[] = {{ui_->Setup, eofSetup_},
                                                       {ui_->AddSetup, addSetup_}};
    for (const auto& [button, setup] : folds) {
        ui_->RowsLayout->addWidget(setup);
        setup->hide();
        connect(button, &QPushButton::toggled, this, [this, setup = setup](bool open) {
            setup->setVisible(open);
            if (open)
                bringIntoView(setup);
        });
    }
    connect(ui_->Setup, &QPushButton::toggled, this, &SelectDataFiles::refreshPreview);
}

void SelectDataFiles::connectSetups()
{
    constexpr int previewDelay = 100; // [ms]
    previewTimer_->setSingleShot(true);
    previewTimer_->setInterval(previewDelay);
    connect(previewTimer_, &QTimer::timeout, this, &SelectDataFiles::refreshPreview);
    connect(eofSetup_, &EOFSetup::changed, this, &SelectDataFiles::refreshPreview);
    connect(eofSetup_, &EOFSetup::copyToI0Asked, this, &SelectDataFiles::copyToI0Asked);
    connect(eofSetup_, &EOFSetup::applied, this, &SelectDataFiles::energiesApplied);
    using Setup = SelectDataFilesAdditionalSetup;
    connect(addSetup_, &Setup::setDarkArea, this, &SelectDataFiles::setDarkArea);
    connect(addSetup_, &Setup::updateDarkArea, this, &SelectDataFiles::updateDarkArea);
    connect(addSetup_, &Setup::clearDarkArea, this, &SelectDataFiles::clearDarkArea);
}

void SelectDataFiles::watchNumbers()
{
    const std::pair<QLineEdit*, const QLabel*> whole[] = {{ui_->Skip, ui_->SkipCaption},
                                                          {ui_->CutFirst, ui_->CutFirstCaption},
                                                          {ui_->CutLast, ui_->CutLastCaption}};
    for (const auto& [field, caption] : whole)
        numbers_->watch(field, caption->text(), NumberFields::Whole);
    numbers_->watch(ui_->Exposure, ui_->ExposureCaption->text());
    connect(numbers_, &NumberFields::changed, this, &SelectDataFiles::fieldsChanged);
    connect(eofSetup_, &EOFSetup::fieldsChanged, this, &SelectDataFiles::fieldsChanged);
}

void SelectDataFiles::layOut()
{
    for (QLineEdit* field : {ui_->Skip, ui_->CutFirst, ui_->CutLast})
        fitDigits(field, 3);
    fitDigits(ui_->Exposure, 5);
    fitButtons(*this);
    wrapLine(ui_->RowsLayout, ui_->NumbersLayout);
    guardWheel(this);
}

SelectDataFiles::~SelectDataFiles() = default;

void SelectDataFiles::setCaption(const QString& caption, const QString& stack)
{
    stack_ = stack;
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
    showFiles();
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
        energies.append(energyOf(ui_->Files->itemText(i), fileNumber(i)));
        ui_->Files->setItemData(i, energies.last(), Qt::UserRole);
    }
    showFiles();
    return energies;
}

QString SelectDataFiles::takeNameComplaint()
{
    return std::exchange(nameMatches_, NameMatches()).complaint();
}

void SelectDataFiles::setMark(const QString& reasons)
{
    ui_->Mark->setReasons(reasons);
    Q_EMIT markChanged();
}

QString SelectDataFiles::mark() const
{
    return ui_->Mark->reasons();
}

int SelectDataFiles::fileNumber(int idx) const
{
    return ui_->Files->itemData(idx, fileNumberRole).toInt();
}

QVector<double> SelectDataFiles::energies() const
{
    QVector<double> energies;
    for (int i = 0; i < ui_->Files->count(); ++i)
        energies.append(ui_->Files->itemData(i).toDouble());
    return energies;
}

void SelectDataFiles::showFiles()
{
    const int files = ui_->Files->count();
    ui_->Number->setText(QString::number(files));
    const auto energy = [this](int i) { return shownEnergy(ui_->Files->itemData(i).toDouble()); };
    QString text;
    if (files == 1)
        text = tr("%1 eV").arg(energy(0));
    else if (files > 1)
        text = tr("%1 - %2 eV").arg(energy(0), energy(files - 1));
    ui_->Energies->setText(text);
    previewTimer_->start();
    Q_EMIT filesChanged();
}

/// What the rule gives the files in the list, or, as long as there are none, those that it plans
/// for. [eV]
QVector<double> SelectDataFiles::energiesByRule() const
{
    const EnergyRule rule = eofSetup_->rule();
    if (ui_->Files->count() == 0)
        return plannedEnergies(rule);
    QVector<double> energies;
    for (int i = 0; i < ui_->Files->count(); ++i)
        energies.append(energyOfFile(rule, ui_->Files->itemText(i), fileNumber(i)).eV);
    return energies;
}

void SelectDataFiles::refreshPreview()
{
    previewTimer_->stop();
    if (ui_->Setup->isChecked())
        eofSetup_->showPreview(previewOf(energiesByRule()));
}

void SelectDataFiles::showEnergySetup()
{
    ui_->Setup->setChecked(true);
    eofSetup_->focusRule();
}

void SelectDataFiles::takeEnergySetup(const SelectDataFiles& other)
{
    eofSetup_->takeFrom(*other.eofSetup_);
    ui_->Setup->setChecked(true);
}

/// A setup that folds out below the end of a scrolled dock would not be seen.
void SelectDataFiles::bringIntoView(QWidget* setup)
{
    QTimer::singleShot(0, setup, [setup] { // its place is known then
        QWidget* above = setup->parentWidget();
        while (above && !qobject_cast<QScrollArea*>(above))
            above = above->parentWidget();
        if (above)
            static_cast<QScrollArea*>(above)->ensureWidgetVisible(setup, 0, 0);
    });
}

QStringList SelectDataFiles::unreadable() const
{
    QStringList names;
    for (const QString& field : numbers_->unreadable() + eofSetup_->unreadable())
        names.append(stack_ + QLatin1Char(' ') + field);
    return names;
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

QString SelectDataFiles::typedExposure() const
{
    return ui_->Exposure->isModified() ? ui_->Exposure->text() : QString();
}

void SelectDataFiles::enterExposure(const QString& ms)
{
    ui_->Exposure->setText(ms);
    ui_->Exposure->setModified(true);
}

bool SelectDataFiles::errPointsSwitchedOn() const
{
    return addSetup_->errPointsSwitchedOn();
}

void SelectDataFiles::switchErrPoints(bool f)
{
    addSetup_->switchErrPoints(f);
}

void SelectDataFiles::setIgnoreLive(bool f)
{
    addSetup_->setIgnoreLive(f);
}

void SelectDataFiles::setExposure(double ms, bool uniform)
{
    ui_->Exposure->setText(fieldText(ms));
    // The colour of the text comes with that of the ground, which a dark desktop writes on in
    // white.
    ui_->Exposure->setStyleSheet(
        uniform ? QString()
                : QStringLiteral("background-color: rgb(255, 192, 192); color: black;"));
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
    showFiles();
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

void SelectDataFiles::setExpTimeMS(double ms, bool ok)
{
    if (ok)
        ui_->Exposure->setText(fieldText(ms));
}
