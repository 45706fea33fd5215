#include "selection/EOFSetup.h"
#include "selection/SelectDataFiles.h"
#include "selection/SelectDataFilesAdditionalSetup.h"

// What the row passes on to its two setups.

bool SelectDataFiles::showLatest() const
{
    return addSetup_->showLatest();
}

bool SelectDataFiles::ignoreLive() const
{
    return addSetup_->ignoreLive();
}

const ErrPoints& SelectDataFiles::errPoints() const
{
    return addSetup_->errPoints();
}

void SelectDataFiles::useErrPoints(const QString& fname)
{
    addSetup_->useErrPoints(fname);
}

void SelectDataFiles::setShowLatest(bool f)
{
    addSetup_->setShowLatest(f);
}

void SelectDataFiles::setEngByName(bool f)
{
    eofSetup_->setByName(f);
}

void SelectDataFiles::setEngByCalc(bool f)
{
    eofSetup_->setByCalc(f);
}

void SelectDataFiles::setEngCalcStart(double start)
{
    eofSetup_->setStart(start);
}

void SelectDataFiles::setEngCalcDelta(double delta)
{
    eofSetup_->setDelta(delta);
}

void SelectDataFiles::setEngCalcEnd(double end)
{
    eofSetup_->setEnd(end);
}

void SelectDataFiles::setEngCalcNum(int num)
{
    eofSetup_->setNumOfPoints(num);
}

void SelectDataFiles::setEvenInEng(bool f)
{
    eofSetup_->setEvenInEnergy(f);
}

void SelectDataFiles::setEvenInDeg(bool f)
{
    eofSetup_->setEvenInEnergy(!f);
}

void SelectDataFiles::setDispUnit(int idx)
{
    eofSetup_->setUnit(idx);
}

void SelectDataFiles::setEngByNameRegExp(const QString& pattern)
{
    eofSetup_->setPattern(pattern);
}

void SelectDataFiles::setEngByNameFactor(double factor)
{
    eofSetup_->setFactor(factor);
}

void SelectDataFiles::setEngByRef(const QString& fname)
{
    eofSetup_->setReference(fname);
}

void SelectDataFiles::setCrystalD(const QString& spacing)
{
    eofSetup_->setSpacing(spacing);
}

void SelectDataFiles::darkArea(const T20& area)
{
    addSetup_->darkArea(area);
}

void SelectDataFiles::noDarkArea()
{
    addSetup_->noDarkArea();
}

void SelectDataFiles::offerCopyToI0()
{
    eofSetup_->offerCopyToI0();
}
