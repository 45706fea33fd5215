#pragma once

#include <QGroupBox>
#include <QPointF>
#include <QVector>

#include <memory>

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

/// The image area with all that stands round it: the choice of what it shows, both sections, the
/// colour bar, the controls that browse a stack, and the numbers at the cursor. It shows what it is
/// given, and tells what the user asks for.
class ImageBox : public QGroupBox
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

Q_SIGNALS:
    void choiceChanged();
    void prev();
    void next();
    void sliderMoved(int number); ///< the seek bar, also by setting its value
    /// A number of an image was typed; -1 for what is no number. Whoever hears it shows the number
    /// that holds from now on.
    void imageNumberTyped(int number);
    void setAll(); ///< all images are to be drawn by the handles of the scale

private:
    void setupChoice();
    void setupSeek();

    std::unique_ptr<Ui_ImageBox> ui_;
    QButtonGroup* choices_;
};
