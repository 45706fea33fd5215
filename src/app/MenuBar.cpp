#include "app/MenuBar.h"

#include "analysis/Analyzer.h"
#include "app/ButtonAction.h"
#include "app/GesturesHelp.h"
#include "app/Messages.h"
#include "app/Windows.h"
#include "batch/BatchCtrl.h"
#include "calibration/CalibCtrl.h"
#include "common/WindowState.h"
#include "conduct/SaveConductor.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>

namespace {

/// A step of the zoom keys, that of the wheel.
constexpr double zoomStep = 1.1;

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

    Entry() = default;
    Entry(const char* t, const char* b, const QList<QKeySequence>& k = {})
        : text(t)
        , keys(k)
        , button(b)
    {
    }
    Entry(const char* t, Function f, const QList<QKeySequence>& k = {})
        : text(t)
        , keys(k)
        , run(f)
    {
    }

    const char* text = nullptr;
    QList<QKeySequence> keys;
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
            {QT_TRANSLATE_NOOP("MenuBar", "Open I&1 Images..."),
             [](MenuBar& b) { b.parts_.dataBox.i1Row()->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Open I&0 Images..."),
             [](MenuBar& b) { b.parts_.dataBox.i0Row()->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Open &Dark Image..."), "SelectDark"},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "Save &Image..."), "SaveImage"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Save Data..."), "SaveData"},
            {QT_TRANSLATE_NOOP("MenuBar", "Save &All..."),
             [](MenuBar& b) { b.parts_.saving.showSaveAllDataDialog(); }},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Quit"),
             [](MenuBar& b) { b.parts_.window.close(); }, {Qt::CTRL + Qt::Key_Q}},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&View"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Previous Image"), "Prev", {Qt::Key_Left}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Next Image"), "Next", {Qt::Key_Right}},
            {},
            // Without the Shift key that plus needs on many keyboards.
            {QT_TRANSLATE_NOOP("MenuBar", "Zoom &In"),
             [](MenuBar& b) { b.parts_.imageBox.area()->zoomBy(1.0 / zoomStep); },
             {Qt::Key_Plus, Qt::Key_Equal}},
            {QT_TRANSLATE_NOOP("MenuBar", "Zoom &Out"),
             [](MenuBar& b) { b.parts_.imageBox.area()->zoomBy(zoomStep); }, {Qt::Key_Minus}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Whole Image"), "ResetScale", {Qt::Key_0}},
            {QT_TRANSLATE_NOOP("MenuBar", "&Zoom to Selection"), "ZoomIn"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Clear Selection"),
             [](MenuBar& b) { b.parts_.imageBox.area()->clearSelection(); }},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "Set &All"), "CBarAll"},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&Windows"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Spectrum"), "ShowXafsView"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Calibration"), "OpenCalibCtrl"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Analyzer"), "ShowAnalyzer"},
            {QT_TRANSLATE_NOOP("MenuBar", "Analyzer&2"), "ShowAnalyzer2"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Image Processor"), "ShowImgProc"},
            {QT_TRANSLATE_NOOP("MenuBar", "Back&ground"), "ShowBG"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Batch"), "BatchCtrlB"},
            {QT_TRANSLATE_NOOP("MenuBar", "&Messages"), [](MenuBar& b) { bringToFront(b.parts_.windows.messages.get()); }},
            {QT_TRANSLATE_NOOP("MenuBar", "Save C&onfiguration"), "SaveDataConfig"},
        }},
        {QT_TRANSLATE_NOOP("MenuBar", "&Batch"), {
            {QT_TRANSLATE_NOOP("MenuBar", "&Batch Window"), "BatchCtrlB"},
            {},
            {QT_TRANSLATE_NOOP("MenuBar", "&Open Batch File..."), [](MenuBar& b) { b.openBatchFile(); }},
            {QT_TRANSLATE_NOOP("MenuBar", "&Execute"),
             [](MenuBar& b) { clickIn(*b.parts_.windows.batchCtrl, "Exec"); }},
            {QT_TRANSLATE_NOOP("MenuBar", "&Stop"), [](MenuBar& b) { clickIn(*b.parts_.windows.batchCtrl, "Stop"); }},
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
    }
    // A click on the image takes the keys away from a field that has them.
    parts_.imageBox.area()->setFocusPolicy(Qt::ClickFocus);
    connectOpeners();
}

/// The buttons that open windows; the analysis panel brings its view along.
void MenuBar::connectOpeners()
{
    const Windows& w = parts_.windows;
    const std::pair<const char*, QWidget*> openers[] = {
        {"ShowXafsView", w.xafsView.get()}, {"OpenCalibCtrl", w.calibCtrl.get()},
        {"ShowAnalyzer", w.analyzer.get()}, {"BatchCtrlB", w.batchCtrl.get()},
        {"ShowBG", w.bgView.get()},         {"SaveDataConfig", w.saveDataCfg.get()}};
    connect(buttonIn(parts_.window, "ShowAnalyzer"), &QPushButton::clicked, w.analyzer->view(),
            [view = w.analyzer->view()] { bringToFront(view); });
    for (const auto& [button, window] : openers)
        connect(buttonIn(parts_.window, button), &QPushButton::clicked, window,
                [opened = window] { bringToFront(opened); });
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
}

void MenuBar::openBatchFile()
{
    bringToFront(parts_.windows.batchCtrl.get());
    clickIn(*parts_.windows.batchCtrl, "Load");
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
