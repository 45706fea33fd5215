#pragma once

#include "walk/WalkSource.h"

class CalibCtrl;
class DataBox;
class ImageBox;
class SelectDataFiles;
class SpectrumBox;
struct ImageStack;
struct Measurement;
struct ShiftMap;

/// Reads from data and forms, as they stand when it is asked, what spectra are formed by. Whoever
/// works on that for longer keeps what source() gave, and no later change reaches it. It has no
/// state of its own, and refers to what it was made with.
class SourceReader
{
public:
    /// What it reads; all of it outlives the reader.
    struct Parts
    {
        const Measurement& data;
        const ShiftMap& shiftMap; ///< the one in force
        const DataBox& dataBox;
        const SpectrumBox& spectrumBox;
        const ImageBox& imageBox;
        const CalibCtrl& calibCtrl;
    };
    explicit SourceReader(const Parts& parts);

    /// All that spectra are formed and normalised by.
    WalkSource source() const;
    /// The same frozen for a walk: without images that no spectrum is formed of.
    SharedSource frozen() const;
    /// The same for a calibration, which finds the shifts: without any.
    SharedSource frozenForCalibration() const;
    /// The same for what reads the counts of I1 alone: images and blocks, and nothing else that a
    /// spectrum is formed by.
    SharedSource frozenForCounts() const;
    /// Whether spectra of the source are formed of images of this stack.
    bool holds(const WalkSource& source, const ImageStack& stack) const;

    /// Fills ac with the walk over the selected area, or over the whole image; why there is nothing
    /// to walk over, or an empty text.
    QString areaFault(AnalyzeCond& ac) const;
    /// The user has selected an area of the image.
    bool isAreaSelected() const;
    bool askAnalyzeCond(AnalyzeCond& ac) const { return areaFault(ac).isEmpty(); }

    BlockConditions blockConditions(int halfX, int halfY) const;

    /// Spectrum of (energy [eV], mu) of the block round (x, y); empty outside the image.
    Spectrum rawXafsAt(int x, int y, int halfX, int halfY) const;
    /// The same for the box (x1, y1)-(x2, y2), through its middle and half its sides.
    Spectrum rawXafsOfBox(int x1, int y1, int x2, int y2) const;
    /// (energy, sum of I1 over the block), without dark or I0.
    Spectrum rawI1At(int x, int y, int halfX, int halfY) const;

    /// Energy shift [eV] of an image pixel by the map in force; 0 outside it.
    double energyShiftAt(int x, int y) const;

    SuggestElm suggestElm() const;

    /// The row through which a stack's files are chosen.
    SelectDataFiles& rowOf(const ImageStack& stack) const;
    /// What the counts of the dark image are multiplied by to be those of the stack's exposure.
    /// From the texts of the forms, so that the user can overrule the files.
    double darkFactor(const ImageStack& stack) const;

private:
    const Parts parts_;
};
