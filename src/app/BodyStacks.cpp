#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "batch/CommandFailure.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "selection/SelectDataFiles.h"

#include <QDebug>

#include <utility>

namespace {

ShownImage pictureOf(const TiffData& image)
{
    return {image.image(), image.width, image.height, image.minVal, image.maxVal};
}

/// Makes the picture anew unless it was made with this scale.
void refreshPicture(const TiffData& image, const ColorScale& scale)
{
    if (!image.pictureMatches(scale))
        image.buildImage(scale);
}

} // namespace

void Body::clearI1Files()
{
    clearStack(i1_);
}

void Body::clearI0Files()
{
    clearStack(i0_);
}

void Body::clearStack(Stack& stack)
{
    if (!stack.data->images.isEmpty())
        stopWorkOn(stack, QStringLiteral("the %1 images are gone").arg(stackName(stack)));
    // Whatever button is on, an image of the stack may still lie in the image area.
    if (stack.data->images.contains(shownImage_))
        showImage(nullptr);
    stack.row->clearFiles();
    stack.data->images.clear();
    stack.firstValidJob = stack.jobsSent + 1;
    stack.data->darkAvg.clear();
    if (&stack == &shownStack())
        takeNoImage();
    tellImageSize();
    refreshCursor();
}

/// A load of the stack is under way, and plots stay quiet.
bool Body::isLoading(const Stack& stack)
{
    return stack.jobsDone < stack.jobsSent;
}

void Body::setStopRedraw(bool on)
{
    xafsView_->setStopRedraw(on);
    analyzer_->view()->setStopRedraw(on);
}

/// A job by the stack's row, counted as sent.
LoadJob Body::newJob(Stack& stack, const QStringList& files, EX_CMD_ID id, const CmdLine& cmd)
{
    LoadJob job;
    job.number = ++stack.jobsSent;
    job.files = files;
    job.ignoreLive = stack.row->ignoreLive();
    job.skip = qMax(1, stack.row->skip());
    job.cutFirst = qMax(0, stack.row->cutFirst());
    job.cutLast = qMax(0, stack.row->cutLast());
    job.errPs = stack.row->errPoints();
    job.scale = *imageBox_->bar();
    job.loadCmdId = id;
    job.ticket = cmd.ticket;
    job.place = failurePlace(cmd);
    return job;
}

void Body::readI1Files(const QStringList& files, bool newFile)
{
    readI1(files, newFile, CmdLine());
}

void Body::readI0Files(const QStringList& files, bool newFile)
{
    readI0(files, newFile, CmdLine());
}

void Body::readI1(const QStringList& files, bool newFile, const CmdLine& cmd)
{
    if (newFile) {
        clearI1Files();
        setStopRedraw(true);
    }
    Q_EMIT loadI1Files(newJob(i1_, files, ExCmdLoadI1Files, cmd));
}

void Body::readI0(const QStringList& files, bool newFile, const CmdLine& cmd)
{
    if (newFile)
        clearI0Files();
    Q_EMIT loadI0Files(newJob(i0_, files, ExCmdLoadI0Files, cmd));
}

/// False, the image being deleted, when it comes of a job that was cleared meanwhile: a worker
/// reads a selection to its end.
bool Body::takeLoaded(Stack& stack, TiffData* image, int fNo)
{
    if (image->jobNumber != 0 && image->jobNumber < stack.firstValidJob) {
        delete image;
        return false;
    }
    stopWorkOn(stack, QStringLiteral("%1 images are added").arg(stackName(stack)));
    image->energy = stack.row->addFile(image->fileName, fNo);
    // The job carried the colour scale of its start; the bar may have been moved since.
    refreshPicture(*image, *imageBox_->bar());
    stack.data->images.append(SharedImage(image));
    fillDarkAverages(stack);
    return true;
}

void Body::loadedI1(TiffData* image, int fNo)
{
    if (!image || !takeLoaded(i1_, image, fNo))
        return;
    if (data_.i1.images.size() == 1) {
        data_.takeGeometry();
        tellImageSize();
    }
    if (isLoading(i1_) && !i1_.row->showLatest())
        return;
    showXafsSpectrum();
    showLoaded(i1_);
}

void Body::loadedI0(TiffData* image, int fNo)
{
    if (!image || !takeLoaded(i0_, image, fNo))
        return;
    if (data_.i0.images.size() == 1)
        tellImageSize();
    if (!isLoading(i0_) || i0_.row->showLatest())
        showXafsSpectrum();
}

/// The images in front of the user give the size: those of I1, or of I0 while they are on show and
/// there are no others.
void Body::tellImageSize()
{
    QSize size;
    if (!data_.i1.images.isEmpty())
        size = data_.size;
    else if (imageBox_->choice() == ShowI0Id && !data_.i0.images.isEmpty())
        size = QSize(data_.i0.images.first()->width, data_.i0.images.first()->height);
    imageBox_->area()->setImageSize(size);
}

void Body::finishedLoadI1Files(int jobsDone)
{
    finishLoad(i1_, jobsDone);
    if (!isLoading(i1_))
        setStopRedraw(false);
}

void Body::finishedLoadI0Files(int jobsDone)
{
    finishLoad(i0_, jobsDone);
}

void Body::finishLoad(Stack& stack, int jobsDone)
{
    stack.jobsDone = jobsDone;
    curX_ = 0;
    curY_ = 0;
    if (stack.data->images.isEmpty()) {
        refreshCursor();
        return;
    }
    stack.row->setExposure(stack.data->images.first()->exposureMs,
                           stack.data->hasUniformExposure());
    refillDarkAverages(stack);
    tellEnergyDoubts(stack);
    showLoaded(stack);
    refreshCursor();
}

/// The last image of a stack comes on show, or under a map of its size that is.
void Body::showLoaded(Stack& stack)
{
    const int last = stack.data->images.size() - 1;
    const bool shown = &shownStack() == &stack;
    if (!shown || !keepsMap()) {
        stack.row->select(last);
        if (shown)
            showData(last);
        return;
    }
    // The row would bring the image on show.
    const QSignalBlocker quiet(stack.row);
    stack.row->select(last);
    takeImage(last);
}

/// The stack that the seek bar browses, and of which energy marker and dark level are. While a map
/// is on show that is I1, of which the map was made.
const Body::Stack& Body::shownStack() const
{
    return imageBox_->choice() == ShowI0Id ? i0_ : i1_;
}

Body::Stack& Body::shownStack()
{
    return const_cast<Stack&>(std::as_const(*this).shownStack());
}

bool Body::isMapChosen() const
{
    return imageBox_->choice() == ShowShiftMapId || imageBox_->choice() == ShowResAnalysisId;
}

/// A map is on show that has the size of the images.
bool Body::keepsMap() const
{
    if (!isMapFilled())
        return false;
    const AnalyzeCond& size = imageBox_->area()->shownMap()->stepper;
    return size.width == data_.size.width() && size.height == data_.size.height();
}

QString Body::emptyText() const
{
    if (imageBox_->choice() == ShowShiftMapId)
        return tr("No energy shift map");
    if (imageBox_->choice() == ShowResAnalysisId)
        return tr("No result map");
    return imageBox_->choice() == ShowI0Id ? tr("No I0 images") : tr("No I1 images");
}

void Body::showImage(const SharedImage& image)
{
    shownImage_ = image;
    // Another stack, or a map, was on show while the bar was moved.
    if (image)
        refreshPicture(*image, *imageBox_->bar());
    imageBox_->area()->setImage(image ? pictureOf(*image) : ShownImage());
}

void Body::showData(int no)
{
    const TiffStack& images = shownStack().data->images;
    if (no < 0 || no >= images.size())
        return;
    leaveMap();
    imageBox_->area()->setShowOverLayer(false);
    takeImage(no);
}

/// Puts an image of the shown stack into the image area, on show or under the map that is.
void Body::takeImage(int no)
{
    const TiffStack& images = shownStack().data->images;
    imageBox_->showSeek(no, images.size() - 1, images[no]->fileName);
    xafsView_->setMarkerEnergy(images[no]->energy);
    showImage(images[no]);
    showPixel(curX_, curY_);
}

void Body::takeNoImage()
{
    imageBox_->showNoImage();
    showImage(nullptr);
}

/// An image takes the place of a map: the choice buttons follow.
void Body::leaveMap()
{
    if (!isMapChosen())
        return;
    imageBox_->setChoiceQuietly(ShowDataId);
    imageBox_->area()->setEmptyText(emptyText());
}

void Body::prev()
{
    shownStack().row->prev();
}

void Body::next()
{
    shownStack().row->next();
}

void Body::sliderMoved(int idx)
{
    shownStack().row->select(idx);
    showData(idx);
}

void Body::seekImage(int imgNo)
{
    shownStack().row->select(imgNo);
    showData(imgNo);
}

void Body::dispImgSelected()
{
    qDebug() << "disp img selected";
    imageBox_->area()->setEmptyText(emptyText());
    if (imageBox_->choice() == ShowShiftMapId) {
        showMap(&energyShiftMap_);
    } else if (imageBox_->choice() == ShowResAnalysisId) {
        tellShowDeglitched();
        showMap(analyzer_->selectedMap());
    } else {
        tellImageSize();
        imageBox_->area()->setShowOverLayer(false);
        if (shownStack().data->images.isEmpty())
            takeNoImage();
        else
            showData(shownStack().row->currentIndex());
    }
    refreshCursor();
}

/// The box tells what the selected map shows, and must not make it a picture by that.
void Body::tellShowDeglitched()
{
    const Analyzed2DRes* const map = analyzer_->selectedMap();
    saveBox_->setShowDeglitched(map && map->useProc());
}

void Body::showMap(Analyzed2DRes* map)
{
    // The bar may have been moved since its picture was made; and the map of a walk that was
    // stopped has none.
    if (map && (map->imgValid || map->whyNotSaved(true).isEmpty()))
        map->genImg();
    imageBox_->area()->setAnalyzedRes(map);
    imageBox_->area()->setShowOverLayer(true);
}

void Body::selectedNewRef()
{
    dispImgSelected();
}

void Body::cBarUpdating()
{
    if (imageBox_->choice() == ShowShiftMapId) {
        if (energyShiftMap_.imgValid)
            energyShiftMap_.genImg();
    } else if (imageBox_->choice() == ShowResAnalysisId) {
        setupResAnalysisImage();
    } else if (shownImage_) {
        showImage(shownImage_);
    }
    imageBox_->area()->update();
}

void Body::cBarUpdated()
{
    qDebug() << "cBarUpdated" << imageBox_->bar()->rangeMin << imageBox_->bar()->rangeMax;
    if (!isMapChosen()) {
        for (const SharedImage& image : qAsConst(shownStack().data->images))
            refreshPicture(*image, *imageBox_->bar());
    }
    // Hands the shown image's new picture over: the old one is gone.
    cBarUpdating();
}
