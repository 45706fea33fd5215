#include "conduct/ViewConductor.h"

#include "analysis/Analyzer.h"
#include "common/Fault.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "selection/SelectDataFiles.h"

#include <QDebug>

namespace {

/// Between two images that a load shows [ms].
constexpr int arrivalPause = 50;

} // namespace

ViewConductor::ViewConductor(Measurement& data, MapBook& book, const SourceReader& reader,
                             ImageBox& box, SaveBox& saveBox, Analyzer& panel,
                             StackConductor& stacks, QObject* parent)
    : QObject(parent)
    , data_(data)
    , book_(book)
    , reader_(reader)
    , box_(box)
    , saveBox_(saveBox)
    , panel_(panel)
    , stacks_(stacks)
{
    book_.setScales(panel_.scales());
    connectBox();
    connectStacks(stacks);
    connectResults();
    connectRange();
    box_.area()->setEmptyText(emptyText());
    showRangeChoice();
    arrival_.setSingleShot(true);
    connect(&arrival_, &QTimer::timeout, this, &ViewConductor::showArrived);
}

void ViewConductor::connectBox()
{
    connect(&box_, &ImageBox::choiceChanged, this, &ViewConductor::dispImgSelected);
    connect(&box_, &ImageBox::prev, this, &ViewConductor::prev);
    connect(&box_, &ImageBox::next, this, &ViewConductor::next);
    connect(&box_, &ImageBox::sliderMoved, this, &ViewConductor::sliderMoved);
    connect(&box_, &ImageBox::imageNumberTyped, this, &ViewConductor::imageTyped);
}

void ViewConductor::connectStacks(StackConductor& stacks)
{
    connect(&stacks, &StackConductor::cleared, this,
            [this](ImageStack* stack) { stackCleared(*stack); });
    connect(&stacks, &StackConductor::imageCame, this,
            [this](ImageStack* stack, bool show) { imageCame(*stack, show); });
    connect(&stacks, &StackConductor::loaded, this, [this](ImageStack* stack) {
        arrival_.stop();
        i1Arrived_ = false;
        if (!stack->images.isEmpty())
            showLoaded(*stack);
        tellCaption();
    });
    connect(&stacks, &StackConductor::energiesApplied, this,
            [this](ImageStack* stack) { energiesApplied(*stack); });
    connect(&stacks, &StackConductor::moved, this,
            [this](ImageStack* stack) { imagesMoved(*stack); });
    for (ImageStack* stack : {&data_.i1, &data_.i0}) {
        connect(&reader_.rowOf(*stack), &SelectDataFiles::currentIndexChanged, this,
                [this, stack](int no) {
                    if (stack == &shownStack())
                        showData(no);
                });
    }
}

ImageStack& ViewConductor::shownStack() const
{
    return box_.choice() == ShowI0Id ? data_.i0 : data_.i1;
}

int ViewConductor::currentNumber(const ImageStack& stack) const
{
    return reader_.rowOf(stack).currentIndex();
}

const TiffData* ViewConductor::currentImage(const ImageStack& stack) const
{
    return stack.images.value(currentNumber(stack)).get();
}

bool ViewConductor::isMapChosen() const
{
    return box_.choice() == ShowShiftMapId || box_.choice() == ShowResAnalysisId;
}

Analyzed2DRes* ViewConductor::shownMap() const
{
    return map_ ? book_.find(*map_) : nullptr;
}

bool ViewConductor::isMapFilled() const
{
    const Analyzed2DRes* const map = shownMap();
    return map && map->imgValid;
}

QSize ViewConductor::shownSize() const
{
    if (const Analyzed2DRes* const map = shownMap())
        return {map->stepper.width, map->stepper.height};
    const TiffData* const image = currentImage(shownStack());
    return image ? QSize(image->width, image->height) : data_.size;
}

/// The images in front of the user give the size: those of I1, or of I0 while they are on show and
/// there are no others.
void ViewConductor::tellImageSize()
{
    QSize size;
    if (!data_.i1.images.isEmpty())
        size = data_.size;
    else if (box_.choice() == ShowI0Id && !data_.i0.images.isEmpty())
        size = QSize(data_.i0.images.first()->width, data_.i0.images.first()->height);
    box_.area()->setImageSize(size);
}

void ViewConductor::stackCleared(ImageStack& stack)
{
    (&stack == &data_.i1 ? i1Range_ : i0Range_) = StackRange();
    // Whatever is chosen, an image of the stack may still lie in the image area.
    if (imageStack_ == &stack)
        showImage(nullptr);
    if (&stack == &shownStack())
        takeNoImage();
    tellImageSize();
}

void ViewConductor::imageCame(ImageStack& stack, bool show)
{
    if (stack.images.size() == 1)
        tellImageSize();
    if (!show)
        return;
    i1Arrived_ = i1Arrived_ || &stack == &data_.i1;
    const bool tooSoon = sinceArrival_.isValid() && sinceArrival_.elapsed() < arrivalPause;
    if (unattended_ || !tooSoon)
        showArrived();
    else if (!arrival_.isActive())
        arrival_.start(int(arrivalPause - sinceArrival_.elapsed()));
}

/// The last of the images that came comes on show: more of them than an eye can follow would only
/// cost the load its time.
void ViewConductor::showArrived()
{
    arrival_.stop();
    sinceArrival_.start();
    if (i1Arrived_ && !data_.i1.images.isEmpty())
        showLoaded(data_.i1);
    i1Arrived_ = false;
    Q_EMIT loadShown();
}

/// Images of other energies stand in the place of those that were.
void ViewConductor::energiesApplied(ImageStack& stack)
{
    if (imageStack_ == &stack)
        image_ = stack.images.value(currentNumber(stack));
    if (image_ && imageStack_ == &stack)
        box_.showEnergy(image_->energy);
    tellCaption();
}

/// Images with other shifts stand in the place of those that were.
void ViewConductor::imagesMoved(ImageStack& stack)
{
    if (imageStack_ == &stack)
        showImage(stack.images.value(currentNumber(stack)));
    tellCaption();
}

/// The last image of a stack comes on show, or under a map of its size that is.
void ViewConductor::showLoaded(ImageStack& stack)
{
    SelectDataFiles& row = reader_.rowOf(stack);
    const int last = stack.images.size() - 1;
    const bool shown = &shownStack() == &stack;
    if (!shown || !keepsMap()) {
        row.select(last);
        if (shown)
            showData(last);
        return;
    }
    // The row would bring the image on show.
    const QSignalBlocker quiet(row);
    row.select(last);
    takeImage(last);
}

/// A map is on show that has the size of the images.
bool ViewConductor::keepsMap() const
{
    return isMapFilled() && shownSize() == data_.size;
}

QString ViewConductor::emptyText() const
{
    switch (box_.choice()) {
    case ShowShiftMapId:
        return tr("No energy shift map: make or load one in step 3");
    case ShowResAnalysisId:
        return tr("No result map: run an analysis in step 4");
    case ShowI0Id:
        return tr("No I0 images: load them in step 1");
    default:
        return tr("No I1 images: load them in step 1");
    }
}

void ViewConductor::showImage(const SharedImage& image)
{
    image_ = image;
    if (!image) {
        imageStack_ = nullptr;
        picture_.clear();
        box_.area()->setImage({});
        return;
    }
    const ValueRange range = rangeOf(image);
    picture_.show(image, currentColorScale(), range);
    box_.area()->setImage({picture_.picture(), image->width, image->height, range.min, range.max});
}

void ViewConductor::showData(int no)
{
    const TiffStack& images = shownStack().images;
    if (no < 0 || no >= images.size())
        return;
    leaveMap();
    takeImage(no);
}

/// Puts an image of the shown stack into the image area, on show or under the map that is.
void ViewConductor::takeImage(int no)
{
    const ImageStack& stack = shownStack();
    const SharedImage image = stack.images.at(no);
    box_.showSeek(no, stack.images.size() - 1, image->fileName);
    box_.showEnergy(image->energy);
    imageStack_ = &stack;
    showImage(image);
    tellCaption();
    Q_EMIT imageTaken(image->energy);
}

void ViewConductor::takeNoImage()
{
    box_.showNoImage();
    showImage(nullptr);
    tellCaption();
}

/// An image takes the place of a map: the choice follows.
void ViewConductor::leaveMap()
{
    map_.reset();
    box_.area()->setShowOverLayer(false);
    if (!isMapChosen())
        return;
    box_.setChoiceQuietly(ShowDataId);
    box_.area()->setEmptyText(emptyText());
    showRangeChoice();
}

void ViewConductor::imageTyped(int number)
{
    SelectDataFiles& row = reader_.rowOf(shownStack());
    row.select(number);
    box_.showImageNumber(qMax(0, row.currentIndex()));
}

void ViewConductor::prev()
{
    reader_.rowOf(shownStack()).prev();
}

void ViewConductor::next()
{
    reader_.rowOf(shownStack()).next();
}

void ViewConductor::sliderMoved(int idx)
{
    seekImage(idx);
}

void ViewConductor::seekImage(int imgNo)
{
    reader_.rowOf(shownStack()).select(imgNo);
    showData(imgNo);
}

void ViewConductor::dispImgSelected()
{
    qDebug() << "disp img selected";
    box_.area()->setEmptyText(emptyText());
    if (box_.choice() == ShowResAnalysisId)
        tellShowDeglitched();
    if (isMapChosen())
        showMap(box_.choice() == ShowShiftMapId ? shiftMapKey : chosenResult());
    else
        showStack();
    showRangeChoice();
    tellCaption();
    Q_EMIT shownChanged();
}

void ViewConductor::showStack()
{
    map_.reset();
    tellImageSize();
    box_.area()->setShowOverLayer(false);
    if (shownStack().images.isEmpty())
        takeNoImage();
    else
        showData(currentNumber(shownStack()));
}

void ViewConductor::selectedNewRef()
{
    dispImgSelected();
}

void ViewConductor::showMap(const std::optional<MapKey>& key)
{
    map_ = key;
    Analyzed2DRes* const map = shownMap();
    // The bar may have been moved since its picture was made; and the map of a walk that was
    // stopped has none.
    if (map && (map->imgValid || map->whyNotSaved(true).isEmpty()))
        map->genImg();
    box_.area()->setAnalyzedRes(map);
    box_.area()->setShowOverLayer(true);
}
