#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "app/ButtonAction.h"
#include "app/GesturesHelp.h"
#include "app/Messages.h"
#include "batch/BatchCtrl.h"
#include "calibration/CalibCtrl.h"
#include "common/WindowState.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"

#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

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
struct Body::MenuEntry
{
    using Function = void (*)(Body& body);

    MenuEntry() = default;
    MenuEntry(const char* t, const char* b, const QList<QKeySequence>& k = {})
        : text(t)
        , keys(k)
        , button(b)
    {
    }
    MenuEntry(const char* t, Function f, const QList<QKeySequence>& k = {})
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

struct Body::MenuTable
{
    const char* title;
    QVector<MenuEntry> entries;
};

QVector<Body::MenuTable> Body::menuTables()
{
    // clang-format off
    return {
        {QT_TRANSLATE_NOOP("Body", "&File"), {
            {QT_TRANSLATE_NOOP("Body", "Open I&1 Images..."),
             [](Body& b) { b.i1_.row->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("Body", "Open I&0 Images..."),
             [](Body& b) { b.i0_.row->dialog()->show(); }},
            {QT_TRANSLATE_NOOP("Body", "Open &Dark Image..."), "SelectDark"},
            {},
            {QT_TRANSLATE_NOOP("Body", "Save &Image..."), "SaveImage"},
            {QT_TRANSLATE_NOOP("Body", "&Save Data..."), "SaveData"},
            {QT_TRANSLATE_NOOP("Body", "Save &All..."),
             [](Body& b) { b.showSaveAllDataDialog(); }},
            {},
            {QT_TRANSLATE_NOOP("Body", "&Quit"),
             [](Body& b) { b.close(); }, {Qt::CTRL + Qt::Key_Q}},
        }},
        {QT_TRANSLATE_NOOP("Body", "&View"), {
            {QT_TRANSLATE_NOOP("Body", "&Previous Image"), "Prev", {Qt::Key_Left}},
            {QT_TRANSLATE_NOOP("Body", "&Next Image"), "Next", {Qt::Key_Right}},
            {},
            // Without the Shift key that plus needs on many keyboards.
            {QT_TRANSLATE_NOOP("Body", "Zoom &In"),
             [](Body& b) { b.imageBox_->area()->zoomBy(1.0 / zoomStep); },
             {Qt::Key_Plus, Qt::Key_Equal}},
            {QT_TRANSLATE_NOOP("Body", "Zoom &Out"),
             [](Body& b) { b.imageBox_->area()->zoomBy(zoomStep); }, {Qt::Key_Minus}},
            {QT_TRANSLATE_NOOP("Body", "&Whole Image"), "ResetScale", {Qt::Key_0}},
            {QT_TRANSLATE_NOOP("Body", "&Zoom to Selection"), "ZoomIn"},
            {QT_TRANSLATE_NOOP("Body", "&Clear Selection"),
             [](Body& b) { b.imageBox_->area()->clearSelection(); }},
            {},
            {QT_TRANSLATE_NOOP("Body", "Set &All"), "CBarAll"},
        }},
        {QT_TRANSLATE_NOOP("Body", "&Windows"), {
            {QT_TRANSLATE_NOOP("Body", "&Spectrum"), "ShowXafsView"},
            {QT_TRANSLATE_NOOP("Body", "&Calibration"), "OpenCalibCtrl"},
            {QT_TRANSLATE_NOOP("Body", "&Analyzer"), "ShowAnalyzer"},
            {QT_TRANSLATE_NOOP("Body", "Analyzer&2"), "ShowAnalyzer2"},
            {QT_TRANSLATE_NOOP("Body", "&Image Processor"), "ShowImgProc"},
            {QT_TRANSLATE_NOOP("Body", "Back&ground"), "ShowBG"},
            {QT_TRANSLATE_NOOP("Body", "&Batch"), "BatchCtrlB"},
            {QT_TRANSLATE_NOOP("Body", "&Messages"), [](Body& b) { bringToFront(b.messages_); }},
            {QT_TRANSLATE_NOOP("Body", "Save C&onfiguration"), "SaveDataConfig"},
        }},
        {QT_TRANSLATE_NOOP("Body", "&Batch"), {
            {QT_TRANSLATE_NOOP("Body", "&Batch Window"), "BatchCtrlB"},
            {},
            {QT_TRANSLATE_NOOP("Body", "&Open Batch File..."), [](Body& b) { b.openBatchFile(); }},
            {QT_TRANSLATE_NOOP("Body", "&Execute"),
             [](Body& b) { clickIn(*b.batchCtrl_, "Exec"); }},
            {QT_TRANSLATE_NOOP("Body", "&Stop"), [](Body& b) { clickIn(*b.batchCtrl_, "Stop"); }},
        }},
        {QT_TRANSLATE_NOOP("Body", "&Help"), {
            {QT_TRANSLATE_NOOP("Body", "&Gestures and Keys"), [](Body& b) { b.showGestures(); }},
            {QT_TRANSLATE_NOOP("Body", "&About Morvenkite"), [](Body& b) { b.showAbout(); }},
        }},
    };
    // clang-format on
}

void Body::setupMenuBar()
{
    for (const MenuTable& table : menuTables()) {
        QMenu* menu = menuBar()->addMenu(tr(table.title));
        for (const MenuEntry& entry : table.entries)
            addEntry(*menu, entry);
    }
    // A click on the image takes the keys away from a field that has them.
    imageBox_->area()->setFocusPolicy(Qt::ClickFocus);

    // The buttons that open windows; the Analyzer's own show() brings its view along.
    const std::pair<const char*, QWidget*> openers[] = {{"ShowXafsView", xafsView_},
                                                        {"OpenCalibCtrl", calibCtrl_},
                                                        {"ShowAnalyzer", analyzer_},
                                                        {"BatchCtrlB", batchCtrl_}};
    for (const auto& [button, window] : openers)
        connect(buttonIn(*this, button), &QPushButton::clicked, window,
                [w = window] { bringToFront(w); });
    connect(dataBox_, &DataBox::showBg, bgView_, [this] { bringToFront(bgView_); });
    connect(saveBox_, &SaveBox::showConfig, saveDataCfg_, [this] { bringToFront(saveDataCfg_); });
}

void Body::addEntry(QMenu& menu, const MenuEntry& entry)
{
    if (!entry.text) {
        menu.addSeparator();
        return;
    }
    QAction* action = nullptr;
    if (entry.button) {
        action = new ButtonAction(tr(entry.text), buttonIn(*this, entry.button), &menu);
        menu.addAction(action);
    } else {
        action = menu.addAction(tr(entry.text), this, [this, run = entry.run] { run(*this); });
    }
    action->setShortcuts(entry.keys);
}

void Body::openBatchFile()
{
    bringToFront(batchCtrl_);
    clickIn(*batchCtrl_, "Load");
}

void Body::showGestures()
{
    auto* help = findChild<GesturesHelp*>();
    if (!help) {
        QList<QAction*> actions;
        for (const QAction* menu : menuBar()->actions())
            actions += menu->menu()->actions();
        help = new GesturesHelp(actions, this);
    }
    bringToFront(help);
}

void Body::showAbout()
{
    auto* box =
        new QMessageBox(QMessageBox::NoIcon, tr("About Morvenkite"),
                        tr("<h3>Morvenkite %1</h3>"
                           "<p>Viewer and analyser for imaging XAFS measurements</p>"
                           "<p>Qt %2</p>")
                            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())),
                        QMessageBox::Close, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIconPixmap(windowIcon().pixmap(64));
    box->open();
}
