#include "app/Body.h"

#include "batch/BatchCtrl.h"
#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/Settings.h"
#include "common/TextItems.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

#include <QDebug>

void Body::selectedDark(const QString& fname)
{
    clearDark();
    const auto image = std::make_shared<TiffData>();
    if (!image->readFile(fname, defaultErrPoints()))
        return;
    image->buildImage(*theColorBar);
    dataBox_->showDark(fname, image->exposureMs);
    data_.dark = image;
    refillDarkAverages(i1_);
    refillDarkAverages(i0_);
    refreshCursor();
}

void Body::clearDark()
{
    data_.dark.reset();
    dataBox_->clearDarkName();
    refillDarkAverages(i1_);
    refillDarkAverages(i0_);
    refreshCursor();
}

void Body::setDarkArea(Stack& stack)
{
    if (!imageBox_->area()->hasSelection()) {
        fault(QStringLiteral("Dark area not set: no area is selected in the image"));
        return;
    }
    stack.data->darkArea = imageBox_->area()->selectedArea();
    stack.data->darkAreaOn = true;
    stack.row->darkArea(stack.data->darkArea);
    // The selection was drawn for the dark area alone; the user's earlier one comes back.
    imageBox_->area()->recallOldSelectedArea();
    refillDarkAverages(stack);
    refreshCursor();
}

void Body::fillDarkAverages(Stack& stack)
{
    stack.data->fillDarkAverages(data_.dark.get(), reader_->darkFactor(*stack.data));
}

void Body::refillDarkAverages(Stack& stack)
{
    stack.data->refillDarkAverages(data_.dark.get(), reader_->darkFactor(*stack.data));
}

/// An exposure has another text: dark counts are scaled anew.
void Body::newExposure(Stack& stack)
{
    refillDarkAverages(stack);
    refreshCursor();
}

void Body::clearDarkArea(Stack& stack)
{
    stack.data->darkAreaOn = false;
    stack.data->darkAvg.clear();
    stack.row->noDarkArea();
    refreshCursor();
}

void Body::setI0DarkArea()
{
    setDarkArea(i0_);
}

void Body::setI1DarkArea()
{
    setDarkArea(i1_);
}

void Body::updateI0DarkArea()
{
    fillDarkAverages(i0_);
}

void Body::updateI1DarkArea()
{
    fillDarkAverages(i1_);
}

void Body::clearUpdateI0DarkArea()
{
    refillDarkAverages(i0_);
    refreshCursor();
}

void Body::clearUpdateI1DarkArea()
{
    refillDarkAverages(i1_);
    refreshCursor();
}

void Body::clearI0DarkArea()
{
    clearDarkArea(i0_);
}

void Body::clearI1DarkArea()
{
    clearDarkArea(i1_);
}

void Body::clearedBG()
{
    bgView_->setSpectrum(XafsSpectrum());
}

void Body::selectedBG(const QString& fname)
{
    XafsSpectrum fresh;
    if (!fresh.load(fname)) {
        fault(QStringLiteral("No background spectrum in ") + quoted(fname));
        dataBox_->clearBg();
        return;
    }
    bgView_->setSpectrum(fresh);
    bgView_->resetXScale();
}

/// After a file that fails the row is to be emptied, and with it the spectrum: what is shown is
/// what is calculated with.
bool Body::loadTotalI0(XafsSpectrum& total, const QString& fname)
{
    XafsSpectrum fresh;
    if (!fresh.load(fname)) {
        fault(QStringLiteral("No total I0 spectrum in ") + quoted(fname));
        return false;
    }
    total = fresh;
    for (int i = 0; i < total.size(); ++i)
        qDebug() << total.x(i) << total.i0Spectrum.y(i);
    return true;
}

void Body::newTotalI0ofI1File(const QString& fname)
{
    if (!loadTotalI0(data_.totalI0ofI1, fname))
        dataBox_->clearTotalI0ofI1();
    refreshCursor();
}

void Body::newTotalI0ofI0File(const QString& fname)
{
    // Kept and logged; no calculation reads it, on purpose.
    if (!loadTotalI0(data_.totalI0ofI0, fname))
        dataBox_->clearTotalI0ofI0();
}

void Body::loadDefaultErrPoints()
{
    const QString path = theCfg().upperValue(QStringLiteral("ERRPOINTS"));
    ErrPoints& list = defaultErrPoints();
    if (path.isEmpty())
        return;
    CmdLine key;
    key.word = QStringLiteral("ErrPoints");
    const FaultCollector faults(failurePlace(key));
    list.active = list.readFile(path, 0);
    batchCtrl_->commandFailed(key, faults.faults());
}
