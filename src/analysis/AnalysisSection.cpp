#include "analysis/AnalysisSection.h"

#include "display/NumberFields.h"

#include <QCheckBox>

SpectraInfo positionsOf(const WalkSource& source)
{
    return {source.elm, {source.leastEnergy(), source.greatestEnergy()}, true};
}

AnalysisSection::AnalysisSection(AnalysisWalk walk, const QString& boxName, const QString& boxText,
                                 QWidget* parent, Head head)
    : Fold(boxName, boxText, parent, head)
    , walk_(walk)
    , numbers_(new NumberFields(this))
{
    connect(chooser(), &QAbstractButton::toggled, this, &AnalysisSection::changed);
}
