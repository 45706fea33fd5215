#pragma once

#include "spectrum/XafsSpectrum.h"

#include <QObject>

class Analyzer;
class CalibCtrl;
class CommandBook;
class DarkConductor;
class ImageBox;
class QPainter;
class SourceReader;
class SpectrumBox;
class StackConductor;
class TiffData;
class ViewConductor;
class XafsView;
struct Measurement;
struct SectionSource;

/// Shows what belongs to the pixel of the cursor: the spectrum of its block in the windows, both
/// sections, the values and shifts. It follows whatever changes a spectrum; nobody asks it to.
class CursorConductor : public QObject
{
    Q_OBJECT
public:
    /// The forms and data that it reads and shows things in. All of it outlives it.
    struct Parts
    {
        const Measurement& data;
        const SourceReader& reader;
        const SpectrumBox& spectrumBox;
        ImageBox& imageBox;
        Analyzer& analyzer;
        CalibCtrl& calibCtrl;
        XafsView& xafsView; ///< the window of the spectrum at the cursor
    };
    CursorConductor(const Parts& parts, StackConductor& stacks, DarkConductor& dark,
                    ViewConductor& view, QObject* parent = nullptr);

    void bindCommands(CommandBook& book);

    /// The cursor to a pixel by its numbers, whatever the view shows of it.
    void moveCursor(int x, int y);
    /// The pixel of the cursor, as legends name its spectrum: "(96, 104)".
    QString spectrumName() const;
    /// Shows the standard beside the spectrum.
    void showStandard(const XafsSpectrum& standard);

    /// Sections of the current image of I1 (useI1, as absorption with the I0 stack) or of I0 (plain
    /// sums), with blocks of half widths hw, vw: along row y, points (x, value), and along column
    /// x, points (height - y, value). Empty without an image.
    Spectrum hCrossAt(int y, int hw, int vw, bool useI1) const;
    Spectrum vCrossAt(int x, int hw, int vw, bool useI1) const;

public Q_SLOTS:
    void showXafsSpectrum(double x, double y);
    void showXafsSpectrum();
    void draw(QPainter* p);
    void onMouseMovedInDispA();
    /// Something that spectra are formed or normalised by is another: all at the cursor follows.
    void follow();

Q_SIGNALS:
    void spectrumFormed(const XafsSpectrum& spectrum, const SuggestElm& elm);

private:
    void connectParts();
    void connectConductors(StackConductor& stacks, DarkConductor& dark);
    void setStopRedraw(bool on);
    void passSuggestion();
    void showPixel(int x, int y);
    void showPixelAtCursor();
    QString valueAt(int x, int y) const;
    void showSections(int x, int y);
    void showImageSections(int x, int y);
    void showMapSections(int x, int y);
    void stepCursor(int dx, int dy);
    void showSectionsInView();
    SectionSource sectionSource(const TiffData& image, bool useI1) const;
    const TiffData* currentImage(bool ofI1) const;

    const Parts parts_;
    const DarkConductor& dark_;
    const ViewConductor& view_;
    int curX_ = 0; ///< image pixel of the last mouse position
    int curY_ = 0;
};
