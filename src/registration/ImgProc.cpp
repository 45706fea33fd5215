#include "registration/ImgProc.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/SafeInt.h"
#include "display/FieldWidth.h"
#include "display/NumberFields.h"
#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "display/WheelGuard.h"
#include "registration/ProcPicture.h"
#include "registration/ShiftClimb.h"
#include "ui_ImgProc.h"

#include <QDebug>

#include <utility>

namespace {

constexpr int shownProduct = 6; ///< characters

/// Between 0 and 1: what is set in a binary image.
constexpr double half = 0.5;

/// A shift within 1 pixel of an image's size: any further one is no other.
int cutShift(const QLineEdit* field, int size)
{
    return qBound(-size, field->text().toInt(), size);
}

} // namespace

ImgProc::ImgProc(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_ImgProc>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    setObjectName(QStringLiteral("ImgProc"));
    for (QLineEdit* field : {ui_->BinThV, ui_->MinEdgeV, ui_->MaxEdgeV})
        fitDigits(field, 9);
    for (QLineEdit* field : {ui_->ShiftX, ui_->ShiftY})
        fitDigits(field, 5);
    fitDigits(ui_->NormScolarP, shownProduct + 1);
    numbers_->watch(ui_->BinThV, ui_->BinThVCaption->text());
    numbers_->watch(ui_->MinEdgeV, ui_->MinEdgeVCaption->text());
    numbers_->watch(ui_->MaxEdgeV, ui_->MaxEdgeVCaption->text());
    numbers_->watch(ui_->ShiftX, ui_->ShiftXCaption->text(), NumberFields::Whole);
    numbers_->watch(ui_->ShiftY, ui_->ShiftYCaption->text(), NumberFields::Whole);
    ui_->Picture->setEmptyText(tr("No image to register: load images in step 1"));
    showReferenceText(tr("No reference yet"));
    fitButtons(*this);
    guardWheel(this);
    tabInReadingOrder(this);
    connectForm();
    connectShift();
    setRunning(false);
    drawOnImage();
}

ImgProc::~ImgProc() = default;

void ImgProc::connectForm()
{
    connect(ui_->BinThVSlider, &QSlider::valueChanged, this, &ImgProc::movedBinThVSlider);
    connect(ui_->BinThV, &QLineEdit::editingFinished, this, &ImgProc::newBinThV);
    for (const QLineEdit* field : {ui_->MinEdgeV, ui_->MaxEdgeV})
        connect(field, &QLineEdit::editingFinished, this, &ImgProc::setBinThV);
    connect(ui_->EdgeDetect, &QCheckBox::toggled, this, &ImgProc::toggledEdgeDetect);
    connect(ui_->SetRef, &QPushButton::clicked, this, &ImgProc::setRefBin);
    connect(ui_->AutoAll, &QPushButton::clicked, this, &ImgProc::autoAllAsked);
    connect(ui_->AlignTo, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ImgProc::settingsChanged);
    connect(ui_->ProcBar, &ColorBar::cBarUpdated, this, &ImgProc::drawOnImage);
    connect(ui_->ProcBar, &ColorBar::autoAsked, this, &ImgProc::drawOnImage);
    connect(this, &ImgProc::updateImg, ui_->Picture, qOverload<>(&QWidget::update));
    // A button that goes off tells it too.
    for (const QRadioButton* button : {ui_->DataImage, ui_->BinaryImage, ui_->Compare}) {
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                drawOnImage();
        });
    }
}

void ImgProc::connectShift()
{
    const struct
    {
        const QToolButton* button;
        int dx;
        int dy;
    } arrows[] = {
        {ui_->ShiftL, -1, 0}, {ui_->ShiftR, 1, 0}, {ui_->ShiftU, 0, -1}, {ui_->ShiftD, 0, 1}};
    for (const auto& arrow : arrows) {
        connect(arrow.button, &QToolButton::clicked, this,
                [this, dx = arrow.dx, dy = arrow.dy] { shiftBinImg(dx, dy); });
    }
    for (const QLineEdit* field : {ui_->ShiftX, ui_->ShiftY})
        connect(field, &QLineEdit::editingFinished, this, &ImgProc::drawOnImage);
    connect(ui_->ShiftAuto, &QPushButton::clicked, this, [this] {
        Q_EMIT autoShiftAsked();
        autoShiftBinImg();
    });
    connect(ui_->SetShift, &QPushButton::clicked, this, &ImgProc::setShift);
    connect(ui_->ClearAllShifts, &QPushButton::clicked, this, &ImgProc::clearAllShifts);
}

void ImgProc::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    hasSource();
}

/// Asks for the image when it is not here.
bool ImgProc::hasSource()
{
    if (!srcImage_)
        Q_EMIT askGiveData();
    return srcImage_ != nullptr;
}

void ImgProc::setImage(const SharedImage& image)
{
    forgetImage();
    if (!image) {
        drawOnImage();
        return;
    }
    srcImage_ = image;
    imgW_ = image->width;
    imgH_ = image->height;
    toggledEdgeDetect(ui_->EdgeDetect->isChecked());
}

void ImgProc::forgetImage()
{
    srcImage_.reset();
    dataImage_ = ProcImage();
    binImage_ = ProcImage();
    imgW_ = imgH_ = 0;
}

bool ImgProc::wantsEachImage() const
{
    return isVisible() || (view() == ComparedView && ui_->AAutoShift->isChecked());
}

void ImgProc::toggledEdgeDetect(bool f)
{
    Q_EMIT settingsChanged();
    if (f)
        edgeDetect();
    else if (srcImage_)
        takeData(dataImage(*srcImage_));
}

void ImgProc::edgeDetect()
{
    if (srcImage_)
        takeData(edgeImage(*srcImage_));
}

void ImgProc::takeData(ProcImage taken)
{
    dataImage_ = std::move(taken);
    ui_->MinEdgeV->setText(fieldText(dataImage_.minV));
    ui_->MaxEdgeV->setText(fieldText(dataImage_.maxV));
    setBinThV();
}

void ImgProc::showThresholdOf(int thousandths)
{
    ui_->BinThV->setText(fieldText(
        thresholdBetween(fieldValue(ui_->MinEdgeV), fieldValue(ui_->MaxEdgeV), thousandths)));
}

void ImgProc::setBinThV()
{
    movedBinThVSlider(ui_->BinThVSlider->value());
}

void ImgProc::movedBinThVSlider(int thousandths)
{
    showThresholdOf(thousandths);
    binarize();
    drawOnImage();
}

void ImgProc::newBinThV()
{
    const double min = fieldValue(ui_->MinEdgeV);
    const double span = fieldValue(ui_->MaxEdgeV) - min;
    {
        const QSignalBlocker quiet(ui_->BinThVSlider);
        ui_->BinThVSlider->setValue(
            truncatedInt(1000.0 * (fieldValue(ui_->BinThV) - min) / span + half));
    }
    binarize();
    drawOnImage();
}

void ImgProc::setThreshold(int thousandths)
{
    ui_->BinThVSlider->setValue(thousandths);
}

void ImgProc::binarize()
{
    if (srcImage_)
        binImage_ = binarized(dataImage_, fieldValue(ui_->BinThV));
}

void ImgProc::setRefBin()
{
    if (!hasSource())
        return;
    setReference(binImage_);
    Q_EMIT referenceTaken();
}

void ImgProc::setReference(const ProcImage& binary)
{
    refBinImage_ = binary;
    refBinImage_.takeExtremes();
    drawOnImage();
}

void ImgProc::setReferenceShift(const QPoint& shift)
{
    if (shift == referenceShift_)
        return;
    referenceShift_ = shift;
    drawOnImage();
}

ImgProc::View ImgProc::view() const
{
    if (ui_->Compare->isChecked())
        return ComparedView;
    return ui_->BinaryImage->isChecked() ? BinaryView : DataView;
}

void ImgProc::setView(View view)
{
    // Nobody may look at it yet: whoever asks for a view wants to see an image there.
    hasSource();
    QRadioButton* const buttons[] = {ui_->DataImage, ui_->BinaryImage, ui_->Compare};
    buttons[view]->setChecked(true);
}

void ImgProc::drawOnImage()
{
    const bool compared = view() == ComparedView;
    ui_->Legend->setText(
        compared ? tr("Red: the image; green: the reference; yellow: both; grey-blue: outside")
                 : QString());
    ui_->Legend->setVisible(compared);
    if (compared)
        drawComparison();
    else
        drawPlain();
}

void ImgProc::drawPlain()
{
    const ProcImage& shown = view() == BinaryView ? binImage_ : dataImage_;
    if (shown.isEmpty())
        ui_->ProcBar->clearRange();
    else
        ui_->ProcBar->setRange(shown.minV, shown.maxV);
    showPicture(shown.isEmpty() ? QImage() : procPicture(shown, *ui_->ProcBar));
}

/// Why image and reference can't be held against each other, or an empty text.
QString ImgProc::whyNotCompared() const
{
    if (binImage_.isEmpty())
        return QStringLiteral("no bin image");
    if (refBinImage_.isEmpty())
        return QStringLiteral("no ref bin image");
    return binImage_.hasSizeOf(refBinImage_) ? QString() : QStringLiteral("size mis-match");
}

void ImgProc::drawComparison()
{
    ui_->ProcBar->clearRange();
    const QString why = whyNotCompared();
    if (!why.isEmpty()) {
        qDebug().noquote() << why;
        // An image that has gone is not to be seen any more.
        if (binImage_.isEmpty())
            showPicture(QImage());
        return;
    }
    if (ui_->AAutoShift->isChecked())
        autoShiftBinImg0();
    ProductSums sums;
    showPicture(comparisonPicture(binImage_, refBinImage_, shiftToReference(), sums));
    showProduct(sums.product());
}

void ImgProc::showPicture(const QImage& picture)
{
    display_ = picture;
    ui_->Picture->setImage(&display_);
    Q_EMIT updateImg();
}

void ImgProc::showProduct(double product)
{
    lastProduct_ = product;
    ui_->NormScolarP->setText(fieldText(product).left(shownProduct));
}

QPoint ImgProc::shift() const
{
    return {cutShift(ui_->ShiftX, imgW_), cutShift(ui_->ShiftY, imgH_)};
}

void ImgProc::showShift(const QPoint& shift)
{
    ui_->ShiftX->setText(QString::number(shift.x()));
    ui_->ShiftY->setText(QString::number(shift.y()));
}

void ImgProc::shiftBinImg(int dx, int dy)
{
    if (!hasSource())
        return;
    showShift(shift() + QPoint(dx, dy));
    drawOnImage();
}

void ImgProc::autoShiftBinImg()
{
    hasSource();
    autoShiftBinImg0();
    drawOnImage();
}

void ImgProc::autoShiftBinImg0()
{
    const QString why = whyNotCompared();
    if (!why.isEmpty()) {
        fault(why);
        return;
    }
    const FoundShift found =
        climbToShift(BitImage(binImage_, half), BitImage(refBinImage_, half), shiftToReference());
    showShift(found.shift + referenceShift_);
    showProduct(found.product);
    if (ui_->ASetShift->isChecked())
        setShift();
}

void ImgProc::setShift()
{
    if (!hasSource())
        return;
    const QPoint shift = this->shift();
    Q_EMIT imgShift(shift.x(), shift.y());
}

void ImgProc::clearAllShifts()
{
    showShift(QPoint());
    Q_EMIT askClearAllShifts();
    drawOnImage();
}

RegistrationSettings ImgProc::settings() const
{
    return {ui_->BinThVSlider->value(), ui_->EdgeDetect->isChecked(),
            ui_->AlignTo->currentIndex() == 1, ui_->MoveI0->isChecked()};
}

void ImgProc::showReferenceText(const QString& text)
{
    ui_->ReferenceText->setText(text);
}

void ImgProc::showStoredShift(const QString& text)
{
    ui_->StoredShift->setText(text);
}

void ImgProc::setAutoAllReason(const QString& reason)
{
    autoAllReason_ = reason;
    setRunning(running_);
}

void ImgProc::setRunning(bool on)
{
    running_ = on;
    ui_->AutoAll->setText(on ? tr("Stop") : tr("Auto All"));
    ui_->AutoAll->setEnabled(on || autoAllReason_.isEmpty());
    ui_->AutoAll->setToolTip(
        on ? tr("Stops the search; no image is moved then")
        : autoAllReason_.isEmpty()
            ? tr("Searches the shifts of all images of the stack on show, and moves them")
            : autoAllReason_);
    ui_->AutoAllBar->setVisible(on);
    ui_->AutoAllReason->setText(on ? QString() : autoAllReason_);
    ui_->AutoAllReason->setVisible(!ui_->AutoAllReason->text().isEmpty());
}

void ImgProc::setDone(int done, int total)
{
    ui_->AutoAllBar->setRange(0, qMax(1, total));
    ui_->AutoAllBar->setValue(done);
}
