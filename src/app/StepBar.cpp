#include "app/StepBar.h"

#include "app/StepButton.h"
#include "common/Settings.h"
#include "ui_StepBar.h"

namespace {

constexpr int openerAir = 18; ///< round the text of a button that opens a window [pixels]

} // namespace

StepBar::StepBar(QWidget* parent)
    : QToolBar(parent)
    , ui_(std::make_unique<Ui_StepBar>())
    , row_(new QWidget)
{
    setObjectName(QStringLiteral("StepBar"));
    setWindowTitle(tr("Steps"));
    setMovable(false);
    // It can't be brought back by the menu that would take it away.
    setContextMenuPolicy(Qt::PreventContextMenu);
    ui_->setupUi(row_);
    addWidget(row_);
    const std::pair<Step, QString> names[] = {{Step::Data, tr("Data")},
                                              {Step::Spectrum, tr("Spectrum")},
                                              {Step::Calibration, tr("Calibration")},
                                              {Step::Analysis, tr("Analysis")},
                                              {Step::Save, tr("Save")}};
    for (const auto& [step, name] : names) {
        button(step)->setStep(int(step) + 1, name);
        connect(button(step), &QPushButton::clicked, this, [this, step = step] {
            setOpen(step);
            Q_EMIT stepChosen(step);
        });
    }
    ui_->ShowAnalyzer2->setVisible(ShowAnalyzer2Button);
    for (QPushButton* opener :
         {ui_->ShowXafsView, ui_->ShowImgProc, ui_->BatchCtrlB, ui_->ShowAnalyzer2}) {
        opener->setMinimumWidth(fontMetrics().horizontalAdvance(opener->text()) + openerAir);
        // Two below each other take no more height than a step.
        opener->setFixedHeight(fontMetrics().height() + 7);
    }
}

StepBar::~StepBar() = default;

StepButton* StepBar::button(Step step) const
{
    StepButton* const buttons[] = {ui_->ShowDataBox, ui_->ShowSpectrumBox, ui_->OpenCalibCtrl,
                                   ui_->ShowAnalyzer, ui_->ShowSaveBox};
    return buttons[std::size_t(step)];
}

QPushButton* StepBar::opener(const QString& name) const
{
    return row_->findChild<QPushButton*>(name);
}

void StepBar::setStates(const StepStates& states)
{
    for (int i = 0; i < stepCount; ++i)
        button(Step(i))->setState(states[std::size_t(i)]);
}

void StepBar::setOpen(Step step)
{
    for (int i = 0; i < stepCount; ++i)
        button(Step(i))->setChecked(Step(i) == step);
}
