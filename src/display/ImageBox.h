#pragma once

#include "image/DisplayRange.h"

#include <QColor>
#include <QPointF>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

class ColorBar;
class ImgDispA;
class QButtonGroup;
class Ui_ImageBox;

/// What the image area shows, by the numbers that the batch language knows.
enum ImageChoice
{
    ShowDataId = 0,
    ShowI0Id = 1,
    ShowShiftMapId = 2,
    ShowResAnalysisId = 3
};

/// An entry of the legend of a map whose values are classes.
struct LegendEntry
{
    QRgb colour;
    QString text;
};

/// The image area with all that stands round it: the choice of what it shows, both sections, the
/// colour bar, the controls that browse a stack, and the numbers at the cursor. It shows what it is
/// given, and tells what the user asks for.
class ImageBox : public QWidget
{
    Q_OBJECT
public:
    explicit ImageBox(QWidget* parent = nullptr);
    ~ImageBox() override;

    ImgDispA* area() const;
    ColorBar* bar() const;

    ImageChoice choice() const;
    /// Makes the choice as by hand; false, with nothing done, when none has this number.
    bool setChoice(int id);
    /// Makes the choice and tells nobody.
    void setChoiceQuietly(ImageChoice id);

    /// Shows which image of a stack is on show, from 0, the last one's number, and the image's
    /// file. Tells nobody.
    void showSeek(int number, int maximum, const QString& fileName);
    /// The same without an image.
    void showNoImage();
    /// Shows the number alone.
    void showImageNumber(int number);

    /// Energy [eV] of the image that is browsed to.
    void showEnergy(double eV);
    /// What is on show, its number, energy, unit, or what a map says of itself.
    void showCaption(const QString& text);
    /// Names of the maps that can be shown, and which one is; without names there is no list.
    void showMaps(const QStringList& names, int current);

    /// Shows how the range of what is on show is chosen; `locked`, when not empty, tells why no
    /// other rule can be.
    void showRangeChoice(const RangeChoice& choice, const QString& locked);

    /// The map on show has classes for values: its legend stands in the place of the range, and
    /// `colours`, that of class 0 first, in the bar. Without colours both are the range's again.
    void showClasses(const std::vector<QRgb>& colours, const QVector<LegendEntry>& legend);

    int ramp() const; ///< RampId
    bool squarePixels() const;
    bool sectionsVisible() const;
    /// Fields that can't be read as a number, by their names.
    QStringList unreadableFields() const;

    void showPosition(int x, int y); ///< pixel of the cursor
    /// Shifts at the cursor [eV], of the map and from the standard.
    void showShifts(double ofMap, double fromStandard);
    void showValue(const QString& text);
    void showDarkLevel(double counts);
    /// Shows the corners of the area's selection, or none.
    void showBoxSize(bool selected);

    /// Points (x, value) of the section along the row and (distance from the lower end, value) of
    /// the one along the column, and what the values are.
    void setSections(const QVector<QPointF>& across, const QVector<QPointF>& upward,
                     const QString& axis);
    /// Marks the pixel of the cursor in both sections of an image of this height [pixels].
    void setSectionCursor(int x, int y, int height);
    /// The sections lie beside the part of the image that is in view, and show that part.
    void showSectionsInView(int height);

public Q_SLOTS:
    /// Chooses a colour map, RampId, as by hand; another number does nothing.
    void setRamp(int ramp);
    /// Pixels of the image are squares on the screen; else the image is stretched over its place.
    void setSquarePixels(bool on);
    void setSectionsVisible(bool on);
    void zoomIn();
    void zoomOut();
    void showWhole();

Q_SIGNALS:
    void choiceChanged();
    void mapChosen(int no); ///< of the names in showMaps()
    void rangeTyped(double min, double max);
    void ruleChosen(RangeRule rule);
    void autoAsked();           ///< the range is to follow the values again
    void rampChanged(int ramp); ///< the bar has it already
    void squarePixelsChanged(bool on);
    void sectionsVisibleChanged(bool on);
    void prev();
    void next();
    void sliderMoved(int number); ///< the seek bar, also by setting its value
    /// A number of an image was typed; -1 for what is no number. Whoever hears it shows the number
    /// that holds from now on.
    void imageNumberTyped(int number);
    void zoomAsked();  ///< to the selected area; done already
    void wholeAsked(); ///< the whole image; done already
    void setAll();     ///< all images are to be drawn over the scale of the one on show

protected:
    void changeEvent(QEvent* event) override;

private:
    void setupChoice();
    void setupSeek();
    void setupRange();
    void setupView();
    void followSelection();
    void paintChoices();
    void fitWidths();

    std::unique_ptr<Ui_ImageBox> ui_;
    QButtonGroup* choices_;
};
