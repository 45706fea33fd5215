#pragma once

#include "selection/EnergyOfFile.h"
#include "selection/Units.h"

#include <QFrame>

#include <memory>

struct EnergyPreview;
class LateDialog;
class NumberFields;
class Ui_EOFSetup;

/// "Energy of files": the form of one stack that decides the energy of each of its files. Images
/// already loaded keep theirs until it is applied to them. It stands in the stack's row, which
/// knows the files and previews their energies here.
class EOFSetup : public QFrame
{
    Q_OBJECT
public:
    explicit EOFSetup(QWidget* parent = nullptr);
    ~EOFSetup() override;

    /// Energy of file number fNo by the form's rule.
    FileEnergy energyOf(const QString& fileName, int fNo) const;

    /// The rule as the form stands.
    EnergyRule rule() const;
    /// Takes the whole setup of another stack, and what was read from its reference file.
    void takeFrom(const EOFSetup& other);
    /// The file of the angles; empty without one.
    QString referenceFile() const;
    /// The dialog that selects the reference file.
    LateDialog* dialog() const;

    /// Shows which energies the files get by the rule, marked when they are in doubt.
    void showPreview(const EnergyPreview& preview);
    /// Offers to copy the setup to the I0 stack; only where there is another one.
    void offerCopyToI0();
    /// Puts the focus where the rule in force is typed.
    void focusRule();
    /// Names of the number fields that can't be read.
    QStringList unreadable() const;

    void setByName(bool f);
    void setByCalc(bool f);
    void setStart(double v);
    void setDelta(double v);
    void setEnd(double v);
    void setNumOfPoints(int n);
    void setEvenInEnergy(bool f);
    /// Unit by its index; an index that there is not changes nothing.
    void setUnit(int idx);
    QString unitName() const;
    void setPattern(const QString& pattern);
    void setFactor(double factor);
    /// Spacing of the crystal [angstrom] as its field would take it.
    void setSpacing(const QString& text);
    /// Energies by reference from a file; an empty name turns the choice off.
    void setReference(const QString& fname);

Q_SIGNALS:
    void changed();       ///< the rule, by each key stroke
    void fieldsChanged(); ///< a number field can or can't be read any more
    void copyToI0Asked();
    void applied(); ///< the files already loaded are to get their energies by the rule as it stands

public Q_SLOTS:
    void refFileSelected(const QString& fname);
    void newPatternSelected(const QString& pattern);
    void newPattern();
    void newStart();
    void newDelta();
    void newEnd();
    void newNumOfPoints();
    /// Takes the spacing that was typed. One that no crystal has costs a log line, and the former
    /// one stays.
    void newSpacing();

private:
    void layOut();
    void watchNumbers();
    void connectSteps();
    void connectRule();
    void fillCrystals();
    void takeReference(const EOFSetup& other);
    void setReferenceAngles(const ScanAngles& angles);
    void showSpacing();
    void endFollows();

    std::unique_ptr<Ui_EOFSetup> ui_;
    NumberFields* numbers_;
    Units units_;
    ScanAngles reference_;
};
