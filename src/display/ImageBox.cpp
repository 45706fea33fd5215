#include "display/ImageBox.h"

#include "common/SafeInt.h"
#include "ui_ImageBox.h"

#include <QButtonGroup>
#include <QEvent>

namespace {

/// A step of the zoom keys, that of the wheel.
constexpr double zoomStep = 1.1;

constexpr int energyDigits = 7;
/// Round the text of a button [pixels].
constexpr int buttonMargin = 18;

QString pixelText(int x, int y)
{
    return QString::asprintf("(% 4d, % 4d)", x, y);
}

} // namespace

ImageBox::ImageBox(QWidget* parent)
    : QWidget(parent)
    , ui_(std::make_unique<Ui_ImageBox>())
    , choices_(new QButtonGroup(this))
{
    ui_->setupUi(this);
    ui_->HCross->setVertical(false);
    ui_->VCross->setVertical(true);
    setupChoice();
    setupSeek();
    setupRange();
    setupView();
    connect(ui_->ShownMap, qOverload<int>(&QComboBox::activated), this, &ImageBox::mapChosen);
    showMaps({}, -1);
    fitWidths();
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
            paintChoices();
            if (on)
                Q_EMIT choiceChanged();
        });
    }
    paintChoices();
}

/// The one that is on has the colour of what is selected.
void ImageBox::paintChoices()
{
    for (QAbstractButton* const button : choices_->buttons()) {
        QPalette colours = palette();
        if (button->isChecked()) {
            colours.setColor(QPalette::Button, colours.color(QPalette::Highlight));
            colours.setColor(QPalette::ButtonText, colours.color(QPalette::HighlightedText));
        }
        button->setPalette(colours);
    }
}

void ImageBox::setupRange()
{
    connect(area(), &ImgDispA::rangeShown, this, [this](double min, double max) {
        bar()->setRange(min, max);
        ui_->Range->showRange({min, max});
    });
    connect(area(), &ImgDispA::nothingShown, this, [this] {
        bar()->clearRange();
        ui_->Range->showNoRange();
    });
    connect(ui_->Range, &RangeRow::rangeTyped, this, &ImageBox::rangeTyped);
    connect(ui_->Range, &RangeRow::ruleChosen, this, &ImageBox::ruleChosen);
    connect(ui_->Range, &RangeRow::rampChanged, this, [this](int ramp) {
        bar()->setRamp(ramp);
        Q_EMIT rampChanged(ramp);
    });
    connect(bar(), &ColorBar::autoAsked, this, &ImageBox::autoAsked);
    connect(ui_->CBarAuto, &QPushButton::clicked, this, &ImageBox::autoAsked);
    connect(ui_->CBarAll, &QPushButton::clicked, this, &ImageBox::setAll);
}

void ImageBox::setupView()
{
    ui_->View->setParts({area(), ui_->HCross, ui_->VCross, bar(), ui_->CBarAuto, ui_->CBarAll});
    ui_->View->setSquarePixels(true);
    connect(ui_->ZoomIn, &QPushButton::clicked, area(), &ImgDispA::setViewWAsSelectedArea);
    connect(ui_->ResetScale, &QPushButton::clicked, area(), &ImgDispA::resetImageViewWindow);
    connect(ui_->ZoomIn, &QPushButton::clicked, this, &ImageBox::zoomAsked);
    connect(ui_->ResetScale, &QPushButton::clicked, this, &ImageBox::wholeAsked);
    connect(area(), &ImgDispA::selectionChanged, this, &ImageBox::followSelection);
    connect(area(), &ImgDispA::browseAsked, this,
            [this](int images) { images < 0 ? Q_EMIT prev() : Q_EMIT next(); });
    followSelection();
}

void ImageBox::followSelection()
{
    const bool selected = area()->hasSelection();
    ui_->ZoomIn->setEnabled(selected);
    ui_->ZoomIn->setToolTip(selected ? tr("Show the selected area alone")
                                     : tr("Drag over the image to select an area first"));
}

/// Buttons take the room that their texts need, numbers that of the longest that may come.
void ImageBox::fitWidths()
{
    const QFontMetrics metrics = fontMetrics();
    const auto width = [&metrics](const char* text) {
        return metrics.horizontalAdvance(QLatin1String(text)) + 2;
    };
    for (QPushButton* button : {ui_->ShowData, ui_->ShowI0, ui_->ShowShiftMap, ui_->ShowResAnalysis,
                                ui_->ZoomIn, ui_->ResetScale, ui_->Prev, ui_->Next})
        button->setMinimumWidth(metrics.horizontalAdvance(button->text()) + buttonMargin);
    ui_->ImgNo->setFixedWidth(width("88888") + 10);
    ui_->Energy->setMinimumWidth(width("88888.88 eV"));
    ui_->Position->setMinimumWidth(width("(-8888, -8888)"));
    ui_->Value->setMinimumWidth(width("-1.23457e-05"));
    ui_->EShiftFromStd->setMinimumWidth(width("-888.88"));
    ui_->DarkValue->setMinimumWidth(width("8888.88"));
    ui_->EShiftOnTbl->setMinimumWidth(width("-888.888"));
    ui_->BoxSize->setMinimumWidth(width("(-8888, -8888)-(-8888, -8888)"));
    // One line or two: the image stays where it is.
    ui_->Caption->setMinimumHeight(2 * metrics.lineSpacing());
}

void ImageBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        fitWidths();
    else if (event->type() == QEvent::PaletteChange)
        paintChoices();
    QWidget::changeEvent(event);
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
    paintChoices();
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
    ui_->Energy->clear();
}

void ImageBox::showImageNumber(int number)
{
    ui_->ImgNo->setText(QString::number(number));
}

void ImageBox::showEnergy(double eV)
{
    ui_->Energy->setText(tr("%1 eV").arg(QString::number(eV, 'g', energyDigits)));
}

void ImageBox::showCaption(const QString& text)
{
    ui_->Caption->setText(text);
}

void ImageBox::showMaps(const QStringList& names, int current)
{
    QComboBox& list = *ui_->ShownMap;
    QStringList shown;
    for (int i = 0; i < list.count(); ++i)
        shown.append(list.itemText(i));
    if (shown != names) {
        list.clear();
        list.addItems(names);
    }
    list.setCurrentIndex(current);
    list.setVisible(!names.isEmpty());
}

void ImageBox::showRangeChoice(const RangeChoice& choice, const QString& locked)
{
    ui_->Range->showChoice(choice);
    ui_->Range->setRuleLocked(locked);
    ui_->CBarAuto->setEnabled(locked.isEmpty());
    ui_->CBarAuto->setToolTip(locked.isEmpty() ? tr("The scale follows the values again") : locked);
}

void ImageBox::showClasses(const std::vector<QRgb>& colours, const QVector<LegendEntry>& legend)
{
    QStringList entries;
    for (const LegendEntry& entry : legend) {
        // Words of an entry stay on one line.
        const QString text =
            entry.text.toHtmlEscaped().replace(QLatin1Char(' '), QLatin1String("&nbsp;"));
        entries.append(QStringLiteral("<span style=\"color:%1\">&#9632;</span>&nbsp;%2")
                           .arg(QColor(entry.colour).name(), text));
    }
    const auto gap = QStringLiteral(" &nbsp; ");
    ui_->Legend->setText(entries.join(gap));
    ui_->Legend->setVisible(!colours.empty());
    ui_->Range->setVisible(colours.empty());
    bar()->setClasses(colours);
}

int ImageBox::ramp() const
{
    return ui_->Range->ramp();
}

bool ImageBox::squarePixels() const
{
    return ui_->View->squarePixels();
}

bool ImageBox::sectionsVisible() const
{
    return ui_->View->sectionsVisible();
}

QStringList ImageBox::unreadableFields() const
{
    return ui_->Range->unreadable();
}

void ImageBox::setRamp(int ramp)
{
    ui_->Range->setRamp(ramp);
}

void ImageBox::setSquarePixels(bool on)
{
    if (on == squarePixels())
        return;
    ui_->View->setSquarePixels(on);
    Q_EMIT squarePixelsChanged(on);
}

void ImageBox::setSectionsVisible(bool on)
{
    if (on == sectionsVisible())
        return;
    ui_->View->setSectionsVisible(on);
    Q_EMIT sectionsVisibleChanged(on);
}

void ImageBox::zoomIn()
{
    area()->zoomBy(1.0 / zoomStep);
}

void ImageBox::zoomOut()
{
    area()->zoomBy(zoomStep);
}

void ImageBox::showWhole()
{
    area()->resetImageViewWindow();
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
