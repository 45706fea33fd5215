#pragma once

#include "display/DispA.h"

#include <QImage>
#include <QPointer>
#include <QRectF>

class Analyzed2DRes;

/// An image as the image area shows it: its picture (owned by who shows it, null for none), its
/// size and the range of values that the picture spans.
struct ShownImage
{
    const QImage* picture = nullptr;
    int width = 0; ///< [pixels]
    int height = 0;
    double min = 0.0;
    double max = 1.0;
};

/// The image area of the main window: an image or, as an over layer, a map; the part of it that is
/// in view, zoomed by wheel and moved by Shift drag; and one selected area. Coordinates are image
/// pixels; the view is stretched over the whole widget.
///
/// A selection has its corners in order wherever it comes from. Only a drag makes one: the mouse
/// has moved 3 pixels of the screen in one direction, and some way in the other. Until then, and
/// when it comes back, the former selection stands.
class ImgDispA : public DispA
{
    Q_OBJECT
public:
    explicit ImgDispA(QWidget* parent = nullptr);

    /// Shows an image. The first one with a picture comes into view whole; later ones keep the
    /// view, so that a stack can be stepped through with the zoom fixed.
    void setImage(const ShownImage& image);
    /// The map of the over layer; null for none.
    void setAnalyzedRes(Analyzed2DRes* map);
    /// Tells the size of the images from now on, an invalid one when they are gone. View and
    /// selection of images of another size make no sense any more and are gone, with one log line;
    /// what was chosen while there were no images is left alone.
    void setImageSize(const QSize& size);
    /// What stands in the area while there is no picture to show.
    void setEmptyText(const QString& text);
    /// Picture of the image, or of the map while the over layer shows; may be null.
    const QImage* currentImage() const;
    /// Copy of exactly the pixels in view, whole or in part; a null image without a picture or
    /// where none of it is in view.
    QImage viewImage() const;
    /// The same of another picture of the size of what is on show.
    QImage viewOf(const QImage& picture) const;

    /// The map on show; null while the image is.
    const Analyzed2DRes* shownMap() const;
    /// Image coordinates of the mouse.
    QPointF cursorPosition() const { return imagePoint(mouse.pos); }
    /// Tells rangeShown() for what is on show; each paint does it too.
    void tellRange();
    const QRectF& viewWindow() const { return viewWindow_; }
    bool hasSelection() const { return selection_.exists; }
    bool isSelecting() const { return selecting_; }
    /// The selected area as it stands; during a drag width and height are signed.
    const QRectF& selectedArea() const { return selection_.area; }

    /// True without a selection. The comparison in y is the reverse of that in x, on purpose: an
    /// area of positive height holds no point.
    bool isInSelectedArea(int x, int y) const;

Q_SIGNALS:
    void mouseMoved(double x, double y);   ///< with no button down
    void mouseDragged(double x, double y); ///< reserved; nothing emits it
    void newAreaSelected();
    /// Range of values of what was just drawn, for the colour bar.
    void rangeShown(double min, double max);
    void nothingShown();                  ///< the same where there is nothing to draw
    void viewChanged();                   ///< another part of the image is in view
    void selectionChanged();              ///< there is another selected area, or none any more
    void browseAsked(int images);         ///< by the keys: so many images further or back
    void cursorMoveAsked(int dx, int dy); ///< by the keys [pixels]
    /// A menu is wanted at this place of the screen, for this pixel of the image; not by a right
    /// click that clears a selection.
    void menuAsked(const QPoint& place, int x, int y);

public Q_SLOTS:
    /// Brings the whole image into view; nothing without an image.
    void resetImageViewWindow();
    /// Widens the view about its middle by the factor; below 1 narrows it.
    void zoomBy(double factor);
    void setShowOverLayer(bool f);
    /// Selects the area between two corners, in any order.
    void setSelectedArea(int x1, int y1, int x2, int y2);
    /// Brings the selected area into view; nothing without a selection that has an extent.
    void setViewWAsSelectedArea();
    /// Goes back to the selection before the last one, or to none when there was none.
    void recallOldSelectedArea();
    void clearSelection();
    /// Brings the mouse over the middle of an image pixel as far as pixels of the screen allow;
    /// tells nobody, and leaves a drag alone.
    void setMousePixel(int x, int y);
    /// The wheel zooms both ways everywhere: the area has the shape of the view.
    void setSquarePixels(bool on) { squarePixels_ = on; }

protected:
    /// Left and Right browse, with Shift the arrows move the cursor.
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Selection
    {
        QRectF area;
        bool exists = false;
        QSize images; ///< size of the images that it was made on; invalid without images
    };

    void layOutCoord();
    void setView(const QRectF& view);
    void drawImage(QPainter* p);
    void drawEmpty(QPainter* p) const;
    void setSelection(const Selection& selection);
    const QImage& renderedView(const QImage& picture);
    void onMousePressed();
    void onMouseReleased();
    void onMouseMoved();
    void onWheelMoved();
    void zoomAbout(double fx, double fy, double factorX, double factorY);
    QPointF imagePoint(const QPoint& pixel) const;
    bool drawsSelection() const;
    void dragSelection();
    void finishSelection();

    /// The view as it was last rendered, and of what: mouse moves paint it again as it stands.
    struct Rendered
    {
        qint64 picture = 0; ///< QImage::cacheKey, which a rebuilt picture changes
        QRectF view;
        QImage pixels;
    };

    ShownImage image_;
    Rendered rendered_;
    bool showOverLayer_ = false;
    QPointer<Analyzed2DRes> analyzedRes_;
    QString emptyText_;
    QRectF viewWindow_;
    QSize imageSize_; ///< of the last images that there were, or of the map that came before any
    bool hasImages_ = false;
    bool squarePixels_ = false;
    bool pressedToSelect_ = false; ///< a drag from here on draws a selection
    bool selecting_ = false;       ///< and does
    Selection selection_;
    QPointF dragStart_;
    Selection beforeDrag_;
    bool pressCleared_ = false; ///< the last press took a selection away
    Selection oldSelection_;    ///< the one before the last that was made
};
