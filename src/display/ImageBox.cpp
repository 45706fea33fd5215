#include "display/ImageBox.h"

#include "common/SafeInt.h"
#include "ui_ImageBox.h"

#include <QButtonGroup>

namespace {

QString pixelText(int x, int y)
{
    return QString::asprintf("(% 4d, % 4d)", x, y);
}

} // namespace

ImageBox::ImageBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_ImageBox>())
    , choices_(new QButtonGroup(this))
{
    ui_->setupUi(this);
    ui_->HCross->setVertical(false);
    ui_->VCross->setVertical(true);
    setupChoice();
    setupSeek();
    connect(area(), &ImgDispA::rangeShown, bar(), &ColorBar::setRange);
    connect(ui_->ZoomIn, &QPushButton::clicked, area(), &ImgDispA::setViewWAsSelectedArea);
    connect(ui_->ResetScale, &QPushButton::clicked, area(), &ImgDispA::resetImageViewWindow);
    connect(ui_->CBarAll, &QPushButton::clicked, this, &ImageBox::setAll);
}

ImageBox::~ImageBox() = default;

void ImageBox::setupChoice()
{
    choices_->setExclusive(true);
    const std::pair<QPushButton*, int> choices[] = {{ui_->ShowData, ShowDataId},
                                                    {ui_->ShowI0, ShowI0Id},
                                                    {ui_->ShowShiftMap, ShowShiftMapId},
                                                    {ui_->ShowResAnalysis, ShowResAnalysisId}};
    for (const auto& [button, id] : choices) {
        choices_->addButton(button, id);
        // Both the button that goes off and the one that goes on tell it.
        connect(button, &QPushButton::toggled, this, [this](bool on) {
            if (on)
                Q_EMIT choiceChanged();
        });
    }
}

void ImageBox::setupSeek()
{
    connect(ui_->Prev, &QPushButton::clicked, this, &ImageBox::prev);
    connect(ui_->Next, &QPushButton::clicked, this, &ImageBox::next);
    connect(ui_->SeekBar, &QSlider::valueChanged, this, &ImageBox::sliderMoved);
    connect(ui_->ImgNo, &QLineEdit::editingFinished, this, [this] {
        bool isNumber = false;
        const int number = ui_->ImgNo->text().toInt(&isNumber);
        Q_EMIT imageNumberTyped(isNumber ? number : -1);
    });
}

ImgDispA* ImageBox::area() const
{
    return ui_->dispA;
}

ColorBar* ImageBox::bar() const
{
    return ui_->CBar;
}

ImageChoice ImageBox::choice() const
{
    return ImageChoice(choices_->checkedId());
}

bool ImageBox::setChoice(int id)
{
    QAbstractButton* const button = choices_->button(id);
    if (button)
        button->setChecked(true);
    return button;
}

void ImageBox::setChoiceQuietly(ImageChoice id)
{
    QAbstractButton* const button = choices_->button(id);
    const QSignalBlocker quiet(button);
    button->setChecked(true);
}

void ImageBox::showSeek(int number, int maximum, const QString& fileName)
{
    // Quiet already here: a smaller maximum moves the slider.
    const QSignalBlocker quiet(ui_->SeekBar);
    ui_->SeekBar->setMaximum(maximum);
    ui_->SeekBar->setValue(number);
    showImageNumber(number);
    ui_->ImgNo->setToolTip(fileName);
}

void ImageBox::showNoImage()
{
    showSeek(0, 0, QString());
}

void ImageBox::showImageNumber(int number)
{
    ui_->ImgNo->setText(QString::number(number));
}

void ImageBox::showPosition(int x, int y)
{
    ui_->Position->setText(pixelText(x, y));
}

void ImageBox::showShifts(double ofMap, double fromStandard)
{
    ui_->EShiftOnTbl->setText(QString::asprintf("%6.3f", ofMap));
    ui_->EShiftFromStd->setText(QString::asprintf("%5.2f", fromStandard));
}

void ImageBox::showValue(const QString& text)
{
    ui_->Value->setText(text);
}

void ImageBox::showDarkLevel(double counts)
{
    ui_->DarkValue->setText(QString::number(counts));
}

void ImageBox::showBoxSize(bool selected)
{
    QString text;
    if (selected) {
        const QRectF& box = area()->selectedArea();
        text = pixelText(truncatedInt(box.left()), truncatedInt(box.top())) + QLatin1Char('-') +
               pixelText(truncatedInt(box.right()), truncatedInt(box.bottom()));
    }
    // Painting calls this: a label that is set anew asks for another layout.
    if (ui_->BoxSize->text() != text)
        ui_->BoxSize->setText(text);
}

void ImageBox::setSections(const QVector<QPointF>& across, const QVector<QPointF>& upward,
                           const QString& axis)
{
    ui_->HCross->setPoints(across, axis);
    ui_->VCross->setPoints(upward, axis);
}

void ImageBox::setSectionCursor(int x, int y, int height)
{
    ui_->HCross->setCursorPos(x);
    ui_->VCross->setCursorPos(height - y);
}

void ImageBox::showSectionsInView(int height)
{
    const QRectF& view = area()->viewWindow();
    ui_->HCross->setRange({view.left(), view.right()});
    ui_->VCross->setRange({height - view.bottom(), height - view.top()});
}
