#pragma once

#include "selection/EnergyOfFile.h"
#include "selection/Units.h"

#include <QDialog>

#include <memory>

class LateDialog;
class Ui_EOFSetup;

/// "Energy of files": the dialog of one stack that decides the energy of each of its files. Images
/// already loaded keep theirs until it is applied to them.
class EOFSetup : public QDialog
{
    Q_OBJECT
public:
    explicit EOFSetup(QWidget* parent = nullptr);
    ~EOFSetup() override;

    /// Energy of file number fNo by the dialog's rule.
    FileEnergy energyOf(const QString& fileName, int fNo) const;

    /// The rule as the form stands.
    EnergyRule rule() const;
    /// The dialog that selects the reference file.
    LateDialog* dialog() const;

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
    void unitChanged(const QString& name);
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
    void fillCrystals();
    void showSpacing();
    void endFollows();

    std::unique_ptr<Ui_EOFSetup> ui_;
    Units units_;
    ScanAngles reference_;
};
