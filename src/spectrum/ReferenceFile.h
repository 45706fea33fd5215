#pragma once

#include "spectrum/Remark.h"
#include "spectrum/Spectrum.h"

#include <QVector>

class QTextStream;

// Text files of standard spectra, in one of two layouts. The "9809" layout of a beamline's scan: a
// first line that starts with "9809", header lines with the lattice spacing [angstrom] behind a
// field "D=", a line "Offset", then lines of number, Bragg angle [degrees], time, I0, I1. The
// simple layout: lines of energy [eV] and absorption.
//
// A line holds data when its first two items are finite numbers; all others are passed over. Blanks
// and tabs, a comma or a semicolon separate items, and an exponent may be written with "D". Lines
// end with LF, CR LF or CR; those beyond 64 Ki characters are passed over, and no more than that is
// ever held of one.

/// What a reference file holds; empty curves for a file without data.
struct ReferenceFile
{
    bool isOpened = false; ///< by loadReferenceFile()
    bool is9809 = false;
    Spectrum mu; ///< absorption against energy, in the file's order
    Spectrum i0; ///< intensities against energy, of the "9809" layout alone
    Spectrum i1;
    QVector<Remark> remarks; ///< what a user might not expect of the reading
};

/// Reads either layout from the start of the stream, which must not be one of text mode: that would
/// drop line ends. The intensities of a "9809" line give mu = ln(I0 / I1), or 1 where their product
/// is not positive; of fluorescence, which its head tells, I1 / I0, or 0 without I0. Intensities
/// that are no numbers read as 0.
ReferenceFile readReferenceFile(QTextStream& in);

/// Reads a file and logs its layout and the remarks. Empty when it can't be opened, or is no plain
/// file: a device or a pipe need not ever come to an end.
ReferenceFile loadReferenceFile(const QString& fname);

/// Puts the points in ascending order; of several points of one energy the first counts. A remark
/// tells how many were left out.
void orderByEnergy(ReferenceFile& file);
