#include "app/MenuBar.h"

#include "analysis/Analyzer.h"
#include "analysis/diagnostics/Analyzer2.h"
#include "app/ButtonAction.h"
#include "app/GesturesHelp.h"
#include "app/Messages.h"
#include "app/Panels.h"
#include "app/Sessions.h"
#include "app/Shell.h"
#include "app/Workbench.h"
#include "app/WorkbenchStore.h"
#include "batch/BatchCtrl.h"
#include "batch/HistoryPanel.h"
#include "common/WindowState.h"
#include "conduct/FolderConductor.h"
#include "conduct/SaveConductor.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/PanelDock.h"
#include "display/XafsView.h"
#include "output/SaveDataCfg.h"
#include "registration/ImgProc.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"

#include <QActionGroup>
#include <QDir>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>

namespace {

QPushButton* buttonIn(const QWidget& window, const char* name)
{
    auto* button = window.findChild<QPushButton*>(QLatin1String(name));
    Q_ASSERT_X(button, "buttonIn", name);
    return button;
}

void clickIn(const QWidget& window, const char* name)
{
    buttonIn(window, name)->click();
}

} // namespace

/// An entry of a menu: it clicks a button of the form and is enabled as the button is, or it runs a
/// function, or it is a separator.
struct MenuBar::Entry
{
    using Function = void (*)(MenuBar& bar);

    /// Where its keys act.
    enum Reach
    {
        Everywhere,
        OnImage ///< with the keys in the middle of the window; elsewhere they mean something else
    };

    Entry() = default;
    Entry(const char* t, const char* b, const QList<QKeySequence>& k = {}, Reach r = Everywhere)
        : text(t)
        , keys(k)
        , reach(r)
        , button(b)
    {
    }
    Entry(const char* t, Function f, const QList<QKeySequence>& k = {}, Reach r = Everywhere)
        : text(t)
        , keys(k)
        , reach(r)
        , run(f)
    {
    }

    const char* text = nullptr;
    QList<QKeySequence> keys;
    Reach reach = Everywhere;
    const char* button = nullptr; ///< its object name
    Function run = nullptr;
};

struct MenuBar::Table
{
    const char* title;
    QVector<Entry> entries;
};

QVector<MenuBar::Table> MenuBar::tables()
{
    // clang-format off
    return {
        {QT_TRANSLATE_NOOP("MenuBar", "&File"), {
            {QT_TRANSLATE_NOOP("MenuBar", "Open &Folder..."),
             [](MenuBar& b) { b.parts_.folders.chooseFolder(); }, {Qt::CTRL + Qt::Key_O}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Open Session..."),
             [](MenuBar& b) { b.parts_.sessions.chooseToOpen(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Sa&ve Session..."),
             [](MenuBar& b) { b.parts_.sessions.chooseToSave(); }},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "Open I&1 Images..."),
             [](MenuBar& b) { b.parts_.panels.dataBox->i1Row()->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Open I&0 Images..."),
             [](MenuBar& b) { b.parts_.panels.dataBox->i0Row()->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Open &Dark Image..."), "SelectDark"},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "Save &Image..."), "SaveImage"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Save Data..."), "SaveData"},
            {QT_TRANSLATE_NOOP("MenuBar", "Save &All..."),
             [](MenuBar& b) { b.parts_.saving.showSaveAllDataDialog(); }},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "A&nalyze or Stop"), "AskAnalyze", {Qt::Key_F5}},
            {QT_TRANSLATE_NOOP("MenuBar", "Stop &Everything"),
             [](MenuBar& b) { b.parts_.shell.stopAll(); }, {Qt::CTRL + Qt::Key_Period}},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Quit"),
             [](MenuBar& b) { b.parts_.window.close(); }, {Qt::CTRL + Qt::Key_Q}},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&View"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Previous Image"), "Prev", {Qt::Key_Left}, Entry::OnImage},
            {QT_TRANSLATE_NOOP("MenuBar", "&Next Image"), "Next", {Qt::Key_Right}, Entry::OnImage},
            {},
            // Without the Shift key that plus needs on many keyboards.
            {QT_TRANSLATE_NOOP("MenuBar", "Zoom &In"), [](MenuBar& b) { b.box().zoomIn(); },
             {Qt::Key_Plus, Qt::Key_Equal}, Entry::OnImage},
            {QT_TRANSLATE_NOOP("MenuBar", "Zoom &Out"), [](MenuBar& b) { b.box().zoomOut(); },
             {Qt::Key_Minus}, Entry::OnImage},
            {QT_TRANSLATE_NOOP("MenuBar", "&Whole Image"), "ResetScale", {Qt::Key_0}, Entry::OnImage},
            {QT_TRANSLATE_NOOP("MenuBar", "&Zoom to Selection"), "ZoomIn"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Clear Selection"),
             [](MenuBar& b) { b.box().area()->clearSelection(); }},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "Set &All"), "CBarAll"},
            {QT_TRANSLATE_NOOP("MenuBar", "Image A&lone"),
             [](MenuBar& b) { b.parts_.workbench.setImageAlone(!b.parts_.workbench.isImageAlone()); },
             {Qt::Key_F9}},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&Windows"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Data Step"), [](MenuBar& b) { b.openStep(Step::Data); },
             {Qt::CTRL + Qt::Key_1}},
            {QT_TRANSLATE_NOOP("MenuBar", "Spectrum S&tep"),
             [](MenuBar& b) { b.openStep(Step::Spectrum); }, {Qt::CTRL + Qt::Key_2}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Calibration"),
             [](MenuBar& b) { b.openStep(Step::Calibration); }, {Qt::CTRL + Qt::Key_3}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Analyzer"), [](MenuBar& b) { b.openStep(Step::Analysis); },
             {Qt::CTRL + Qt::Key_4}},
            {QT_TRANSLATE_NOOP("MenuBar", "Sa&ve Step"), [](MenuBar& b) { b.openStep(Step::Save); },
             {Qt::CTRL + Qt::Key_5}},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Spectrum"), "ShowXafsView"},
            {QT_TRANSLATE_NOOP("MenuBar", "Analyzing S&pectrum"), "ShowView"},
            {QT_TRANSLATE_NOOP("MenuBar", "Back&ground"), "ShowBG"},
            {QT_TRANSLATE_NOOP("MenuBar", "Analyzer&2"), "ShowAnalyzer2"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Image Processor"), "ShowImgProc"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Batch"), "BatchCtrlB", {Qt::CTRL + Qt::Key_B}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Messages"),
             [](MenuBar& b) { raisePanel(b.parts_.panels.messages.get()); }, {Qt::CTRL + Qt::Key_M}},
            {QT_TRANSLATE_NOOP("MenuBar", "&History"),
             [](MenuBar& b) { raisePanel(b.parts_.panels.history.get()); }, {Qt::CTRL + Qt::Key_H}},
            {QT_TRANSLATE_NOOP("MenuBar", "Save C&onfiguration"), "SaveDataConfig"},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Next Region"),
             [](MenuBar& b) { b.parts_.workbench.focusNextRegion(); }, {Qt::Key_F6}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Reset Layout"),
             [](MenuBar& b) { b.parts_.workbench.resetLayout(); }},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&Batch"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Batch Window"), "BatchCtrlB"},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Open Batch File..."), [](MenuBar& b) { b.openBatchFile(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "&Execute"),
             [](MenuBar& b) { clickIn(*b.parts_.panels.batchCtrl, "Exec"); }},
            {QT_TRANSLATE_NOOP("MenuBar", "&Stop"),
             [](MenuBar& b) { clickIn(*b.parts_.panels.batchCtrl, "Stop"); }},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&Help"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Gestures and Keys"), [](MenuBar& b) { b.showGestures(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "&About Morvenkite"), [](MenuBar& b) { b.showAbout(); }},
        }},
    };
    // clang-format on
}

MenuBar::MenuBar(const Parts& parts)
    : parts_(parts)
{
    for (const Table& table : tables()) {
        QMenu* menu = parts_.window.menuBar()->addMenu(tr(table.title));
        for (const Entry& entry : table.entries)
            addEntry(*menu, entry);
        menus_.append(menu);
    }
    addRecent(tr("Recen&t Sessions"), 2, recentSessions, tr("No session was saved yet"),
              [this](const QString& path) { parts_.sessions.open(path); });
    addRecent(tr("&Recent Folders"), 1, recentFolders, tr("No folder was opened yet"),
              [this](const QString& path) { parts_.folders.open(path); });
    addSwitches();
    addColours();
    connectOpeners();
}

ImageBox& MenuBar::box() const
{
    return *parts_.panels.imageBox;
}

void MenuBar::openStep(Step step)
{
    parts_.workbench.openStep(step, true);
}

/// The buttons that open windows.
void MenuBar::connectOpeners()
{
    const Panels& p = parts_.panels;
    const std::pair<const char*, QWidget*> openers[] = {
        {"ShowXafsView", p.xafsView.get()},   {"BatchCtrlB", p.batchCtrl.get()},
        {"ShowBG", p.bgView.get()},           {"ShowImgProc", p.imgProc.get()},
        {"ShowAnalyzer2", p.analyzer2.get()}, {"SaveDataConfig", p.saveDataCfg.get()}};
    for (const auto& [button, panel] : openers)
        connect(buttonIn(parts_.window, button), &QPushButton::clicked, panel,
                [opened = panel] { raisePanel(opened); });
}

void MenuBar::addEntry(QMenu& menu, const Entry& entry)
{
    if (!entry.text) {
        menu.addSeparator();
        return;
    }
    QAction* action = nullptr;
    if (entry.button) {
        action = new ButtonAction(tr(entry.text), buttonIn(parts_.window, entry.button), &menu);
        menu.addAction(action);
    } else {
        action = menu.addAction(tr(entry.text), this, [this, run = entry.run] { run(*this); });
    }
    action->setShortcuts(entry.keys);
    if (entry.reach == Entry::OnImage) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        parts_.window.centralWidget()->addAction(action);
    }
}

/// A list of places behind so many entries of the first menu; filled when it opens.
void MenuBar::addRecent(const QString& title, int behind, QStringList (*paths)(),
                        const QString& none, const std::function<void(const QString&)>& open)
{
    QMenu* const file = menus_.first();
    auto* const recent = new QMenu(title, file);
    file->insertMenu(file->actions().at(behind), recent);
    connect(recent, &QMenu::aboutToShow, this, [this, recent, paths, none, open] {
        recent->clear();
        for (const QString& path : paths())
            recent->addAction(QDir::toNativeSeparators(path), this, [open, path] { open(path); });
        if (recent->isEmpty())
            recent->addAction(none)->setEnabled(false);
    });
}

/// Entries that show how the image is shown.
void MenuBar::addSwitches()
{
    QMenu* const view = menus_.at(1);
    view->addSeparator();
    QAction* const square = view->addAction(tr("S&quare Pixels"));
    square->setCheckable(true);
    square->setChecked(box().squarePixels());
    connect(square, &QAction::triggered, &box(), &ImageBox::setSquarePixels);
    connect(&box(), &ImageBox::squarePixelsChanged, square, &QAction::setChecked);
    QAction* const sections = view->addAction(tr("S&ections"));
    sections->setCheckable(true);
    sections->setShortcut(Qt::Key_F8);
    sections->setChecked(box().sectionsVisible());
    connect(sections, &QAction::triggered, &box(), &ImageBox::setSectionsVisible);
    connect(&box(), &ImageBox::sectionsVisibleChanged, sections, &QAction::setChecked);
}

void MenuBar::addColours()
{
    auto* const menu = menus_.at(1)->addMenu(tr("C&olours"));
    auto* const group = new QActionGroup(menu);
    const std::pair<Colours, QString> choices[] = {{Colours::Desktop, tr("As the &Desktop")},
                                                   {Colours::Light, tr("&Light")},
                                                   {Colours::Dark, tr("D&ark")}};
    for (const auto& [colours, text] : choices) {
        QAction* const action = menu->addAction(text);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [colours = colours] {
            applyColours(colours);
            keepColours(colours);
        });
        connect(menu, &QMenu::aboutToShow, action,
                [action, colours = colours] { action->setChecked(keptColours() == colours); });
    }
}

void MenuBar::openBatchFile()
{
    raisePanel(parts_.panels.batchCtrl.get());
    clickIn(*parts_.panels.batchCtrl, "Load");
}

void MenuBar::showGestures()
{
    auto* help = parts_.window.findChild<GesturesHelp*>();
    if (!help) {
        QList<QAction*> actions;
        for (const QAction* menu : parts_.window.menuBar()->actions())
            actions += menu->menu()->actions();
        help = new GesturesHelp(actions, &parts_.window);
    }
    bringToFront(help);
}

void MenuBar::showAbout()
{
    auto* box =
        new QMessageBox(QMessageBox::NoIcon, tr("About Morvenkite"),
                        tr("<h3>Morvenkite %1</h3>"
                           "<p>Viewer and analyser for imaging XAFS measurements</p>"
                           "<p>Qt %2</p>")
                            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())),
                        QMessageBox::Close, &parts_.window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIconPixmap(parts_.window.windowIcon().pixmap(64));
    box->open();
}
