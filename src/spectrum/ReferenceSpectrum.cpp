#include "spectrum/ReferenceSpectrum.h"

#include "spectrum/ReferenceFile.h"

#include <QCoreApplication>

#include <algorithm>

namespace {
constexpr const char* failedEdgeText =
    QT_TRANSLATE_NOOP("Remark", "no edge that can be trusted (%1)");
} // namespace

QString ReferenceSpectrum::load(const QString& fname, int mode)
{
    clear();
    ReferenceFile file = loadReferenceFile(fname);
    if (!file.isOpened)
        return QStringLiteral("the file can not be opened");
    const int logged = file.remarks.size();
    orderByEnergy(file);
    for (const Remark& remark : file.remarks.mid(logged))
        remark.log(fname);
    if (file.mu.size() < leastPoints)
        return QStringLiteral("%1 points, at least %2 are needed")
            .arg(file.mu.size())
            .arg(leastPoints);
    fname_ = fname;
    remarks_ = file.remarks;
    spectrum_.setPoints(file.mu.points);
    spectrum_.i0Spectrum = file.i0;
    spectrum_.i1Spectrum = file.i1;
    setMode(mode);
    return {};
}

void ReferenceSpectrum::clear()
{
    XafsSpectrum empty;
    empty.isMute = spectrum_.isMute;
    empty.isShifted = spectrum_.isShifted;
    empty.eShift = spectrum_.eShift;
    empty.eOffset = spectrum_.eOffset;
    spectrum_ = empty;
    remarks_.clear();
    doubts_.clear();
}

void ReferenceSpectrum::setMode(int mode)
{
    spectrum_.mode = mode;
    normalize();
}

bool ReferenceSpectrum::setHint(const EdgeHint& hint)
{
    if (hint.isLike(hint_))
        return false;
    const bool otherCurve = hint.inForce() || hint_.inForce();
    hint_ = hint;
    if (otherCurve)
        normalize();
    else
        findDoubts();
    return otherCurve;
}

void ReferenceSpectrum::setShift(double dE)
{
    spectrum_.isShifted = true;
    spectrum_.eShift = spectrum_.eOffset = dE;
}

void ReferenceSpectrum::normalize()
{
    const int mode = spectrum_.mode;
    const qint64 mute = spectrum_.isMute;
    const double shift = spectrum_.eShift;
    const double offset = spectrum_.eOffset;
    spectrum_.init(spectrum_.name, hint_.element());
    // A line that is fitted again keeps the samples of its former bend.
    spectrum_.pre = spectrum_.post = VictLine();
    spectrum_.eShift = 0.0;
    spectrum_.mode = mode;
    spectrum_.normalizeIfData(mode);
    spectrum_.isMute = mute;
    spectrum_.eShift = shift;
    spectrum_.eOffset = offset;
    findDoubts();
}

void ReferenceSpectrum::findDoubts()
{
    const QVector<Remark> former = doubts_;
    doubts_.clear();
    if (isEmpty())
        return;
    doubts_ = edgeDoubts(steepestRises(spectrum_), hint_);
    if (spectrum_.outcome != Outcome::Fitted)
        doubts_.prepend({failedEdgeText, {outcomeText(spectrum_.outcome)}});
    for (const Remark& doubt : qAsConst(doubts_)) {
        const auto told = [&doubt](const Remark& r) { return r.english() == doubt.english(); };
        if (std::none_of(former.begin(), former.end(), told))
            doubt.log(fname_);
    }
}

QStringList ReferenceSpectrum::doubts() const
{
    QStringList lines;
    for (const Remark& remark : remarks_ + doubts_) {
        if (remark.atRow)
            lines.append(remark.shown());
    }
    return lines;
}
