// The ranges over which pictures are made, and the colour bar.
#include "conduct/ViewConductor.h"

#include "analysis/Analyzer.h"
#include "conduct/StackConductor.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "maps/MapChoice.h"

#include <QDebug>

void ViewConductor::connectRange()
{
    connect(&box_, &ImageBox::rangeTyped, this, &ViewConductor::giveRange);
    connect(&box_, &ImageBox::ruleChosen, this, &ViewConductor::setRule);
    connect(&box_, &ImageBox::autoAsked, this, &ViewConductor::takeAutoRange);
    connect(&box_, &ImageBox::setAll, this, &ViewConductor::setAll);
    connect(&box_, &ImageBox::rampChanged, this, &ViewConductor::repaint);
    connect(&box_, &ImageBox::mapChosen, this, &ViewConductor::chooseMap);
    connect(box_.bar(), &ColorBar::cBarUpdating, this, &ViewConductor::cBarUpdating);
    connect(box_.bar(), &ColorBar::cBarUpdated, this, &ViewConductor::cBarUpdated);
}

RangeRule ViewConductor::defaultRule() const
{
    return unattended_ ? RangeRule::Own : RangeRule::Percent1;
}

void ViewConductor::setUnattended(bool on)
{
    unattended_ = on;
    i1Choice_ = i0Choice_ = {defaultRule(), std::nullopt};
    for (int kind = 0; kind < mapKinds; ++kind)
        book_.setDisplay(MapKind(kind), {{defaultRule(), std::nullopt}, !on});
    showRangeChoice();
    repaint();
}

void ViewConductor::showResults()
{
    box_.setChoice(ShowResAnalysisId);
}

/// The kind of the maps that are chosen, whether there is one or not.
MapKind ViewConductor::chosenKind() const
{
    if (box_.choice() == ShowShiftMapId)
        return MapKind::ShiftMap;
    if (const std::optional<MapKey> key = chosenResult())
        return key->kind;
    return rowMapKind(panel_.mapChoice().kindIndex).value_or(MapKind::LcfJump);
}

/// A fixed scale of the analysis is in force for what is on show.
bool ViewConductor::isFixed() const
{
    return isMapChosen() && traitsOf(chosenKind()).scale != ScaleFields::None &&
           panel_.scales().fixed;
}

RangeChoice ViewConductor::choiceOfShown() const
{
    if (isMapChosen())
        return book_.displayOf(chosenKind()).range;
    return &shownStack() == &data_.i1 ? i1Choice_ : i0Choice_;
}

void ViewConductor::setChoiceOfShown(const RangeChoice& choice)
{
    if (isMapChosen())
        book_.setDisplay(chosenKind(), {choice, !unattended_});
    else
        (&shownStack() == &data_.i1 ? i1Choice_ : i0Choice_) = choice;
    showRangeChoice();
    repaint();
}

void ViewConductor::showRangeChoice()
{
    const bool fixed = isFixed();
    RangeChoice choice = choiceOfShown();
    if (fixed)
        choice.given = ValueRange{0.0, 1.0};
    box_.showRangeChoice(choice, fixed ? tr("Fixed Scale of the analysis is on: it gives the scale")
                                       : QString());
}

void ViewConductor::giveRange(double min, double max)
{
    if (isFixed()) {
        setFixedScale({min, max});
        return;
    }
    RangeChoice choice = choiceOfShown();
    choice.given = ValueRange{min, max};
    setChoiceOfShown(choice);
}

/// Into the panel's fields, which tell all maps.
void ViewConductor::setFixedScale(const ValueRange& range)
{
    if (traitsOf(chosenKind()).scale == ScaleFields::DMut) {
        panel_.setDMutScaleMin(range.min);
        panel_.setDMutScaleMax(range.max);
    } else {
        panel_.setRatioScaleMin(range.min);
        panel_.setRatioScaleMax(range.max);
    }
}

void ViewConductor::setRule(RangeRule rule)
{
    if (!isFixed())
        setChoiceOfShown({rule, std::nullopt});
}

/// By the rule that was in force before a range was given; for a user, who wants to see something,
/// never by that of unattended runs.
void ViewConductor::takeAutoRange()
{
    const RangeChoice choice = choiceOfShown();
    const bool wasAuto = !choice.given && choice.rule != RangeRule::Own;
    setRule(wasAuto || (choice.given && choice.rule != RangeRule::Own) ? choice.rule
                                                                       : defaultRule());
}

/// All images of the kind on show are drawn over the scale of this one from now on.
void ViewConductor::setAll()
{
    box_.area()->tellRange();
    const ColorBar& bar = *box_.bar();
    if (!unattended_ && bar.hasRange() && !bar.handlesMoved() && !isFixed())
        giveRange(bar.rangeMin, bar.rangeMax);
    cBarUpdated();
}

/// The range of an image's stack, or its own.
ValueRange ViewConductor::rangeOf(const SharedImage& image)
{
    const bool isI0 = imageStack_ == &data_.i0;
    const ImageStack& stack = isI0 ? data_.i0 : data_.i1;
    const RangeChoice& choice = isI0 ? i0Choice_ : i1Choice_;
    if (choice.given)
        return *choice.given;
    const ValueRange own{image->minVal, image->maxVal};
    if (choice.rule == RangeRule::Own)
        return own;
    StackRange& range = isI0 ? i0Range_ : i1Range_;
    return range.of(stack.images, choice.rule, stacks_.isLoading(stack)).value_or(own);
}

/// All that is on show, through the bar as it is.
void ViewConductor::repaint()
{
    if (box_.choice() == ShowShiftMapId) {
        Analyzed2DRes& map = book_.at(shiftMapKey);
        if (map.imgValid)
            map.genImg();
    } else if (box_.choice() == ShowResAnalysisId) {
        setupResAnalysisImage();
    }
    // Under a map too, where it comes on show without another word.
    if (image_)
        showImage(image_);
    box_.area()->tellRange();
    box_.area()->update();
}

void ViewConductor::cBarUpdating()
{
    repaint();
}

void ViewConductor::cBarUpdated()
{
    ColorBar& bar = *box_.bar();
    qDebug() << "cBarUpdated" << bar.rangeMin << bar.rangeMax;
    if (!bar.handlesMoved() || !bar.hasRange()) {
        repaint();
        return;
    }
    const double span = bar.rangeMax - bar.rangeMin;
    const ValueRange spanned{bar.rangeMin + span * bar.lowHandle,
                             bar.rangeMin + span * bar.highHandle};
    bar.resetHandles();
    giveRange(spanned.min, spanned.max);
}
