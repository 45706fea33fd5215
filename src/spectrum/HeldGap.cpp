#include "spectrum/HeldGap.h"

#include "spectrum/EdgeRules.h"

#include <QCoreApplication>

namespace {

enum Sentence
{
    UnsoundGap,
    HeldAbove,
    HeldBelow,
    HeldOnBothSides
};

constexpr const char* sentences[] = {
    QT_TRANSLATE_NOOP("HeldGap", "Gap unsound"),
    QT_TRANSLATE_NOOP("HeldGap", "Gap held above %1 eV"),
    QT_TRANSLATE_NOOP("HeldGap", "Gap held below %1 eV"),
    QT_TRANSLATE_NOOP("HeldGap", "Gap held above %1 eV and below %2 eV")};

} // namespace

HeldGap::HeldGap(const XafsSpectrum& s, const ReadRange& read)
    : s_(s)
{
    if (!s.linesClose || s.outcome != Outcome::Fitted ||
        s.edgeIndex >= s.doubleNormalizedPreBase.size())
        return;
    sampleLines();
    const int k = s.edgeIndex;
    step_ = s.heldStep(post_[k] - pre_[k]);
    state_ = judge(read);
    if (state_ == Held)
        findEnds();
}

void HeldGap::sampleLines()
{
    const int n = s_.doubleNormalizedPreBase.size();
    energies_.resize(n);
    pre_.resize(n);
    post_.resize(n);
    const QPointF* const curve = s_.doubleNormalizedPreBase.points.constData();
    for (int i = 0; i < n; ++i)
        energies_[i] = curve[i].x();
    s_.pre.valuesAt(energies_.constData(), n, pre_.data());
    s_.post.valuesAt(energies_.constData(), n, post_.data());
}

/// Between the ranges of the lines, or the edge itself.
bool HeldGap::isInside(int i) const
{
    return i == s_.edgeIndex || (energies_[i] >= s_.pre.endE && energies_[i] <= s_.post.startE);
}

HeldGap::State HeldGap::judge(const ReadRange& read) const
{
    State state = Sound;
    for (int i = 0; i < energies_.size(); ++i) {
        // Written so that nan is low.
        const bool low = !(post_[i] - pre_[i] >= edgeRules::lowGap * step_);
        if (!low || !read.contains(energies_[i] - s_.eOffset))
            continue;
        if (isInside(i))
            return Unsound;
        state = Held;
    }
    return state;
}

void HeldGap::findEnds()
{
    const auto leaves = [this](int i) {
        return !isInside(i) && !(post_[i] - pre_[i] >= edgeRules::holdGap * step_);
    };
    firstAbove_ = s_.edgeIndex + 1;
    while (firstAbove_ < energies_.size() && !leaves(firstAbove_))
        ++firstAbove_;
    lastBelow_ = s_.edgeIndex - 1;
    while (lastBelow_ >= 0 && !leaves(lastBelow_))
        --lastBelow_;
}

void HeldGap::continueOver(double* values) const
{
    if (state_ != Held)
        return;
    const QPointF* const mu = s_.points.constData();
    for (int i = firstAbove_; i < energies_.size(); ++i)
        values[i] = (mu[i].y() - post_[i]) / step_ + 1.0;
    for (int i = lastBelow_; i >= 0; --i)
        values[i] = (mu[i].y() - pre_[i]) / step_;
}

Spectrum HeldGap::curve() const
{
    Spectrum curve = s_.doubleNormalizedPreBase;
    if (state_ != Held)
        return curve;
    QVarLengthArray<double, 512> values(curve.size());
    for (int i = 0; i < curve.size(); ++i)
        values[i] = curve.points.at(i).y();
    continueOver(values.data());
    curve.setPoints(energies_.constData(), values.constData(), curve.size());
    return curve;
}

const char* HeldGap::sentence() const
{
    if (state_ == Unsound)
        return sentences[UnsoundGap];
    if (!isHeldAbove())
        return sentences[HeldBelow];
    return sentences[isHeldBelow() ? HeldOnBothSides : HeldAbove];
}

QString HeldGap::withEnergies(QString text) const
{
    if (state_ != Held)
        return text;
    if (isHeldAbove())
        text = text.arg(energies_[firstAbove_], 0, 'f', 1);
    if (isHeldBelow())
        text = text.arg(energies_[lastBelow_], 0, 'f', 1);
    return text;
}

QString HeldGap::words() const
{
    if (state_ == Sound)
        return {};
    return withEnergies(QCoreApplication::translate("HeldGap", sentence()));
}

QString HeldGap::logText() const
{
    if (state_ == Sound)
        return {};
    QString text = QLatin1String(sentence());
    text[0] = text[0].toLower();
    return withEnergies(text);
}
