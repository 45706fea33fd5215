#include "app/Workbench.h"

#include "analysis/Analyzer.h"
#include "analysis/diagnostics/Analyzer2.h"
#include "app/Messages.h"
#include "app/Panels.h"
#include "app/StateStrip.h"
#include "app/StepBar.h"
#include "app/StepButton.h"
#include "batch/BatchCtrl.h"
#include "batch/HistoryPanel.h"
#include "calibration/CalibCtrl.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/PanelDock.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "registration/ImgProc.h"
#include "selection/DataBox.h"
#include "selection/SpectrumBox.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

/// Of the stored lay-out: one of another version is not restored.
constexpr int layoutVersion = 1;

constexpr int leftWidth = 396;       ///< of the forms [pixels]
constexpr int leastRightWidth = 340; ///< of the plots, which take 30 % of the window
constexpr int greatestRightWidth = 640;
constexpr double rightShare = 0.3;
constexpr int heightOfTwoPlots =
    700; ///< of the window from which on they stand one above the other
constexpr int bottomHeight = 220;

const QString stepDockNames[stepCount] = {
    QStringLiteral("DataDock"), QStringLiteral("SpectrumDock"), QStringLiteral("CalibrationDock"),
    QStringLiteral("AnalysisDock"), QStringLiteral("SaveDock")};

const auto spectrumView = QStringLiteral("SpectrumViewDock");
const auto fitView = QStringLiteral("FitViewDock");
const auto bgView = QStringLiteral("BGViewDock");
const auto diagnosticsDock = QStringLiteral("DiagnosticsDock");
const auto registrationDock = QStringLiteral("RegistrationDock");
const auto batchDock = QStringLiteral("BatchDock");
const auto messagesDock = QStringLiteral("MessagesDock");
const auto historyDock = QStringLiteral("HistoryDock");

/// Panels of one step below each other.
QWidget* column(const QVector<QWidget*>& panels)
{
    auto* const box = new QWidget;
    auto* const layout = new QVBoxLayout(box);
    layout->setContentsMargins(4, 2, 4, 4);
    layout->setSpacing(6);
    for (QWidget* panel : panels)
        layout->addWidget(panel);
    layout->addStretch(1);
    return box;
}

/// Scrolls up and down alone: a form is to be seen in its whole width.
class FormArea : public QScrollArea
{
public:
    explicit FormArea(QWidget* form)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setWidget(form);
        form->installEventFilter(this);
    }

    QSize minimumSizeHint() const override
    {
        const int width =
            widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
        return {width, 120};
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

/// The first field of a form that takes text, or else what takes keys.
QWidget* firstField(const QWidget& form)
{
    QWidget* button = nullptr;
    for (QWidget* w = form.nextInFocusChain(); w != &form; w = w->nextInFocusChain()) {
        if (!form.isAncestorOf(w) || !(w->focusPolicy() & Qt::TabFocus) || !w->isEnabled() ||
            !w->isVisibleTo(&form))
            continue;
        const auto* const field = qobject_cast<QLineEdit*>(w);
        if (field && !field->isReadOnly())
            return w;
        if (!button)
            button = w;
    }
    return button;
}

} // namespace

Workbench::Workbench(QMainWindow& window, Panels& panels, QWidget& central)
    : QObject(&window)
    , window_(window)
    , panels_(panels)
    , bar_(new StepBar(&window))
{
    window_.setDockOptions(QMainWindow::AllowTabbedDocks | QMainWindow::AllowNestedDocks);
    window_.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    window_.setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
    window_.addToolBar(bar_);
    window_.setCentralWidget(&central);
    makeStepDocks();
    makeDock(spectrumView, tr("Spectrum at the position"), panels_.xafsView.get(), true);
    makeDock(fitView, tr("Analyzing Spectrum"), panels_.analyzer->view(), true);
    makeDock(bgView, tr("BG Specturm"), panels_.bgView.get(), false);
    makeDock(diagnosticsDock, tr("Diagnostics"), new FormArea(column({panels_.analyzer2.get()})),
             false);
    makeDock(registrationDock, tr("Registration"), new FormArea(panels_.imgProc.get()), false);
    makeDock(batchDock, tr("Batch"), panels_.batchCtrl.get(), false);
    makeDock(messagesDock, tr("Messages"), panels_.messages.get(), false);
    makeDock(historyDock, tr("History"), panels_.history.get(), false);
    connect(bar_, &StepBar::stepChosen, this, [this](Step step) { openStep(step); });
    placeDocks();
    window_.installEventFilter(this);
}

PanelDock* Workbench::stepDock(Step step) const
{
    return stepDocks_[std::size_t(step)];
}

QScrollArea* Workbench::formArea(Step step) const
{
    return areas_[std::size_t(step)];
}

void Workbench::makeStepDocks()
{
    auto* const openFolder = new QPushButton(tr("Open Folder..."));
    openFolder->setObjectName(QStringLiteral("OpenFolder"));
    openFolder->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(openFolder, &QPushButton::clicked, this, &Workbench::openFolderAsked);
    const std::pair<QString, QWidget*> forms[stepCount] = {
        {tr("Data"), column({openFolder, panels_.dataBox.get()})},
        {tr("Spectrum"), column({panels_.spectrumBox.get()})},
        {tr("Calibration"), column({panels_.calibCtrl.get()})},
        {tr("Analysis"), column({panels_.analyzer.get()})},
        {tr("Save"), column({panels_.saveBox.get(), panels_.saveDataCfg.get()})}};
    for (int i = 0; i < stepCount; ++i) {
        auto* const strip = new StateStrip;
        auto* const area = new FormArea(forms[i].second);
        auto* const content = new QWidget;
        auto* const layout = new QVBoxLayout(content);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(strip);
        layout->addWidget(area, 1);
        makeDock(stepDockNames[i], forms[i].first, content, true);
        strips_[std::size_t(i)] = strip;
        areas_[std::size_t(i)] = area;
        stepDocks_[std::size_t(i)] = docks_.value(stepDockNames[i]);
        connect(strip, &StateStrip::mendAsked, this, &Workbench::mendAsked);
        connect(stepDocks_[std::size_t(i)], &PanelDock::comesUp, this,
                [this, i] { comesUp(Step(i)); });
    }
    // Children of a panel's former window state: a panel in a dock is shown with it.
    panels_.saveDataCfg->show();
}

void Workbench::makeDock(const QString& name, const QString& title, QWidget* panel, bool shown)
{
    auto* const dock = new PanelDock(name, title, &window_);
    panel->setParent(dock, Qt::Widget);
    dock->setWidget(panel);
    panel->show();
    dock->setVisible(shown);
    docks_.insert(name, dock);
}

void Workbench::placeDocks()
{
    for (PanelDock* dock : stepDocks_) {
        dock->setFloating(false);
        window_.addDockWidget(Qt::LeftDockWidgetArea, dock);
        if (dock != stepDocks_.front())
            window_.tabifyDockWidget(stepDocks_.front(), dock);
        dock->show();
    }
    for (const QString& name : {spectrumView, fitView, bgView, registrationDock, diagnosticsDock}) {
        dock(name)->setFloating(false);
        window_.addDockWidget(Qt::RightDockWidgetArea, dock(name), Qt::Vertical);
        dock(name)->setVisible(name == spectrumView || name == fitView);
    }
    window_.tabifyDockWidget(dock(spectrumView), dock(bgView));
    window_.tabifyDockWidget(dock(bgView), dock(diagnosticsDock));
    window_.tabifyDockWidget(dock(spectrumView), dock(registrationDock));
    for (const QString& name : {batchDock, messagesDock, historyDock}) {
        dock(name)->setFloating(false);
        window_.addDockWidget(Qt::BottomDockWidgetArea, dock(name));
        dock(name)->hide();
    }
    window_.tabifyDockWidget(dock(batchDock), dock(messagesDock));
    window_.tabifyDockWidget(dock(messagesDock), dock(historyDock));
    comesUp(step_);
    sized_ = false;
    sizeDocks();
}

/// Docks take a size only in a window that is shown.
void Workbench::sizeDocks()
{
    if (sized_ || !window_.isVisible())
        return;
    sized_ = true;
    const int right =
        qBound(leastRightWidth, qRound(window_.width() * rightShare), greatestRightWidth);
    if (window_.height() < heightOfTwoPlots) {
        window_.tabifyDockWidget(dock(spectrumView), dock(fitView));
        dock(spectrumView)->raise();
    }
    window_.resizeDocks({stepDock(step_), dock(spectrumView)}, {leftWidth, right}, Qt::Horizontal);
    window_.resizeDocks({dock(spectrumView), dock(fitView)}, {100, 100}, Qt::Vertical);
    window_.resizeDocks({dock(batchDock)}, {bottomHeight}, Qt::Vertical);
}

bool Workbench::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window_ && event->type() == QEvent::Show)
        QMetaObject::invokeMethod(
            this,
            [this] {
                sizeDocks();
                bringFloatingUp();
            },
            Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

/// A dock that was restored before its window was shown lies behind it.
void Workbench::bringFloatingUp()
{
    for (PanelDock* dock : qAsConst(docks_)) {
        if (dock->isFloating() && !dock->isHidden()) {
            dock->hide();
            dock->show();
        }
    }
}

/// The forms share a place, and the one that comes up has it alone. The others are hidden after it
/// is shown: a place without any dock would be given away, with its width.
void Workbench::comesUp(Step step)
{
    for (PanelDock* other : stepDocks_) {
        if (other != stepDock(step) && !other->isFloating())
            other->hide();
    }
    step_ = step;
    bar_->setOpen(step);
    Q_EMIT stepOpened(step);
}

void Workbench::openStep(Step step, bool focus)
{
    setImageAlone(false);
    window_.setUpdatesEnabled(false);
    stepDock(step)->bringUp();
    window_.setUpdatesEnabled(true);
    if (!focus)
        return;
    if (QWidget* const field = firstField(*formArea(step)->widget())) {
        field->setFocus(Qt::TabFocusReason);
        if (auto* const edit = qobject_cast<QLineEdit*>(field))
            edit->selectAll();
    }
}

void Workbench::setStates(const StepStates& states)
{
    bar_->setStates(states);
    for (int i = 0; i < stepCount; ++i)
        strips_[std::size_t(i)]->setState(states[std::size_t(i)]);
}

void Workbench::setImageAlone(bool alone)
{
    if (alone == isImageAlone())
        return;
    if (!alone) {
        const QByteArray before = std::exchange(besideImage_, {});
        window_.restoreState(before, layoutVersion);
        return;
    }
    besideImage_ = window_.saveState(layoutVersion);
    for (PanelDock* dock : qAsConst(docks_)) {
        if (!dock->isFloating())
            dock->hide();
    }
}

void Workbench::resetLayout()
{
    besideImage_.clear();
    window_.setUpdatesEnabled(false);
    step_ = Step::Data;
    placeDocks();
    window_.setUpdatesEnabled(true);
}

QByteArray Workbench::layout() const
{
    return isImageAlone() ? besideImage_ : window_.saveState(layoutVersion);
}

bool Workbench::restoreLayout(const QByteArray& layout)
{
    if (!window_.restoreState(layout, layoutVersion))
        return false;
    sized_ = true;
    // The step that has the place; none of them does when its user had closed it.
    for (int i = 0; i < stepCount; ++i) {
        if (!stepDocks_[std::size_t(i)]->isHidden() && !stepDocks_[std::size_t(i)]->isFloating())
            comesUp(Step(i));
    }
    return true;
}

void Workbench::focusNextRegion()
{
    QVector<QWidget*> regions{bar_,
                              stepDock(step_),
                              window_.centralWidget(),
                              dock(spectrumView),
                              dock(fitView),
                              dock(diagnosticsDock),
                              dock(registrationDock),
                              dock(batchDock),
                              dock(messagesDock),
                              dock(historyDock)};
    regions.erase(std::remove_if(regions.begin(), regions.end(),
                                 [](const QWidget* w) { return !w->isVisible(); }),
                  regions.end());
    const QWidget* const now = QApplication::focusWidget();
    int at = -1;
    for (int i = 0; i < regions.size(); ++i) {
        if (now && (regions.at(i) == now || regions.at(i)->isAncestorOf(now)))
            at = i;
    }
    QWidget* const next = regions.at((at + 1) % regions.size());
    if (next == window_.centralWidget())
        panels_.imageBox->area()->setFocus(Qt::TabFocusReason);
    else if (next == bar_)
        bar_->button(step_)->setFocus(Qt::TabFocusReason);
    else if (QWidget* const field = firstField(*next))
        field->setFocus(Qt::TabFocusReason);
}
