#pragma once

#include "image/ErrPoints.h"

#include <QRectF>
#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

/// One detector image: raw pixels in the file's own number type, energy, exposure, and an integer
/// shift for registration.
///
/// Image coordinates: the pixel at (x, y) is column x - shiftX of row y - shiftY; a position
/// outside the pixels reads as 0.0. All calculations read pixels through the block operations, so
/// that shift and range tests stand here alone.
///
/// Made and read in a loader thread, and handed over whole. From then on it is const and shared:
/// any thread may read it.
class TiffData
{
public:
    enum PixelType
    {
        TiffWords = 0, ///< unsigned 16 bit, from a TIFF
        ImgWords = 1,  ///< unsigned 16 bit, from an IMG file
        ImgLongs = 2,  ///< unsigned 32 bit
        Floats = 3,    ///< 32-bit float, from a BRNX file
        NoPixels = 4
    };

    QString fileName;
    int bytesPerPixel = 2; ///< from the IMG header
    int width = 0;         ///< [pixels]
    int height = 0;
    int x0 = 0; ///< position of the image on the detector
    int y0 = 0;
    ErrPoints errPs;
    double minVal;       ///< smallest and largest pixel; neither nan nor corrected pixels count
    double maxVal;       ///< starts at the smallest positive double, which an all-zero image keeps
    double energy = 0.0; ///< [eV]
    double exposureMs = 100.0; ///< [ms]
    int jobNumber = 0;         ///< of the load job that brought the image; 0 for none
    int shiftX = 0;            ///< registration shift [pixels]
    int shiftY = 0;
    int pixelType = NoPixels;

    TiffData();

    /// Reads a TIFF, IMG or BRNX file, told by its first bytes; bad pixels of `list` are corrected
    /// when it is active. False, with one log line, when the image is not complete; the object is
    /// then of no use. `stop`, when given, ends the reading between two rows.
    bool readFile(const QString& name, const ErrPoints& list,
                  const std::atomic<bool>* stop = nullptr);

    /// Takes memory for width x height pixels of a type; the pixels are not set. False when there
    /// is none.
    bool allocate(int w, int h, PixelType type);

    /// Frees the pixels.
    void clearRows();

    /// Row of raw pixels; T must be the type that pixelType names.
    template<typename T>
    const T* row(int y) const
    {
        return reinterpret_cast<const T*>(pixels_.get()) + static_cast<size_t>(y) * size_t(width);
    }
    template<typename T>
    T* row(int y)
    {
        return reinterpret_cast<T*>(pixels_.get()) + static_cast<size_t>(y) * size_t(width);
    }

    /// Value at an image position, 0.0 outside.
    double pixel(int x, int y) const;

    /// Sum over columns x-|hw| .. x+|hw| and rows y-|vw| .. y+|vw|; pixels outside count as 0.
    double blockSum(int x, int y, int hw, int vw) const;

    /// Block sums at `count` positions x, x+step, ... of image row y, into `sums`; the same values
    /// as blockSum.
    void blockSums(int x, int step, int count, int y, int hw, int vw, double* sums) const;

    /// Lets the processor fetch the pixels of such blocks ahead.
    void prefetchBlocks(int x, int step, int count, int y, int hw, int vw) const;

    /// Mean over columns x .. x+w and rows y .. y+h of rect, its numbers cut to integers; 0 for a
    /// negative width or height.
    double areaMean(const QRectF& rect) const;

    /// Mean of the up to eight neighbours that lie inside and, with an active list, are not bad;
    /// 0.0 when none is left.
    double neighbourMean(int x, int y) const;

    /// Replaces each bad pixel that lies in the image by the mean of its good neighbours, and takes
    /// minVal and maxVal from the other pixels.
    void correctErrPoints();

    /// The same image at another energy [eV]: a copy that shares the pixels.
    std::shared_ptr<TiffData> withEnergy(double eV) const;
    /// The same image with another shift [pixels].
    std::shared_ptr<TiffData> withShift(const QPoint& shift) const;

    /// Widens minVal and maxVal by row y of the pixels.
    void noteExtremes(int y) { noteExtremes(y, 0, width); }

private:
    /// Shares the pixels, which nobody writes any more then.
    TiffData(const TiffData&) = default;
    TiffData& operator=(const TiffData&) = delete;

    void forgetExtremes();
    void noteExtremes(int y, int begin, int end);
    void noteExtremesWithout(QVector<QPoint> pixels);

    std::shared_ptr<uchar[]> pixels_;
};

/// An image that was handed over.
using SharedImage = std::shared_ptr<const TiffData>;
using TiffStack = QVector<SharedImage>;
