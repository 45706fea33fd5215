#pragma once

#include "selection/EnergyOfFile.h"
#include "selection/T20.h"

#include <QFrame>

#include <memory>

class EOFSetup;
class ErrPoints;
class LateDialog;
class NumberFields;
class QTimer;
class SelectDataFilesAdditionalSetup;
class Ui_SelectDataFiles;

/// The row through which a user or a batch chooses the image files of one stack. Its list holds
/// the files that really loaded, with their energies; the images are the main window's. Both setups
/// of the stack fold out below it; that of the energies previews what it would give the files.
///
/// Numbers typed as text that can't be read count as 0. Each setter sets its control as by hand.
class SelectDataFiles : public QFrame
{
    Q_OBJECT
public:
    explicit SelectDataFiles(QWidget* parent = nullptr);
    ~SelectDataFiles() override;

    /// What stands in front of the row, and the short name of its stack.
    void setCaption(const QString& caption, const QString& stack);
    /// Lets the energy setup offer its copy to the I0 stack.
    void offerCopyToI0();

    /// Adds a loaded file to the list, without choosing it; fNo is its place in the job's list.
    /// Its energy [eV].
    double addFile(const QString& name, int fNo);
    /// Works the energies of all files out anew, by the setup as it stands [eV].
    QVector<double> applyEnergies();
    /// What is wrong with the energies by name since this was last asked or the list was last
    /// cleared, in the words of the log; empty when nothing is.
    QString takeNameComplaint();
    /// Marks the stack for these reasons, one a line; none for an empty text.
    void setMark(const QString& reasons);
    QString mark() const;

    int currentIndex() const;
    int count() const;
    QVector<double> energies() const; ///< of the files in the list [eV]
    int skip() const;
    int cutFirst() const;
    int cutLast() const;
    QString exposureText() const; ///< [ms]
    /// What was typed in place of the files' own exposure; null when nothing was since.
    QString typedExposure() const;
    /// Enters an exposure [ms] as by hand.
    void enterExposure(const QString& ms);
    /// Shows the exposure of the stack [ms], on red when its images differ.
    void setExposure(double ms, bool uniform);
    bool showLatest() const;
    bool ignoreLive() const;
    const ErrPoints& errPoints() const;
    /// Selects a list of bad pixels and switches it on; an empty name switches it off.
    void useErrPoints(const QString& fname);
    bool errPointsSwitchedOn() const;
    void switchErrPoints(bool f);
    EOFSetup& energySetup() const { return *eofSetup_; }
    LateDialog* dialog() const { return dialog_; }
    /// Names of the number fields of the row and its energy setup that can't be read.
    QStringList unreadable() const;

    /// Folds the energy setup out, with the focus where the rule in force is typed.
    void showEnergySetup();
    /// Takes the energy setup of another row and folds it out, so that it is seen. The files that
    /// are loaded keep their energies until it is applied.
    void takeEnergySetup(const SelectDataFiles& other);

Q_SIGNALS:
    void currentIndexChanged(int idx);
    void exposureChanged(); ///< the exposure's text
    void filesChanged();    ///< the list: its files or their energies
    void markChanged();
    void fieldsChanged(); ///< a number field can or can't be read any more
    void copyToI0Asked();
    void filesSelected(const QStringList& files, bool newFile);
    void folderDropped(const QString& path); ///< on the row; nothing is done with it here
    void clear();
    void energiesApplied(); ///< applyEnergies() is asked for
    void setDarkArea();
    void updateDarkArea();
    void clearDarkArea();

public Q_SLOTS:
    void newImageSelected(int i);
    void clearFiles();
    void prev();
    void next();
    /// Chooses a file of the list; other indices are ignored.
    void select(int idx);
    void setSkip(int skip);
    void setCutF(int cutF);
    void setCutL(int cutL);
    void setShowLatest(bool f);
    void setIgnoreLive(bool f);
    void setEngByName(bool f);
    void setEngByCalc(bool f);
    void setEngCalcStart(double start);
    void setEngCalcDelta(double delta);
    void setEngCalcEnd(double end);
    void setEngCalcNum(int num);
    void setEvenInEng(bool f);
    void setEvenInDeg(bool f);
    void setDispUnit(int idx);
    void setEngByNameRegExp(const QString& pattern);
    void setEngByNameFactor(double factor);
    /// Shows the exposure time [ms]; nothing unless it is known (ok).
    void setExpTimeMS(double ms, bool ok);
    void setEngByRef(const QString& fname);
    /// Spacing of the crystal [angstrom].
    void setCrystalD(const QString& spacing);
    /// Shows the rectangle of the dark area, or that there is none.
    void darkArea(const T20& area);
    void noDarkArea();

private:
    void layOut();
    void foldSetupsOut();
    void connectFiles();
    void connectSetups();
    void watchNumbers();
    double energyOf(const QString& name, int fNo);
    void showFiles();
    int fileNumber(int idx) const;
    QVector<double> energiesByRule() const;
    void refreshPreview();
    void bringIntoView(QWidget* setup);

    std::unique_ptr<Ui_SelectDataFiles> ui_;
    EOFSetup* eofSetup_;
    SelectDataFilesAdditionalSetup* addSetup_;
    LateDialog* dialog_;
    NumberFields* numbers_;
    QTimer* previewTimer_; ///< many files that come at once are previewed once
    QString stack_;
    NameMatches nameMatches_;
};
