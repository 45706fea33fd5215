#pragma once

#include "image/DisplayRange.h"
#include "maps/AnalyzeCond.h"
#include "maps/FaintPositions.h"
#include "maps/LazyField.h"

#include <QFileInfo>
#include <QImage>
#include <QObject>

#include <memory>
#include <vector>

class QIODevice;

/// How the picture of a map is made. As it stands at first: over the range of the map's values,
/// every value in its colour.
struct MapDisplay
{
    RangeChoice range;
    bool marksNoEdge = false; ///< positions without an edge have a colour of their own
};

/// One two-dimensional field of doubles of the image's size with its picture, its scale and a
/// processed copy; every map of the program is one. Touched on the GUI thread alone.
class Analyzed2DRes : public QObject
{
    Q_OBJECT
public:
    explicit Analyzed2DRes(const QString& mapName, QObject* parent = nullptr);
    ~Analyzed2DRes() override;

    /// Range of values that the picture spans.
    using Scale = ValueRange;

    int no = -1; ///< slot number in its analysis
    QString name;
    AnalyzeCond stepper;   ///< the walk that filled the map
    bool imgValid = false; ///< genImg() has made a picture since the last clear()
    double min; ///< extremes of the finite values given to setData(), and where they were met
    double max;
    int minX = 0;
    int minY = 0;
    int maxX = 0;
    int maxY = 0;
    double fixedMin; ///< scale in force while fixedScale is on
    double fixedMax;
    bool fixedScale = false;
    int imgFormat;          ///< ColorScale format of the picture, as it was last painted
    int savedSamples = 0;   ///< values made by the last tiffDataForSave()
    int wrappedSamples = 0; ///< how many of them lay outside the scale and wrapped
    double procMin = 0.0;   ///< extremes of the processed field's finite values
    double procMax = 1.0;
    double deglitchFactor = 2.0;
    double deglitchRange = 0.9;
    double deglitch2Limit = 40.0;

    /// Starts a new filling: takes the walk and gives the field width*height zeros. The processed
    /// field and its selection are gone.
    void prepare(const AnalyzeCond& ac);

    /// Takes settings, fields and picture of `other`; the fields only when it has a picture. A null
    /// source changes nothing.
    void copyFrom(const Analyzed2DRes* other);

    /// Field as analysed, row by row; null without buffers.
    const double* data() const { return data_.data(); }
    /// Processed field; null until a filter has made it of data().
    const double* procData() const { return procData_.data(); }
    /// Value at a pixel, 0.0 outside the map or without buffers.
    double valueAt(int x, int y) const;
    /// The same of the field that the picture is made of.
    double shownValueAt(int x, int y) const;
    bool contains(int x, int y) const;
    /// The pixel belongs to a position that failed.
    bool isLeftOut(int x, int y) const;
    /// The pixel belongs to a position where the walk found no edge, or that failed: its value is
    /// no result.
    bool isWithoutEdge(int x, int y) const;
    /// How many positions of the walk are.
    int positionsWithoutEdge() const;
    /// Middle and spread of the shown values at the positions with an edge, of a sample where there
    /// are many; none without values.
    std::optional<Middle> middle() const;

    /// Whether picture and saved 16-bit data come from the processed field; never without one.
    bool useProc() const { return useProc_; }

    /// How the picture is made; it is made anew by that when somebody next reads it.
    void setDisplay(const MapDisplay& display);
    const MapDisplay& display() const { return display_; }

    /// The values are numbers of classes from 0 on, each with a colour of its own whatever scale
    /// and bar say; without colours they are amounts. A value that is no class has the colour of
    /// positions without an edge.
    void setClassColours(const std::vector<QRgb>& colours);
    const std::vector<QRgb>& classColours() const { return classColours_; }

    /// Leaves these positions, of the size of the map, out of automatic ranges until the map is
    /// filled anew; null for none.
    void setFaint(const PositionMask& faint);

    /// The scale of the picture: the fixed one when on, else the range that was given, else the
    /// range by its rule. An automatic one is that of the values at the last genImg(). It leaves
    /// out positions without an edge, and by percentiles all beyond the median +- 6 spreads.
    Scale scale() const;

    /// Why there is nothing to save of this map, for a log line; empty when there is. A map that
    /// was prepared and never given a value holds nothing.
    QString whyNotSaved(bool asAnalyzed) const;

    /// The scale of the saved 16 bits: the one given, with fixedScaleGiven, or that of the values.
    Scale scaleForSave(bool fixedScaleGiven, double scaleMin, double scaleMax) const;

    /// The values that the picture shows as they are, one a position (asAnalyzed) or one a pixel;
    /// what float can not hold is infinite. Empty when there is nothing to save.
    std::vector<float> floatsForSave(bool asAnalyzed) const;

    /// Writes the map as text: the positions of its walk, as "x y value" lines or one line a row.
    /// Values come from data() always; asAnalyzed has no effect on the text form. False, with one
    /// fault line, when the file can not be written.
    bool saveAsText(const QFileInfo& fi, bool asAnalyzed, bool useComma, bool asXYZ) const;

public Q_SLOTS:
    void clear();
    void setNo(int newNo);
    /// Stores t over the block round (ix, iy) of half widths |xw|, |yw|, clipped to the map, and
    /// updates the extremes; a value that is not finite is stored, but is no extreme.
    void setData(int ix, int iy, int xw, int yw, double t);
    /// Stores 0.0 over the same block and leaves the extremes as they are: the position failed, and
    /// its 0 is no result that a scale should show or a filter take in.
    void leaveOut(int ix, int iy, int xw, int yw);
    /// Marks the same block as one without an edge; values and extremes stay as they are. Storing
    /// another value takes the mark away.
    void markWithoutEdge(int ix, int iy, int xw, int yw);
    /// Has the picture made anew, through the colour bar as it is when somebody next reads it: most
    /// maps of a walk are never looked at.
    void genImg();
    /// The picture, owned by the map; may be null.
    QImage* img();
    /// Values scaled to 16 bits: one a position (asAnalyzed), cut to the ends of the scale, or one
    /// a pixel, wrapping outside the scale unless `clamp` cuts them too. Null when there is nothing
    /// to save. The caller frees the array with delete[]; savedSamples tells its length.
    quint16* tiffDataForSave(bool fixedScaleGiven, double scaleMin, double scaleMax,
                             bool asAnalyzed, bool clamp = false);
    /// The filters make the processed field of data(): values that stand out become the mean of
    /// their finite neighbours. Values that are not finite stand out, count in no mean, and never
    /// take a finite one's place. The first is for single positions, the second for a field near
    /// a common level, like that of energy shifts.
    void deglitch();
    void setDeglitchConds(double f, double r);
    /// Makes the picture of the processed field or of data(). A processed field that no filter has
    /// made is not selected, with a log line.
    void selectProcImg(bool f);
    void deglitch2(double limit);
    /// Takes the processed field for data(); nothing without one.
    void copyProc2Data();
    void setFixedScale(bool f);
    void setScale(double newMin, double newMax);

Q_SIGNALS:
    /// The scale of a map was set: whoever shows the map passes it to the colour bar.
    void scaleChanged(double newMin, double newMax);

private:
    Q_DISABLE_COPY(Analyzed2DRes)

    /// What is known of a pixel, in marks_.
    enum Mark : uchar
    {
        LeftOut = 1,
        WithoutEdge = 2
    };

    /// More positions than any image has pixels: the area lies far outside the image.
    static constexpr qint64 maxPositions = qint64(1) << 28;

    bool canFilter() const;
    void startProcessed();
    void freeBuffers();
    void noteWritten(int y, int halfRows);
    void dropPicture();
    void resetRanges();
    void forgetProcessed();
    const LazyField& shownField() const { return useProc_ ? procData_ : data_; }
    double sample(const LazyField& field, int x, int y) const;
    Scale fieldScale() const;
    void wrapImage();
    void paint();
    void copySettings(const Analyzed2DRes& other);
    void paintField(const double* v, int stride);
    void paintMarks(int stride);
    void paintClasses(int stride);
    void mark(int ix, int iy, int xw, int yw, int marks);
    uchar marksAt(int x, int y) const;
    std::vector<double> valuesWithEdge() const;
    Scale automaticScale() const;
    LazyField shownPositions() const;
    template<typename PartText>
    void writeParts(QIODevice& file, PartText textOf) const;
    QByteArray pointsText(AnalyzeCond walk, int count, char separator) const;
    QByteArray rowsText(AnalyzeCond walk, int count, char separator) const;
    double measuredAt(int x, int y) const;
    bool keepLeftOut(const AnalyzeCond& at);
    double bendBetween(const AnalyzeCond& at, int dx, int dy) const;
    double neighbourRoughness(const AnalyzeCond& at) const;
    double stepNeighbourMean(const AnalyzeCond& at) const;
    double commonLevel(double limit) const;
    double levelNeighbourMean(const AnalyzeCond& at, double mean, double limit) const;
    void storeProcessed(const AnalyzeCond& at, double v);
    void replaceProcessed(const AnalyzeCond& at, double v);

    LazyField data_;
    std::size_t writtenFrom_ = 0; ///< all of data_ before it and from writtenTo_ on is 0.0
    std::size_t writtenTo_ = 0;
    std::vector<uchar> marks_; ///< Mark by pixel; empty without any
    LazyField procData_;       ///< empty until a filter has run
    bool useProc_ = false;     ///< only with a processed field
    bool isStale_ = false;     ///< genImg() asked for a picture that nobody has read yet
    bool hasValues_ = false;   ///< data_ was given a value since it was prepared
    MapDisplay display_;
    std::vector<QRgb> classColours_;
    PositionMask faint_;
    mutable std::optional<int> withoutEdge_ = 0; ///< positions, once they were counted
    mutable std::optional<Scale> automatic_;     ///< as it was last asked for since genImg()
    std::vector<uchar> imageBytes_;
    std::unique_ptr<QImage> image_;
};
