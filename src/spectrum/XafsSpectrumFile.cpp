#include "spectrum/ReferenceFile.h"
#include "spectrum/XafsSpectrum.h"

#include "common/FieldText.h"
#include "common/SafeFile.h"

#include <QTextStream>

namespace {
void writeCoefficients(QTextStream& out, const char* head, const VictLine& line)
{
    out << head << line.c0 << ' ' << line.slope << ' ' << line.c1 << ' ' << line.c2 << '\n';
}
} // namespace

/// Drops all that was read or worked out of an earlier file. Settings (name, element, model,
/// shifts) stay.
void XafsSpectrum::forgetCurves()
{
    clear();
    smoothed.clear();
    i0Spectrum = i1Spectrum = Spectrum();
    normalizedPostBase = doubleNormalizedPostBase = Spectrum();
    normalizedPreBase = doubleNormalizedPreBase = Spectrum();
    pre = post = VictLine();
    midx = dMut = 0.0;
    outOfRangeMidx = noisyMidx = linesClose = false;
    outcome = Outcome::NoPoints;
    edgeIndex = 0;
    isMute = 1;
}

bool XafsSpectrum::load(const QString& fname)
{
    forgetCurves();
    const ReferenceFile read = loadReferenceFile(fname);
    isMute = read.is9809 ? 0 : 1;
    setPoints(read.mu.points);
    i0Spectrum = read.i0;
    i1Spectrum = read.i1;
    return !isEmpty();
}

bool XafsSpectrum::loadAndNormalize(const QString& fname)
{
    const bool loaded = load(fname);
    if (loaded)
        normalizeIfData(mode);
    return loaded;
}

bool XafsSpectrum::dump(const QString& fname, bool withEOffset) const
{
    return !isEmpty() && writeTextFile(fname, [this, withEOffset](QTextStream& out) {
        dumpTo(out, withEOffset);
    });
}

void XafsSpectrum::dumpTo(QTextStream& out, bool withEOffset) const
{
    out << "###Morvenkite::XafsSpectrum\n";
    out << "# midx    : " << energyText(midx) << '\n';
    out << "# dMut    : " << dMut << '\n';
    writeCoefficients(out, "# pre   vic : ", pre);
    writeCoefficients(out, "# poste vic : ", post);
    out << "#\n# x  double-normalized-pre-base y pre post\n";
    for (int i = 0; i < size(); ++i) {
        const double E = x(i);
        out << energyText(withEOffset ? E - eOffset : E) << '\t' << doubleNormalizedPreBase.y(i)
            << '\t' << y(i) << '\t' << preAt(E) << '\t' << postAt(E) << '\n';
    }
}
