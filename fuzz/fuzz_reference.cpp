#include "Fuzz.h"

#include "spectrum/ReferenceSpectrum.h"

#include <cmath>

/// Reference files, and the normalisation of their spectra by both backgrounds.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString name = writeInput(asBytes(data, size));
    ReferenceSpectrum reference;
    const QString why =
        reference.load(name, size % 2 == 0 ? VictLine::Straight : VictLine::Victoreen);
    check(why.isEmpty() == !reference.isEmpty(), "a reference is there, or refused");
    if (reference.isEmpty())
        return 0;
    const XafsSpectrum& s = reference.spectrum();
    check(s.size() >= ReferenceSpectrum::leastPoints, "a reference has points enough");
    for (int i = 1; i < s.size(); ++i)
        check(s.points[i - 1].x() < s.points[i].x(), "energies ascend");
    EdgeHint hint;
    hint.applied = hint.elm.use = true;
    hint.elm.edgeE = s.points[s.size() / 2].x();
    reference.setHint(hint);
    reference.setShift(1.5);
    reference.doubts();
    return 0;
}
