#include "conduct/CursorConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/elements/ElementsSection.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "calibration/CalibCtrl.h"
#include "common/SafeInt.h"
#include "conduct/DarkConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImageOverlay.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "image/CrossSection.h"
#include "image/Measurement.h"
#include "maps/Analyzed2DRes.h"
#include "maps/MapWords.h"
#include "maps/OutcomeColours.h"
#include "selection/SpectrumBox.h"

#include <QLocale>

namespace {

/// Half width of the sections across their own direction [pixels].
constexpr int sectionHalfWidth = 1;

/// Digits of a map's value, and of counts, which are shown whole.
constexpr int mapDigits = 6;
constexpr int countDigits = 10;

QString valueText(double value, int digits)
{
    return QLocale(QLocale::English).toString(value, 'g', digits);
}

/// An amount, or the number and the words of an outcome.
QString mapValueText(const Analyzed2DRes& map, int x, int y)
{
    const double value = map.shownValueAt(x, y);
    const QString label = map.classColours().empty() ? QString() : outcomeLabel(value);
    return label.isEmpty() ? valueText(value, mapDigits) : label;
}

} // namespace

CursorConductor::CursorConductor(const Parts& parts, StackConductor& stacks, DarkConductor& dark,
                                 ViewConductor& view, QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , dark_(dark)
    , view_(view)
{
    connectParts();
    connectConductors(stacks, dark);
    connect(&view, &ViewConductor::shownChanged, this, &CursorConductor::follow);
    connect(&view, &ViewConductor::valuesChanged, this, &CursorConductor::showPixelAtCursor);
    connect(&view, &ViewConductor::loadShown, this,
            qOverload<>(&CursorConductor::showXafsSpectrum));
    connect(&view, &ViewConductor::imageTaken, this, [this](double energy) {
        parts_.xafsView.setMarkerEnergy(energy);
        showPixelAtCursor();
    });
    passSuggestion();
}

void CursorConductor::connectParts()
{
    const ImgDispA* const area = parts_.imageBox.area();
    connect(area, &ImgDispA::viewChanged, this, &CursorConductor::showSectionsInView);
    connect(area, &ImgDispA::mouseMoved, this,
            qOverload<double, double>(&CursorConductor::showXafsSpectrum));
    connect(area, &ImgDispA::cursorMoveAsked, this, &CursorConductor::stepCursor);
    connect(area, &DispA::drawImage2, this, &CursorConductor::draw);
    connect(area, &DispA::mouseMoved0, this, &CursorConductor::onMouseMovedInDispA);
    const ElementsSection& elements = parts_.analyzer.elements();
    connect(&elements, &AnalysisSection::changed, &parts_.xafsView,
            [this, &elements] { parts_.xafsView.setEdgeMarks(elements.edgeMarks()); });
    connect(&parts_.spectrumBox, &SpectrumBox::holdGapChanged, &parts_.analyzer.lcf(),
            &LcfSection::setHoldGap);
    connect(&parts_.spectrumBox, &SpectrumBox::changed, this, &CursorConductor::follow);
    connect(&parts_.calibCtrl, &CalibCtrl::targetBackgroundChanged, this, &CursorConductor::follow);
}

void CursorConductor::connectConductors(StackConductor& stacks, DarkConductor& dark)
{
    connect(&dark, &DarkConductor::conditionsChanged, this, &CursorConductor::follow);
    connect(&stacks, &StackConductor::cleared, this, &CursorConductor::follow);
    connect(&stacks, &StackConductor::energiesApplied, this, &CursorConductor::follow);
    connect(&stacks, &StackConductor::moved, this, &CursorConductor::follow);
    connect(&stacks, &StackConductor::quietLoadStarted, this, [this] { setStopRedraw(true); });
    connect(&stacks, &StackConductor::loaded, this, [this, &stacks](ImageStack* stack) {
        curX_ = 0;
        curY_ = 0;
        follow();
        if (stack == &parts_.data.i1 && !stacks.isLoading(*stack))
            setStopRedraw(false);
    });
}

void CursorConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    XafsView& view = parts_.xafsView;
    book.action(ExCmdMovePosition,
                [this](const Cmd& c) { moveCursor(intArg(c, 0), intArg(c, 1)); });
    book.onOff(ExCmdXafsViewNormalize, view.box(XafsView::Normalize));
    book.onOff(ExCmdXafsViewEnergyCorrection, view.box(XafsView::CorrectEnergy));
    book.onOff(ExCmdXafsViewRaw, view.box(XafsView::Raw));
    book.onOff(ExCmdXafsViewFft, view.box(XafsView::Frequencies));
    book.action(ExCmdSaveSpectra, [&view](const Cmd& c) { view.saveData(c.arg(0)); });
    History& history = book.history();
    connect(&view, &XafsView::saveAsked, &history,
            [&history](const QString& file) { history.add(ExCmdSaveSpectra, {file}); });
    history.followCursor([this] {
        return QStringList(
            batchLine(ExCmdMovePosition, {QString::number(curX_), QString::number(curY_)}));
    });
}

void CursorConductor::setStopRedraw(bool on)
{
    parts_.xafsView.setStopRedraw(on);
    parts_.analyzer.view()->setStopRedraw(on);
}

/// References and standard are normalised anew when the suggestion is another.
void CursorConductor::passSuggestion()
{
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    parts_.analyzer.setHint({settings.elm, settings.suggestForRefs});
    parts_.calibCtrl.setSuggestion(settings.elm);
}

void CursorConductor::follow()
{
    passSuggestion();
    showXafsSpectrum();
    showPixelAtCursor();
    parts_.imageBox.area()->update();
}

void CursorConductor::showXafsSpectrum(double x, double y)
{
    curX_ = truncatedInt(x);
    curY_ = truncatedInt(y);
    showXafsSpectrum();
}

void CursorConductor::showXafsSpectrum()
{
    XafsView& view = parts_.xafsView;
    const TiffData* image = view_.currentImage(view_.shownStack());
    view.setMarkerEnergy(image ? image->energy : -1.0);
    const WalkSource source = parts_.reader.source();
    const XafsSpectrum spectrum = source.spectrum(curX_, curY_, Stage::Shown);
    const bool outside = spectrum.isEmpty() && !source.i1.isEmpty();
    const QString note =
        outside ? outcomeWords(spectrum.outcome) : parts_.analyzer.lcf().gapNote(spectrum);
    view.setSpectrumName(spectrumName());
    const double dE = view.setSpectrum(spectrum, note);
    Q_EMIT spectrumFormed(spectrum, source.elm);
    parts_.imageBox.showPosition(curX_, curY_);
    parts_.imageBox.showShifts(source.shifts.at(curX_, curY_), dE);
    view.setRawSpectrum(source.spectrum(curX_, curY_, Stage::Counts));
}

QString CursorConductor::spectrumName() const
{
    return QStringLiteral("(%1, %2)").arg(curX_).arg(curY_);
}

void CursorConductor::showStandard(const XafsSpectrum& standard)
{
    parts_.xafsView.setStdSpectrumName(QFileInfo(parts_.calibCtrl.stdFileName()).fileName());
    parts_.xafsView.setStdSpectrum(standard);
    follow();
}

void CursorConductor::moveCursor(int x, int y)
{
    parts_.imageBox.area()->setMousePixel(x, y);
    curX_ = x;
    curY_ = y;
    follow();
}

/// By the keys, within what is on show.
void CursorConductor::stepCursor(int dx, int dy)
{
    const QSize size = view_.shownSize();
    if (!size.isEmpty())
        moveCursor(qBound(0, curX_ + dx, size.width() - 1),
                   qBound(0, curY_ + dy, size.height() - 1));
}

/// While a button is held the cursor stays where it is as a whole.
void CursorConductor::onMouseMovedInDispA()
{
    const ImgDispA& area = *parts_.imageBox.area();
    if (area.mouse.pressed)
        return;
    const QPointF at = area.cursorPosition();
    showPixel(truncatedInt(at.x()), truncatedInt(at.y()));
}

void CursorConductor::showPixelAtCursor()
{
    showPixel(curX_, curY_);
}

/// Sections and values at a pixel of what is on show.
void CursorConductor::showPixel(int x, int y)
{
    const ImageStack& stack = view_.shownStack();
    showSections(x, y);
    parts_.imageBox.showValue(valueAt(x, y));
    parts_.imageBox.showDarkLevel(dark_.darkLevel(stack, view_.currentNumber(stack), x, y));
}

QString CursorConductor::valueAt(int x, int y) const
{
    if (view_.isMapChosen())
        return view_.isMapFilled() ? mapValueText(*view_.shownMap(), x, y) : QString();
    const TiffData* image = view_.currentImage(view_.shownStack());
    return image ? valueText(image->pixel(x, y), countDigits) : QString();
}

void CursorConductor::showSections(int x, int y)
{
    if (view_.isMapChosen())
        showMapSections(x, y);
    else
        showImageSections(x, y);
    parts_.imageBox.setSectionCursor(x, y, view_.shownSize().height());
    showSectionsInView();
}

void CursorConductor::showImageSections(int x, int y)
{
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    const bool useI1 = &view_.shownStack() == &parts_.data.i1;
    QString axis = tr("I0 counts");
    if (useI1)
        axis = settings.fluorescence ? QStringLiteral("I1 / I0") : tr("mu t");
    // The width field goes to the half width in y of the upright section, on purpose.
    parts_.imageBox.setSections(hCrossAt(y, sectionHalfWidth, settings.halfY, useI1).points,
                                vCrossAt(x, sectionHalfWidth, settings.halfX, useI1).points, axis);
}

/// The map's values themselves: they are those of blocks already.
void CursorConductor::showMapSections(int x, int y)
{
    QVector<QPointF> across;
    QVector<QPointF> upward;
    if (view_.isMapFilled()) {
        const Analyzed2DRes& map = *view_.shownMap();
        const int width = map.stepper.width;
        const int height = map.stepper.height;
        for (int i = 0; i < width && y >= 0 && y < height; ++i)
            across.append({double(i), map.shownValueAt(i, y)});
        for (int i = 0; i < height && x >= 0 && x < width; ++i)
            upward.append({double(height - i), map.shownValueAt(x, i)});
    }
    const std::optional<MapKey> key = view_.shownKey();
    parts_.imageBox.setSections(across, upward, key ? mapAxis(key->kind) : QString());
}

/// The upright section counts from the lower end of what is on show.
void CursorConductor::showSectionsInView()
{
    parts_.imageBox.showSectionsInView(view_.shownSize().height());
}

const TiffData* CursorConductor::currentImage(bool ofI1) const
{
    return view_.currentImage(ofI1 ? parts_.data.i1 : parts_.data.i0);
}

Spectrum CursorConductor::hCrossAt(int y, int hw, int vw, bool useI1) const
{
    const TiffData* image = currentImage(useI1);
    return image ? hCross(sectionSource(*image, useI1), image->width, y, hw, vw) : Spectrum();
}

Spectrum CursorConductor::vCrossAt(int x, int hw, int vw, bool useI1) const
{
    const TiffData* image = currentImage(useI1);
    return image ? vCross(sectionSource(*image, useI1), image->height, x, hw, vw) : Spectrum();
}

/// Sections of I1 show absorption, whatever the use box of I0 says.
SectionSource CursorConductor::sectionSource(const TiffData& image, bool useI1) const
{
    return {image, useI1 ? &parts_.data.i0.images : nullptr,
            parts_.spectrumBox.settings().fluorescence};
}

void CursorConductor::draw(QPainter* p)
{
    const ImgDispA& area = *parts_.imageBox.area();
    const bool selected = area.hasSelection() || area.isSelecting();
    parts_.imageBox.showBoxSize(selected);
    if (!area.currentImage())
        return;
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    ImageOverlay overlay;
    overlay.x = curX_;
    overlay.y = curY_;
    overlay.bandWidth = settings.halfX;
    overlay.bandHeight = settings.halfY;
    overlay.imageWidth = view_.shownSize().width();
    overlay.imageHeight = view_.shownSize().height();
    if (selected)
        overlay.selection = area.selectedArea();
    if (parts_.data.i0.darkAreaOn)
        overlay.i0DarkArea = parts_.data.i0.darkArea;
    if (parts_.data.i1.darkAreaOn)
        overlay.i1DarkArea = parts_.data.i1.darkArea;
    paintOverlay(*p, area.coord, overlay);
    parts_.imageBox.bar()->update();
}
