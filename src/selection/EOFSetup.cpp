#include "selection/EOFSetup.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/TextItems.h"
#include "display/XafsFileSelect.h"
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
    : QDialog(parent)
    , ui_(std::make_unique<Ui_EOFSetup>())
{
    ui_->setupUi(this);
    ui_->RefFile->showUse(false);
    fillCrystals();
    // The three choices stand in groups of their own, so they exclude each other only this way.
    auto* choice = new QButtonGroup(this);
    for (QRadioButton* button : {ui_->ByName, ui_->ByCalc, ui_->ByRef})
        choice->addButton(button);
    connect(ui_->Start, &QLineEdit::editingFinished, this, &EOFSetup::newStart);
    connect(ui_->Delta, &QLineEdit::editingFinished, this, &EOFSetup::newDelta);
    connect(ui_->End, &QLineEdit::editingFinished, this, &EOFSetup::newEnd);
    connect(ui_->NumOfPoints, &QLineEdit::editingFinished, this, &EOFSetup::newNumOfPoints);
    connect(ui_->Pattern, &QLineEdit::editingFinished, this, &EOFSetup::newPattern);
    connect(ui_->Patterns, qOverload<int>(&QComboBox::activated), this,
            [this](int i) { newPatternSelected(ui_->Patterns->itemText(i)); });
    connect(ui_->RefFile, &XafsFileSelect::newFile, this, &EOFSetup::refFileSelected);
    connect(ui_->RefFile, &XafsFileSelect::cleared, this, [this] { reference_ = ScanAngles(); });
    connect(ui_->Unit, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT unitChanged(unitName()); });
    connect(ui_->Spacing, &QLineEdit::editingFinished, this, &EOFSetup::newSpacing);
    connect(ui_->Crystals, qOverload<int>(&QComboBox::activated), this, [this](int i) {
        units_.setD(ui_->Crystals->itemData(i).toDouble());
        showSpacing();
    });
    connect(ui_->Apply, &QPushButton::clicked, this, &EOFSetup::applied);
}

EOFSetup::~EOFSetup() = default;

LateDialog* EOFSetup::dialog() const
{
    return ui_->RefFile->dialog();
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
    reference_ = readScanAngles(file);
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
