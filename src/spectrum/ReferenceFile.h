#pragma once

#include "spectrum/Spectrum.h"

#include <QStringList>

class QTextStream;

// Text files of standard spectra, in one of two layouts. The "9809" layout of a beamline's scan: a
// first line that starts with "9809", header lines with the lattice spacing [angstrom] behind a
// field "D=", a line "Offset", then lines of number, Bragg angle [degrees], time, I0, I1. The
// simple layout: lines of energy [eV] and absorption, "#" starting a comment.

/// What a reference file holds; empty curves for a file without data.
struct ReferenceFile
{
    bool is9809 = false;
    Spectrum mu; ///< absorption against energy
    Spectrum i0; ///< intensities against energy, of the "9809" layout alone
    Spectrum i1;
};

/// Whether the stream, which must be seekable, starts as a "9809" file. Leaves it behind the first
/// line.
bool is9809(QTextStream& in);

/// Reads either layout from the start of the stream. Texts that are no numbers read as 0, lines of
/// too few fields are skipped, and so are lines beyond 64 Ki characters. The intensity pair of a
/// "9809" line gives mu = ln(I0 / I1), or 1 where their product is not positive.
ReferenceFile readReferenceFile(QTextStream& in);

/// Fields of the next line: runs of white space separate them. Empty for a blank line and for one
/// beyond 64 Ki characters, of which no more than that is ever held.
QStringList nextReferenceFields(QTextStream& in);
