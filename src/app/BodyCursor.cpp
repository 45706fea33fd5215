#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "calibration/CalibCtrl.h"
#include "common/SafeInt.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImageOverlay.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "image/CrossSection.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

#include <QLocale>

namespace {

/// Half width of the sections across their own direction [pixels].
constexpr int sectionHalfWidth = 1;

/// The shown map's value to 6 digits; counts of an image whole.
QString valueText(const Analyzed2DRes& map, int x, int y)
{
    return QLocale(QLocale::English).toString(map.shownValueAt(x, y), 'g', 6);
}

QString valueText(const TiffData& image, int x, int y)
{
    return QLocale(QLocale::English).toString(image.pixel(x, y), 'g', 10);
}

} // namespace

const TiffData* Body::currentImage(const Stack& stack) const
{
    return stack.data->images.value(stack.row->currentIndex()).get();
}

/// Dark counts that are taken off one pixel of the stack's current image.
double Body::darkLevel(const Stack& stack, int x, int y) const
{
    double level =
        stack.data->darkAreaOn ? stack.data->darkAvg.value(stack.row->currentIndex(), 0.0) : 0.0;
    if (data_.dark)
        level += data_.dark->pixel(x, y) * reader_->darkFactor(*stack.data);
    return level;
}

void Body::showXafsSpectrum(double x, double y)
{
    curX_ = truncatedInt(x);
    curY_ = truncatedInt(y);
    showXafsSpectrum();
}

void Body::showXafsSpectrum()
{
    const TiffData* image = currentImage(shownStack());
    xafsView_->setMarkerEnergy(image ? image->energy : -1.0);
    const WalkSource source = reader_->source();
    const XafsSpectrum spectrum = source.spectrum(curX_, curY_, Stage::Curve);
    const bool outside = spectrum.isEmpty() && !data_.i1.images.isEmpty();
    const QString note = outside ? outcomeWords(spectrum.outcome) : analyzer_->gapNote(spectrum);
    const double dE = xafsView_->setSpectrum(spectrum, note);
    if (!walk_.running)
        analyzer_->analyzeAndShowSpectrum(spectrum, source.elm);
    imageBox_->showPosition(curX_, curY_);
    imageBox_->showShifts(source.shifts.at(curX_, curY_), dE);
    xafsView_->setRawSpectrum(source.spectrum(curX_, curY_, Stage::Counts));
}

/// The cursor to a pixel by its numbers, whatever the view shows of it.
void Body::moveCursor(int x, int y)
{
    imageBox_->area()->setMousePixel(x, y);
    curX_ = x;
    curY_ = y;
    refreshCursor();
}

/// While a button is held the cursor stays where it is as a whole.
void Body::onMouseMovedInDispA()
{
    if (imageBox_->area()->mouse.pressed)
        return;
    const QPointF at = imageBox_->area()->cursorPosition();
    showPixel(truncatedInt(at.x()), truncatedInt(at.y()));
}

/// Sections and values at a pixel of what is on show.
void Body::showPixel(int x, int y)
{
    showSections(x, y);
    const TiffData* image = currentImage(shownStack());
    if (isMapChosen())
        imageBox_->showValue(isMapFilled() ? valueText(*imageBox_->area()->shownMap(), x, y)
                                           : QString());
    else
        imageBox_->showValue(image ? valueText(*image, x, y) : QString());
    imageBox_->showDarkLevel(darkLevel(shownStack(), x, y));
}

void Body::showSections(int x, int y)
{
    if (isMapChosen())
        showMapSections(x, y);
    else
        showImageSections(x, y);
    imageBox_->setSectionCursor(x, y, shownSize().height());
    showSectionsInView();
}

void Body::showImageSections(int x, int y)
{
    const SpectrumSettings settings = spectrumBox_->settings();
    const bool useI1 = imageBox_->choice() == ShowDataId;
    QString axis = QStringLiteral("I0");
    if (useI1)
        axis = settings.fluorescence ? QStringLiteral("I1 / I0") : QStringLiteral("ln(I0 / I1)");
    // The width field goes to the half width in y of the upright section, on purpose.
    imageBox_->setSections(hCrossAt(y, sectionHalfWidth, settings.halfY, useI1).points,
                           vCrossAt(x, sectionHalfWidth, settings.halfX, useI1).points, axis);
}

/// The map's values themselves: they are those of blocks already.
void Body::showMapSections(int x, int y)
{
    QVector<QPointF> across;
    QVector<QPointF> upward;
    if (isMapFilled()) {
        const Analyzed2DRes& map = *imageBox_->area()->shownMap();
        const int width = map.stepper.width;
        const int height = map.stepper.height;
        for (int i = 0; i < width && y >= 0 && y < height; ++i)
            across.append({double(i), map.shownValueAt(i, y)});
        for (int i = 0; i < height && x >= 0 && x < width; ++i)
            upward.append({double(height - i), map.shownValueAt(x, i)});
    }
    const QString axis =
        imageBox_->choice() == ShowShiftMapId ? tr("Map: shift [eV]") : tr("Map value");
    imageBox_->setSections(across, upward, axis);
}

/// The map on show has a picture; a map may be chosen that there is not, or not yet.
bool Body::isMapFilled() const
{
    const Analyzed2DRes* const map = imageBox_->area()->shownMap();
    return map && map->imgValid;
}

void Body::showSectionsInView()
{
    imageBox_->showSectionsInView(shownSize().height());
}

/// Size [pixels] of what is on show; the upright section counts from its lower end.
QSize Body::shownSize() const
{
    if (const Analyzed2DRes* const map = imageBox_->area()->shownMap())
        return {map->stepper.width, map->stepper.height};
    const TiffData* const image = currentImage(shownStack());
    return image ? QSize(image->width, image->height) : data_.size;
}

Spectrum Body::hCrossAt(int y, int hw, int vw, bool useI1) const
{
    const TiffData* image = currentImage(useI1 ? i1_ : i0_);
    return image ? hCross(sectionSource(*image, useI1), image->width, y, hw, vw) : Spectrum();
}

Spectrum Body::vCrossAt(int x, int hw, int vw, bool useI1) const
{
    const TiffData* image = currentImage(useI1 ? i1_ : i0_);
    return image ? vCross(sectionSource(*image, useI1), image->height, x, hw, vw) : Spectrum();
}

/// Sections of I1 show absorption, whatever the use box of I0 says.
SectionSource Body::sectionSource(const TiffData& image, bool useI1) const
{
    return {image, useI1 ? &data_.i0.images : nullptr, spectrumBox_->settings().fluorescence};
}

/// Conditions of the form have changed: spectrum and sections at the cursor follow.
void Body::refreshCursor()
{
    passSuggestion();
    showXafsSpectrum();
    showPixel(curX_, curY_);
    imageBox_->area()->update();
}

void Body::draw(QPainter* p)
{
    const ImgDispA& area = *imageBox_->area();
    const bool selected = area.hasSelection() || area.isSelecting();
    imageBox_->showBoxSize(selected);
    if (!area.currentImage())
        return;
    const SpectrumSettings settings = spectrumBox_->settings();
    ImageOverlay overlay;
    overlay.x = curX_;
    overlay.y = curY_;
    overlay.bandWidth = settings.halfX;
    overlay.bandHeight = settings.halfY;
    overlay.imageWidth = shownSize().width();
    overlay.imageHeight = shownSize().height();
    if (selected)
        overlay.selection = area.selectedArea();
    if (i0_.data->darkAreaOn)
        overlay.i0DarkArea = i0_.data->darkArea;
    if (i1_.data->darkAreaOn)
        overlay.i1DarkArea = i1_.data->darkArea;
    paintOverlay(*p, area.coord, overlay);
    imageBox_->bar()->update();
}
