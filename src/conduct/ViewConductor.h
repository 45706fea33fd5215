#pragma once

#include "image/DisplayRange.h"
#include "image/ImagePicture.h"
#include "image/TiffData.h"
#include "maps/MapKinds.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSize>
#include <QStringList>
#include <QTimer>

#include <array>
#include <optional>

class Analyzed2DRes;
class Analyzer;
class CommandBook;
class History;
class ImageBox;
class MapBook;
class SaveBox;
class SourceReader;
class StackConductor;
struct ImageStack;
struct Measurement;

/// Keeps what is on show: an image of a stack, or a map by its key. Follows the buttons that choose
/// it, browses the stacks, and filters the map on show. Each kind of what is shown, a stack or the
/// maps of a kind, has a range of values of its own, over which its pictures are made.
///
/// At first it shows things as an unattended run does, whose pictures must not depend on what a
/// user likes to see: each image and map over its own range, and every value in its colour.
class ViewConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it; the panel chooses the result map.
    ViewConductor(Measurement& data, MapBook& book, const SourceReader& reader, ImageBox& box,
                  SaveBox& saveBox, Analyzer& panel, StackConductor& stacks,
                  QObject* parent = nullptr);

    void bindCommands(CommandBook& book);

    /// Off in front of a user: ranges follow percentiles, positions without an edge have a colour
    /// of their own, and a load shows as many images as an eye can follow.
    void setUnattended(bool on);
    /// Brings the results on show.
    void showResults();

    /// The stack that the seek bar browses, and of which energy marker and dark level are. While a
    /// map is on show that is I1, of which the map was made.
    ImageStack& shownStack() const;
    /// Number of the stack's image that its row has chosen, and the image; null for none.
    int currentNumber(const ImageStack& stack) const;
    const TiffData* currentImage(const ImageStack& stack) const;

    /// A map is chosen; there may be none yet.
    bool isMapChosen() const;
    /// The map on show, with a picture or not; null while an image is chosen or there is no map.
    Analyzed2DRes* shownMap() const;
    /// The map on show has a picture.
    bool isMapFilled() const;
    /// The result map that the panel has chosen.
    std::optional<MapKey> chosenResult() const;
    /// The key of the map on show.
    std::optional<MapKey> shownKey() const { return map_; }
    /// Size [pixels] of what is on show.
    QSize shownSize() const;

    /// The result maps have other values: the one on show is shown anew.
    void resultsPainted();
    /// Paints the result map on show as far as it is filled.
    void paintShownResult();
    /// The same of maps that were left without pictures: the one on show is painted as it is.
    void resultsStopped();

public Q_SLOTS:
    void showData(int no);
    void prev();
    void next();
    void sliderMoved(int idx);
    void seekImage(int imgNo);
    /// Something else is chosen to be shown.
    void dispImgSelected();
    void selectedNewRef();
    void setupResAnalysisImage();
    void cBarUpdating();
    /// The bar's handles were let go: the range becomes what they span, and they return to the
    /// ends. All that is on show is painted anew.
    void cBarUpdated();
    /// Gives the kind on show this range; a map under a fixed scale has its scale set to it.
    void giveRange(double min, double max);
    /// The kind on show has an automatic range again.
    void takeAutoRange();
    void deglitch();
    void showAnalyzedVals();

Q_SIGNALS:
    /// Something else is on show, or nothing any more.
    void shownChanged();
    /// An image of this energy [eV] was put into the area, on show or under the map that is.
    void imageTaken(double energy);
    /// The map on show has other values.
    void valuesChanged();
    /// Images have come, and the last of them is on show if images are.
    void loadShown();

private:
    // ViewConductor.cpp
    void connectBox();
    void connectStacks(StackConductor& stacks);
    void imageTyped(int number);
    void imageCame(ImageStack& stack, bool show);
    void showArrived();
    void stackCleared(ImageStack& stack);
    void energiesApplied(ImageStack& stack);
    void imagesMoved(ImageStack& stack);
    void showLoaded(ImageStack& stack);
    bool keepsMap() const;
    void showStack();
    void showImage(const SharedImage& image);
    void takeImage(int no);
    void takeNoImage();
    void leaveMap();
    void showMap(const std::optional<MapKey>& key);
    void tellImageSize();
    QString emptyText() const;
    // ViewConductorMaps.cpp
    void connectResults();
    void tellShowDeglitched();
    void showDeglitched(bool on);
    void tellHistory(History& history) const;
    void tellDeeds(History& history) const;
    void bindFilterCommands(CommandBook& book);
    void deglitchBy(double factor, double range);
    void takeScales();
    void tellScaleOfChosen();
    Analyzed2DRes* chosenMapOf() const;
    // ViewConductorRange.cpp
    void connectRange();
    RangeRule defaultRule() const;
    MapKind chosenKind() const;
    bool isFixed() const;
    RangeChoice choiceOfShown() const;
    void setChoiceOfShown(const RangeChoice& choice);
    void setRule(RangeRule rule);
    void setAll();
    void setFixedScale(const ValueRange& range);
    ValueRange rangeOf(const SharedImage& image);
    void showRangeChoice();
    void repaint();
    // ViewConductorCaption.cpp
    void tellCaption();
    void tellMaps();
    void tellClasses();
    QString imageCaption() const;
    QString mapCaption() const;
    QString nameOf(const MapKey& key) const;
    void chooseMap(int no);

    Measurement& data_;
    MapBook& book_;
    const SourceReader& reader_;
    ImageBox& box_;
    SaveBox& saveBox_;
    Analyzer& panel_;
    StackConductor& stacks_;
    // What lies in the image area: the image, under the map when there is a key.
    const ImageStack* imageStack_ = nullptr; ///< of the image
    SharedImage image_;
    ImagePicture picture_; ///< of the image; one for all, painted anew for each that is shown
    std::optional<MapKey> map_;
    bool unattended_ = true;
    RangeChoice i1Choice_; ///< those of maps are in the book
    RangeChoice i0Choice_;
    StackRange i1Range_;
    StackRange i0Range_;
    QVector<MapKey> listed_; ///< the maps that the box lists
    // Images that came since the last one was shown.
    QTimer arrival_;
    QElapsedTimer sinceArrival_;
    bool i1Arrived_ = false;
};
