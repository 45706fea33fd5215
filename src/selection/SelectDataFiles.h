#pragma once

#include "selection/EnergyOfFile.h"
#include "selection/T20.h"

#include <QFrame>

#include <memory>

class EOFSetup;
class ErrPoints;
class LateDialog;
class SelectDataFilesAdditionalSetup;
class Ui_SelectDataFiles;

/// The row through which a user or a batch chooses the image files of one stack. Its list holds
/// the files that really loaded, with their energies; the images are the main window's.
///
/// Numbers typed as text that can't be read count as 0. Each setter sets its control as by hand.
class SelectDataFiles : public QFrame
{
    Q_OBJECT
public:
    explicit SelectDataFiles(QWidget* parent = nullptr);
    ~SelectDataFiles() override;

    void setCaption(const QString& caption);

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
    int skip() const;
    int cutFirst() const;
    int cutLast() const;
    QString exposureText() const; ///< [ms]
    /// Shows the exposure of the stack [ms], on red when its images differ.
    void setExposure(double ms, bool uniform);
    bool showLatest() const;
    bool ignoreLive() const;
    const ErrPoints& errPoints() const;
    /// Selects a list of bad pixels and switches it on; an empty name switches it off.
    void useErrPoints(const QString& fname);
    EOFSetup& energySetup() const { return *eofSetup_; }
    LateDialog* dialog() const { return dialog_; }

Q_SIGNALS:
    void currentIndexChanged(int idx);
    void exposureChanged(); ///< the exposure's text
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
    double energyOf(const QString& name, int fNo);
    void showCount();

    std::unique_ptr<Ui_SelectDataFiles> ui_;
    EOFSetup* eofSetup_;
    SelectDataFilesAdditionalSetup* addSetup_;
    LateDialog* dialog_;
    NameMatches nameMatches_;
};
