#pragma once

#include "spectrum/EdgeDoubt.h"
#include "spectrum/XafsSpectrum.h"

/// A spectrum from a file that others are compared with: a reference or the standard. Its points
/// ascend in energy, each energy once. It normalises itself anew for another background or hint,
/// and keeps the reasons for doubt of the file and its edge; each is logged once, with the file.
class ReferenceSpectrum
{
public:
    /// Least number of points: below it there are no lines to fit.
    static constexpr int leastPoints = 3;

    const XafsSpectrum& spectrum() const { return spectrum_; }
    bool isEmpty() const { return spectrum_.isEmpty(); }

    /// Reads a file and normalises it with the background given (VictLine's modes). An empty text,
    /// or, with the spectrum empty, why the file is refused.
    QString load(const QString& fname, int mode);
    /// Empties the spectrum; hint, shift and the mark for plots stay.
    void clear();

    /// Normalises anew with another background.
    void setMode(int mode);
    /// Takes another hint; normalises anew, and returns true, when that makes another curve. One
    /// that means the same costs nothing.
    bool setHint(const EdgeHint& hint);

    /// Energy shift [eV]. The curves are not built anew: fits read them at the shift, so they stand
    /// where the file has them.
    void setShift(double dE);
    /// Whether plots show it.
    void setShown(bool shown) { spectrum_.isMute = shown ? 1 : 0; }

    /// Reasons for doubt, one a line, in the interface's language.
    QStringList doubts() const;

private:
    void normalize();
    void findDoubts();

    XafsSpectrum spectrum_;
    EdgeHint hint_;
    QString fname_;
    QVector<Remark> remarks_; ///< on the file
    QVector<Remark> doubts_;  ///< on its edge
};
