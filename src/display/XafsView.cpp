#include "display/XafsView.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/FileNames.h"
#include "common/TextItems.h"
#include "display/EmptyPlot.h"
#include "display/FileDialogs.h"
#include "ui_XafsView.h"

#include <QEvent>
#include <QPainter>

XafsView::XafsView(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_XafsView>())
    , saveDialog_(new LateDialog([this] { return newSaveDialog(); }, this))
{
    ui_->setupUi(this);
    plot_.stdName = tr("standard");
    emptyText_ = tr("No spectrum yet: load images in step 1");
    connectForm();
    narrowControls();
}

XafsView::~XafsView() = default;

QFileDialog* XafsView::newSaveDialog()
{
    auto* dialog = new FileDialog(this);
    dialog->setWindowTitle(tr("Save Spectra: %1").arg(windowTitle()));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("dat"));
    dialog->setNameFilters({tr("Data File (*.dat)"), tr("Any Files (* *.*)")});
    return dialog;
}

/// Gives fields and buttons the width of their texts, so that a row fits a narrow dock.
void XafsView::narrowControls()
{
    constexpr int fieldFrame = 10; // frame and margins [pixels]
    constexpr int buttonFrame = 10;
    const QFontMetrics metrics = fontMetrics();
    ui_->Position->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("888")));
    for (QLineEdit* const field : {ui_->XVal, ui_->YVal})
        field->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("88888.8")) + fieldFrame);
    for (QToolButton* const button : {ui_->ResetXScale, ui_->Save})
        button->setMinimumWidth(std::max(metrics.horizontalAdvance(button->text()) + buttonFrame,
                                         button->sizeHint().width()));
}

void XafsView::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        narrowControls();
}

void XafsView::connectForm()
{
    connect(ui_->Xafs, &DispA::drawImage1, this, &XafsView::draw);
    connect(ui_->Xafs, &DispA::mouseMoved0, this, &XafsView::onMouseMoved);
    connect(ui_->Xafs, &DispA::wheelMoved0, this, &XafsView::onWheelMoved);
    const std::pair<QCheckBox*, bool XafsPlot::*> boxes[] = {
        {ui_->Normalized, &XafsPlot::normalized},
        {ui_->ECorrect, &XafsPlot::energyCorrected},
        {ui_->ShowRaw, &XafsPlot::showRaw},
        {ui_->ShowFFT, &XafsPlot::showFft}};
    for (const auto& [box, flag] : boxes) {
        connect(box, &QCheckBox::toggled, this, [this, flag = flag](bool on) {
            plot_.*flag = on;
            ui_->XValLabel->setVisible(!plot_.showsFrequencies());
            update();
        });
    }
    connect(ui_->ShowRaw, &QCheckBox::toggled, ui_->ShowFFT, &QWidget::setEnabled);
    connect(ui_->ResetXScale, &QAbstractButton::clicked, this, &XafsView::resetXScale);
    connect(ui_->Save, &QAbstractButton::clicked, saveDialog_, &LateDialog::show);
    connect(saveDialog_, &LateDialog::fileSelected, this, &XafsView::saveData);
    connect(saveDialog_, &LateDialog::fileSelected, this, &XafsView::saveAsked);
}

QAbstractButton* XafsView::box(Box which) const
{
    QAbstractButton* const boxes[] = {ui_->Normalized, ui_->ECorrect, ui_->ShowRaw, ui_->ShowFFT};
    return boxes[which];
}

double XafsView::setSpectrum(const XafsSpectrum& s, const QString& note)
{
    note_ = note;
    edgeIsTold_ = false;
    plot_.setSpectrum(s);
    update();
    const bool comparable = !s.isEmpty() && !plot_.stdSpectrum.isEmpty();
    return comparable ? s.midx - plot_.stdSpectrum.midx : 0.0;
}

void XafsView::setRawSpectrum(const Spectrum& s)
{
    plot_.setRawSpectrum(s);
    update();
}

void XafsView::setStdSpectrum(const XafsSpectrum& s)
{
    plot_.stdSpectrum = s;
    update();
}

void XafsView::setSpectrumName(const QString& name)
{
    plot_.name = name;
}

void XafsView::setStdSpectrumName(const QString& name)
{
    plot_.stdName = name.isEmpty() ? tr("standard") : name;
}

void XafsView::setEmptyText(const QString& sentence)
{
    emptyText_ = sentence;
    update();
}

void XafsView::setOthers(const QVector<ViewCurve>& curves)
{
    plot_.others = curves;
    update();
}

void XafsView::setOther(int index, const ViewCurve& curve)
{
    if (index < 0 || index >= plot_.others.size())
        return;
    plot_.others[index] = curve;
    update();
}

void XafsView::setMarkerEnergy(double energy)
{
    plot_.markerEnergy = energy;
    update();
}

void XafsView::setEdgeMarks(const QVector<EdgeMark>& marks)
{
    plot_.edgeMarks = marks;
    update();
}

void XafsView::setStopRedraw(bool f)
{
    if (stopRedraw_ == f)
        return;
    stopRedraw_ = f;
    update();
}

void XafsView::setNormalize(bool f)
{
    ui_->Normalized->setChecked(f);
}

void XafsView::setEnergyCorrection(bool f)
{
    ui_->ECorrect->setChecked(f);
}

void XafsView::update()
{
    if (stopRedraw_)
        return;
    showEdge();
    ui_->Xafs->update();
    Q_EMIT updated();
}

void XafsView::showEdge()
{
    if (edgeIsTold_)
        return;
    edgeIsTold_ = true;
    const XafsSpectrum& s = spectrum();
    if (s.isEmpty()) {
        ui_->ExtMsg->setResult(note_);
        return;
    }
    QString line = tr("dMut = %1, Edge %2 [eV] : %3 %4")
                       .arg(QString::asprintf("% 6.3e", s.dMut), fieldText(s.midx).trimmed(),
                            s.outOfRangeMidx ? tr("Out of Range midx") : QString(),
                            s.noisyMidx ? tr("Noizy to decide midx") : QString());
    // The outcome stands beside the two texts above, which tell less.
    if (s.outcome != Outcome::Fitted)
        line += QStringLiteral(" (%1)").arg(outcomeWords(s.outcome));
    if (!note_.isEmpty())
        line += QLatin1Char(' ') + note_;
    ui_->ExtMsg->setResult(line);
}

void XafsView::draw(QPainter* p)
{
    if (spectrum().isEmpty())
        paintEmptyPlot(p, *ui_->Xafs, note_.isEmpty() ? emptyText_ : note_);
    else
        plot_.paint(p, ui_->Xafs->size(), ui_->Xafs->font());
}

void XafsView::showValues(const QString& x, const QString& value)
{
    ui_->XVal->setText(x);
    ui_->YVal->setText(value);
}

void XafsView::onMouseMoved()
{
    if (spectrum().isEmpty())
        return;
    plot_.prepare(ui_->Xafs->size(), ui_->Xafs->font());
    const ChCoord& axes = plot_.coord;
    const MouseC& mouse = ui_->Xafs->mouse;
    const double x = axes.screenToRealX(mouse.pos.x());
    showValues(QString::number(x, 'f', 1),
               QString::number(axes.screenToRealY(mouse.pos.y()), 'f', 3));
    ui_->Position->setNum(plot_.nearestPoint(x));
    if (mouse.pressed && mouse.pressAction() == MouseC::Plain)
        plot_.visible().pan(axes.screenToRealX(mouse.prevPos.x()) - x);
}

void XafsView::onWheelMoved()
{
    if (spectrum().isEmpty())
        return;
    plot_.prepare(ui_->Xafs->size(), ui_->Xafs->font());
    const QPoint& at = ui_->Xafs->mouse.pos;
    const double x = plot_.coord.screenToRealX(at.x());
    plot_.visible().zoom(x, ui_->Xafs->wheelFactor);
    plot_.prepare(ui_->Xafs->size(), ui_->Xafs->font());
    showValues(fieldText(x), fieldText(plot_.coord.screenToRealY(at.y())));
    update();
}

void XafsView::resetXScale()
{
    plot_.visible().reset();
    update();
}

void XafsView::saveData(const QString& fname)
{
    if (fname.isEmpty()) {
        fault(QStringLiteral("No file name to save spectra under"));
        return;
    }
    const QString base = withReplacedExtension(fname, QStringLiteral("dat"));
    bool hasPoints = false;
    const auto save = [&](const XafsSpectrum& s, const QString& suffix, bool withEOffset) {
        hasPoints = hasPoints || !s.isEmpty();
        s.dump(addSuffix(base, suffix), withEOffset);
    };
    save(spectrum(), QStringLiteral("T"), true);
    save(plot_.stdSpectrum, QStringLiteral("std"), false);
    for (int i = 0; i < others().size(); ++i)
        save(others().at(i).spectrum, QStringLiteral("other%1").arg(i), false);
    if (!hasPoints)
        fault(QStringLiteral("No spectrum to save as %1").arg(quoted(fname)));
}
