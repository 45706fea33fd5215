#include "selection/EOFSetup.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/TextItems.h"
#include "display/FieldWidth.h"
#include "display/NumberFields.h"
#include "display/WrapLayout.h"
#include "display/XafsFileSelect.h"
#include "selection/EnergyPreview.h"
#include "ui_EOFSetup.h"

#include <QButtonGroup>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A number worked out of others, the largest of size `largest`, without the digits that are but
/// their rounding.
QString derivedText(double v, double largest)
{
    const QString rounded = QString::number(v, 'g', 12);
    const double noise = 4.0 * std::numeric_limits<double>::epsilon() * std::abs(largest);
    return std::abs(rounded.toDouble() - v) <= noise ? rounded : energyText(v);
}

} // namespace

EOFSetup::EOFSetup(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_EOFSetup>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    ui_->RefFile->showUse(false);
    ui_->CopyToI0->hide();
    fillCrystals();
    layOut();
    watchNumbers();
    // The three choices stand in groups of their own, so they exclude each other only this way.
    auto* choice = new QButtonGroup(this);
    for (QRadioButton* button : {ui_->ByName, ui_->ByCalc, ui_->ByRef})
        choice->addButton(button);
    connectSteps();
    connectRule();
    connect(ui_->CopyToI0, &QPushButton::clicked, this, &EOFSetup::copyToI0Asked);
    connect(ui_->Apply, &QPushButton::clicked, this, &EOFSetup::applied);
}

void EOFSetup::layOut()
{
    for (QLineEdit* field : {ui_->Start, ui_->Delta, ui_->End, ui_->NumOfPoints, ui_->Spacing})
        fitDigitsAtLeast(field, 9);
    fitDigitsAtLeast(ui_->Pattern, 9);
    fitDigits(ui_->Factor, 5);
    wrapLine(ui_->CalcLayout, ui_->ByCalcLayout);
    // Files that are dropped on them are the row's, which has the form; they would become text.
    for (QLineEdit* field : {ui_->Start, ui_->Delta, ui_->End, ui_->NumOfPoints, ui_->Spacing,
                             ui_->Pattern, ui_->Factor})
        field->setAcceptDrops(false);
}

void EOFSetup::watchNumbers()
{
    const std::pair<QLineEdit*, const QLabel*> fields[] = {{ui_->Start, ui_->StartCaption},
                                                           {ui_->Delta, ui_->DeltaCaption},
                                                           {ui_->End, ui_->EndCaption},
                                                           {ui_->Factor, ui_->FactorCaption}};
    for (const auto& [field, caption] : fields)
        numbers_->watch(field, caption->text());
    numbers_->watch(ui_->NumOfPoints, ui_->NumCaption->text(), NumberFields::Whole);
    connect(numbers_, &NumberFields::changed, this, &EOFSetup::fieldsChanged);
}

void EOFSetup::connectSteps()
{
    connect(ui_->Start, &QLineEdit::editingFinished, this, &EOFSetup::newStart);
    connect(ui_->Delta, &QLineEdit::editingFinished, this, &EOFSetup::newDelta);
    connect(ui_->End, &QLineEdit::editingFinished, this, &EOFSetup::newEnd);
    connect(ui_->NumOfPoints, &QLineEdit::editingFinished, this, &EOFSetup::newNumOfPoints);
    connect(ui_->Unit, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        ui_->XAxis->setText(tr("X ax.: %1").arg(unitName()));
        Q_EMIT changed();
    });
    connect(ui_->Spacing, &QLineEdit::editingFinished, this, &EOFSetup::newSpacing);
    connect(ui_->Crystals, qOverload<int>(&QComboBox::activated), this, [this](int i) {
        units_.setD(ui_->Crystals->itemData(i).toDouble());
        showSpacing();
    });
}

void EOFSetup::connectRule()
{
    connect(ui_->Pattern, &QLineEdit::editingFinished, this, &EOFSetup::newPattern);
    connect(ui_->Patterns, qOverload<int>(&QComboBox::activated), this,
            [this](int i) { newPatternSelected(ui_->Patterns->itemText(i)); });
    connect(ui_->RefFile, &XafsFileSelect::newFile, this, &EOFSetup::refFileSelected);
    connect(ui_->RefFile, &XafsFileSelect::cleared, this,
            [this] { setReferenceAngles(ScanAngles()); });
    for (const QLineEdit* field :
         {ui_->Start, ui_->Delta, ui_->End, ui_->NumOfPoints, ui_->Pattern, ui_->Factor})
        connect(field, &QLineEdit::textChanged, this, &EOFSetup::changed);
    for (const QAbstractButton* button : std::initializer_list<const QAbstractButton*>{
             ui_->ByName, ui_->ByCalc, ui_->ByRef, ui_->EvenInEnergy})
        connect(button, &QAbstractButton::toggled, this, &EOFSetup::changed);
}

EOFSetup::~EOFSetup() = default;

LateDialog* EOFSetup::dialog() const
{
    return ui_->RefFile->dialog();
}

void EOFSetup::takeFrom(const EOFSetup& other)
{
    const Ui_EOFSetup& from = *other.ui_;
    setPattern(from.Pattern->text()); // which sets the factor too
    const std::pair<QLineEdit*, const QLineEdit*> fields[] = {{ui_->Start, from.Start},
                                                              {ui_->Delta, from.Delta},
                                                              {ui_->End, from.End},
                                                              {ui_->NumOfPoints, from.NumOfPoints},
                                                              {ui_->Factor, from.Factor}};
    for (const auto& [field, value] : fields)
        field->setText(value->text());
    ui_->Unit->setCurrentIndex(from.Unit->currentIndex());
    ui_->EvenInEnergy->setChecked(from.EvenInEnergy->isChecked());
    const std::pair<QRadioButton*, const QRadioButton*> choices[] = {
        {ui_->ByName, from.ByName}, {ui_->ByCalc, from.ByCalc}, {ui_->ByRef, from.ByRef}};
    for (const auto& [button, chosen] : choices) {
        if (chosen->isChecked())
            button->setChecked(true);
    }
    units_.setD(other.units_.d);
    showSpacing();
    takeReference(other);
}

void EOFSetup::takeReference(const EOFSetup& other)
{
    const QSignalBlocker quiet(ui_->RefFile); // its file has been read
    const QString file = other.ui_->RefFile->fileName();
    if (file.isEmpty())
        ui_->RefFile->clear();
    else
        ui_->RefFile->load(file);
    setReferenceAngles(other.reference_);
}

void EOFSetup::showPreview(const EnergyPreview& preview)
{
    const QString text =
        preview.isSound() ? preview.text : preview.text + QStringLiteral(": ") + preview.doubt;
    ui_->Preview->setText(text);
    ui_->PreviewMark->setReasons(preview.doubt);
}

void EOFSetup::offerCopyToI0()
{
    ui_->CopyToI0->show();
}

void EOFSetup::focusRule()
{
    QLineEdit* const field = ui_->ByName->isChecked() ? ui_->Pattern : ui_->Start;
    if (ui_->ByRef->isChecked()) {
        ui_->ByRef->setFocus(Qt::OtherFocusReason);
        return;
    }
    field->setFocus(Qt::OtherFocusReason);
    field->selectAll();
}

QStringList EOFSetup::unreadable() const
{
    return numbers_->unreadable();
}

void EOFSetup::setReferenceAngles(const ScanAngles& angles)
{
    reference_ = angles;
    Q_EMIT changed();
}

void EOFSetup::fillCrystals()
{
    for (const Crystal& crystal : crystals)
        ui_->Crystals->addItem(QLatin1String(crystal.name), crystal.spacing);
    showSpacing();
}

EnergyRule EOFSetup::rule() const
{
    EnergyRule rule;
    if (ui_->ByName->isChecked())
        rule.source = EnergyRule::ByName;
    else if (!ui_->ByCalc->isChecked() && ui_->ByRef->isChecked())
        rule.source = EnergyRule::ByReference;
    rule.pattern = ui_->Pattern->text();
    rule.factor = ui_->Factor->text().toDouble();
    rule.start = ui_->Start->text().toDouble();
    rule.delta = ui_->Delta->text().toDouble();
    rule.end = ui_->End->text().toDouble();
    rule.points = ui_->NumOfPoints->text().toInt();
    rule.unit = ui_->Unit->currentIndex();
    rule.evenInEnergy = ui_->EvenInEnergy->isChecked();
    rule.reference = reference_;
    rule.spacing = units_.d;
    return rule;
}

QString EOFSetup::referenceFile() const
{
    return ui_->RefFile->fileName();
}

FileEnergy EOFSetup::energyOf(const QString& fileName, int fNo) const
{
    return energyOfFile(rule(), fileName, fNo);
}

void EOFSetup::setByName(bool f)
{
    ui_->ByName->setChecked(f);
}

void EOFSetup::setByCalc(bool f)
{
    ui_->ByCalc->setChecked(f);
}

void EOFSetup::setStart(double v)
{
    ui_->Start->setText(energyText(v));
    newStart();
}

void EOFSetup::setDelta(double v)
{
    ui_->Delta->setText(energyText(v));
    newDelta();
}

void EOFSetup::setEnd(double v)
{
    ui_->End->setText(energyText(v));
    newEnd();
}

void EOFSetup::setNumOfPoints(int n)
{
    ui_->NumOfPoints->setText(QString::number(n));
    newNumOfPoints();
}

void EOFSetup::setEvenInEnergy(bool f)
{
    ui_->EvenInEnergy->setChecked(f);
}

void EOFSetup::setUnit(int idx)
{
    if (idx >= 0 && idx < ui_->Unit->count())
        ui_->Unit->setCurrentIndex(idx);
}

QString EOFSetup::unitName() const
{
    return ui_->Unit->currentText();
}

void EOFSetup::setPattern(const QString& pattern)
{
    ui_->Pattern->setText(pattern);
    newPattern();
}

void EOFSetup::setFactor(double factor)
{
    ui_->Factor->setText(fieldText(factor));
}

void EOFSetup::setSpacing(const QString& text)
{
    ui_->Spacing->setText(text);
    newSpacing();
}

void EOFSetup::newSpacing()
{
    const QString typed = ui_->Spacing->text();
    const double spacing = typed.toDouble();
    if (isSpacing(spacing))
        units_.setD(spacing);
    else
        fault(QStringLiteral("Crystal spacing of the energies is no number above 0: %1 %2 angstrom "
                             "stay in force")
                  .arg(quoted(typed))
                  .arg(units_.d));
    showSpacing();
}

/// The spacing in force, and its crystal when it is one of the list.
void EOFSetup::showSpacing()
{
    ui_->Spacing->setText(energyText(units_.d));
    ui_->Crystals->setCurrentIndex(ui_->Crystals->findData(units_.d));
    Q_EMIT changed();
}

void EOFSetup::setReference(const QString& fname)
{
    if (fname.isEmpty()) {
        ui_->RefFile->clear();
        // An exclusive button can't be switched off; the other rules take over by name.
        if (ui_->ByRef->isChecked())
            ui_->ByCalc->setChecked(true);
        return;
    }
    ui_->ByRef->setChecked(true);
    ui_->RefFile->load(fname);
}

void EOFSetup::refFileSelected(const QString& fname)
{
    QFile file(fname);
    // Opening a pipe may never return, and a device may never end.
    if (!QFileInfo(fname).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fault(QStringLiteral("Can't open ref file ") + quoted(fname));
        ui_->RefFile->clear(); // which empties the list too
        return;
    }
    qDebug() << "reading simple" << fname;
    setReferenceAngles(readScanAngles(file));
    if (reference_.wrongSpacing)
        qDebug() << "The crystal spacing in ref file is no number above 0, the setup's holds"
                 << fname;
    if (reference_.degrees.isEmpty()) {
        fault(QStringLiteral("No energies in ref file ") + quoted(fname));
        ui_->RefFile->clear();
    }
}

void EOFSetup::newPatternSelected(const QString& pattern)
{
    setPattern(pattern);
}

void EOFSetup::newPattern()
{
    const QString pattern = ui_->Pattern->text();
    if (!QRegularExpression(pattern).isValid())
        fault(QStringLiteral("Energy pattern matches nothing, it does not compile: ") +
              quoted(pattern));
    const bool inKeV = pattern.toUpper().contains(QLatin1String("KEV"));
    ui_->Factor->setText(inKeV ? QStringLiteral("1000") : QStringLiteral("1"));
    int at = ui_->Patterns->findText(pattern);
    if (at < 0) {
        ui_->Patterns->addItem(pattern);
        at = ui_->Patterns->count() - 1;
    }
    ui_->Patterns->setCurrentIndex(at);
}

void EOFSetup::newStart()
{
    endFollows();
}

void EOFSetup::newDelta()
{
    endFollows();
}

void EOFSetup::newNumOfPoints()
{
    endFollows();
}

void EOFSetup::endFollows()
{
    const EnergyRule r = rule();
    const double end = r.start + r.delta * r.points;
    ui_->End->setText(derivedText(end, std::max(std::abs(r.start), std::abs(end))));
}

void EOFSetup::newEnd()
{
    const EnergyRule r = rule();
    if (r.points != 0)
        ui_->Delta->setText(derivedText((r.end - r.start) / r.points, r.end / r.points));
}
