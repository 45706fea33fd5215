#pragma once

#include <QVector>

/// Instruction sets that lane forms are compiled for, each with the one before it. A lane form
/// works on neighbouring positions side by side, by the plain form's operations in the plain form's
/// order, so the set decides how fast a result is there and never what it is.
enum class InstructionSet
{
    Sse2,  ///< two lanes; also what other processors than x86-64 compile
    Avx2,  ///< four
    Avx512 ///< eight
};

/// Those of this machine, the narrowest first.
QVector<InstructionSet> instructionSets();

/// The widest of this machine, or the one that MORVENKITE_ISA names ("sse2", "avx2", "avx512"); a
/// name that is none, or none of this machine's, costs one log line. What is chosen holds for lane
/// forms that are picked from then on.
InstructionSet instructionSet();

/// Another one from now on; one that the machine has not is passed over.
void useInstructionSet(InstructionSet set);

const char* nameOf(InstructionSet set);
