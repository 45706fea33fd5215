#pragma once

#include "registration/ProcImage.h"

#include <QFrame>
#include <QImage>
#include <QPoint>

#include <memory>

class CommandBook;
class NumberFields;
class Ui_ImgProc;

/// How images are made binary, and what those of a stack are compared with.
struct RegistrationSettings
{
    int thousandths = 500; ///< threshold, of the way between the extremes of an image
    bool edges = false;
    bool toOneBefore = false;
    bool movesI0 = false; ///< I0 goes with I1
};

/// The panel of registration: it makes the image on show binary, compares it with a reference and
/// finds the shift at which both agree best. Images come as they were read; the shift in its fields
/// is that of the pixels, and what becomes of it is up to whoever hears imgShift().
///
/// It holds the image only once somebody needs it, for which it asks.
class ImgProc : public QFrame
{
    Q_OBJECT
public:
    /// What the picture shows.
    enum View
    {
        DataView,
        BinaryView,
        ComparedView
    };

    explicit ImgProc(QWidget* parent = nullptr);
    ~ImgProc() override;

    /// Takes an image without a shift; null for none. The threshold keeps its place in the range
    /// of the image, and the fields of the shift stay: images next to each other lie close.
    void setImage(const SharedImage& image);
    /// Another image is on show, which it asks for once it needs it.
    void forgetImage();
    /// It has to have each image: it is seen, or searches the shift of each.
    bool wantsEachImage() const;

    RegistrationSettings settings() const;
    /// Fields of numbers as they stand; a shift beyond an image's size is cut to it.
    QPoint shift() const;
    void showShift(const QPoint& shift);
    double lastProduct() const { return lastProduct_; }

    /// The binary image that others are compared with; empty for none.
    const ProcImage& reference() const { return refBinImage_; }
    /// Takes another one.
    void setReference(const ProcImage& binary);
    /// Shift of the image that the reference was made of. The shift that is sought brings both into
    /// the same place.
    void setReferenceShift(const QPoint& shift);
    QPoint referenceShift() const { return referenceShift_; }

    /// What of image and reference is told beside the buttons.
    void showReferenceText(const QString& text);
    void showStoredShift(const QString& text);
    /// Why the whole stack can not be searched; an empty text when it can.
    void setAutoAllReason(const QString& reason);
    /// While it runs, the button of the whole stack stops it.
    void setRunning(bool on);
    void setDone(int done, int total);

    View view() const;
    void setView(View view);
    /// In thousandths of the range.
    void setThreshold(int thousandths);

    /// Those that set its fields or work on the image that it has.
    void bindCommands(CommandBook& book);

Q_SIGNALS:
    void askGiveData(); ///< the image on show is needed at once
    void askClearAllShifts();
    void updateImg(); ///< another picture is there
    void imgShift(int sx, int sy);
    void referenceTaken(); ///< of the image that it has
    void autoShiftAsked(); ///< by the button
    void autoAllAsked();   ///< start, or stop while it runs
    void settingsChanged();

public Q_SLOTS:
    void movedBinThVSlider(int thousandths);
    void newBinThV();
    void setBinThV();
    void setRefBin();
    void toggledEdgeDetect(bool f);
    void edgeDetect();
    void binarize();
    void drawOnImage();
    void shiftBinImg(int dx, int dy);
    void autoShiftBinImg();
    void autoShiftBinImg0();
    void setShift();
    void clearAllShifts();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void connectForm();
    void connectShift();
    bool hasSource();
    void takeData(ProcImage taken);
    QString whyNotCompared() const;
    QPoint shiftToReference() const { return shift() - referenceShift_; }
    void drawPlain();
    void drawComparison();
    void showPicture(const QImage& picture);
    void showProduct(double product);
    void showThresholdOf(int thousandths);

    const std::unique_ptr<Ui_ImgProc> ui_;
    NumberFields* const numbers_;
    QImage display_;
    int imgW_ = 0; ///< of the image
    int imgH_ = 0;
    SharedImage srcImage_; ///< null for none
    ProcImage dataImage_;  ///< the image, or its edges
    ProcImage binImage_;
    ProcImage refBinImage_;
    QPoint referenceShift_;
    double lastProduct_ = 0.0;
    bool running_ = false;
    QString autoAllReason_;
};
