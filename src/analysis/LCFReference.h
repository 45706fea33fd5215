#pragma once

#include "analysis/LcfFit.h"
#include "maps/Analyzed2DRes.h"

#include <QFrame>

#include <memory>

class QAbstractButton;
class Ui_LCFReference;

/// A row of the analysis panel: one reference spectrum with its conditions, the weight that a fit
/// gave it, and its two result maps.
class LCFReference : public QFrame
{
    Q_OBJECT
public:
    explicit LCFReference(QWidget* parent = nullptr);
    ~LCFReference() override;

    /// Copies of all that a fit needs of this row.
    LcfReferenceData data() const;
    /// The reference; isShifted is always on, and eShift and eOffset are the row's dE [eV].
    const XafsSpectrum& spectrum() const { return spectrum_; }
    QString fileName() const;
    /// The use box is checked.
    bool isUsed() const;
    /// The row takes part in fits: the use box is checked and a file is loaded.
    bool isActive() const;
    double weight() const { return weight_; }

    /// Kinds of map that each row has: 0 the jump that the reference carries, 1 its weight.
    static constexpr int mapKinds = 2;
    /// Map of the jump that this reference carries (kind 0) or of its weight (1); that of kind 0
    /// for any other kind.
    Analyzed2DRes* map(int kind) const;
    /// The button that shows this row's map; belongs to the panel's group.
    QAbstractButton* showButton() const;

public Q_SLOTS:
    /// Reads a reference file. A file that can not be read costs one log line and empties the row.
    void newFile(const QString& fname);
    void changedUse(bool f);
    /// Takes the field dE; the curves are not built anew, fits read them at the new shift.
    void editedDeltaE();
    /// Normalises anew, with Victoreen lines (f) or straight ones.
    void toggledIsVictreen(bool f);
    /// Fills the row from a batch. isVic: empty, "VIC" or a number above 0 means Victoreen lines.
    void setStd(bool use, double dE, const QString& fname, const QString& isVic);
    /// Keeps the weight and shows it in percent.
    void setWeight(double w);
    /// Shows the jump that this reference carries.
    void setResult(double v);
    /// Marks the row for taking no part in fits; an empty reason takes that back.
    void setLeftOut(const QString& why);

Q_SIGNALS:
    void newFileSelected();
    void newDeltaE();
    /// The spectrum, its shift or its use is another.
    void changed();

private:
    Q_DISABLE_COPY(LCFReference)

    void clearedFile();
    void normalize();
    void applyShift(double dE);
    void forgetSpectrum();

    const std::unique_ptr<Ui_LCFReference> ui_;
    XafsSpectrum spectrum_;
    QVector<Analyzed2DRes*> maps_; ///< children of this row
    double weight_ = 0.0;
};
