#pragma once

#include "analysis/lcf/LcfFit.h"
#include "spectrum/ReferenceSpectrum.h"

#include <QFrame>

#include <memory>

class QAbstractButton;
class QLineEdit;
class Ui_LCFReference;

/// A row of the analysis panel: one reference spectrum with its conditions, the weight that a fit
/// gave it. One line, below which the arrow at its end folds out the rest.
class LCFReference : public QFrame
{
    Q_OBJECT
public:
    explicit LCFReference(QWidget* parent = nullptr);
    ~LCFReference() override;

    /// Copies of all that a fit needs of this row.
    LcfReferenceData data() const;
    /// The reference; isShifted is always on, and eShift and eOffset are the row's dE [eV].
    const XafsSpectrum& spectrum() const { return reference_.spectrum(); }
    QString fileName() const;
    int backgroundMode() const; ///< VictLine's
    void clearFile();
    /// The use box is checked.
    bool isUsed() const;
    /// The row takes part in fits: the use box is checked and a file is loaded.
    bool isActive() const;
    double weight() const { return weight_; }

    /// The button that shows this row's map; belongs to the panel's group.
    QAbstractButton* showButton() const;
    QLineEdit* shiftField() const; ///< dE
    /// What takes the focus by Tab, in reading order.
    QVector<QWidget*> tabChain() const;
    /// Widths of the line's last fields, dMut and dE, of the arrow, and of the gaps between them
    /// [pixels], for the captions above the rows.
    struct Columns
    {
        int jump;
        int shift;
        int arrow;
        int gap;
    };
    Columns columns() const;

public Q_SLOTS:
    /// The same as choosing the file in the row.
    void load(const QString& fname);
    /// Reads a reference file. A file that can not be read costs one log line and empties the row.
    void newFile(const QString& fname);
    void changedUse(bool f);
    /// Takes the field dE; the curves are not built anew, fits read them at the new shift.
    void editedDeltaE();
    /// Normalises anew, with Victoreen lines (f) or straight ones.
    void toggledIsVictreen(bool f);
    /// Fills the row from a batch. isVic: empty, "VIC" or a number above 0 means Victoreen lines.
    void setStd(bool use, double dE, const QString& fname, const QString& isVic);
    /// Takes the suggested edge and whether references are normalised by it. One that tells nothing
    /// new costs nothing.
    void setHint(const EdgeHint& hint);
    /// Marks the row as left out of the fit for this reason; as taking part for an empty text.
    void setLeftOut(const QString& why);
    /// Keeps the weight and shows it in percent.
    void setWeight(double w);
    /// Shows the jump that this reference carries.
    void setResult(double v);

Q_SIGNALS:
    void newFileSelected();
    void newDeltaE();
    /// Files were dropped on the row: this one is to take the first. At least one.
    void filesDropped(const QStringList& files);
    /// The spectrum, its shift or its use is another.
    void changed();

private:
    Q_DISABLE_COPY(LCFReference)

    void setupLine();
    void unfold(bool f);
    void clearedFile();
    void forgetSpectrum();
    void showEdge();
    void showMark();

    const std::unique_ptr<Ui_LCFReference> ui_;
    ReferenceSpectrum reference_;
    QString leftOut_; ///< why the fit leaves the row out, in the interface's language
    double weight_ = 0.0;
};
