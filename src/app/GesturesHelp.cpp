#include "app/GesturesHelp.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

struct Gesture
{
    const char* where;
    const char* what;
    const char* effect;
};

constexpr const char* image = QT_TRANSLATE_NOOP("GesturesHelp", "Image");
constexpr const char* colorBar = QT_TRANSLATE_NOOP("GesturesHelp", "Colour bar");
constexpr const char* spectrum = QT_TRANSLATE_NOOP("GesturesHelp", "Spectrum");
constexpr const char* rows = QT_TRANSLATE_NOOP("GesturesHelp", "Data rows");
constexpr const char* batchText = QT_TRANSLATE_NOOP("GesturesHelp", "Batch text");
constexpr const char* anywhere = QT_TRANSLATE_NOOP("GesturesHelp", "Anywhere");
constexpr const char* keys = QT_TRANSLATE_NOOP("GesturesHelp", "Main window");
constexpr const char* drag = QT_TRANSLATE_NOOP("GesturesHelp", "Drag");
constexpr const char* wheel = QT_TRANSLATE_NOOP("GesturesHelp", "Wheel");

const Gesture gestures[] = {
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Move"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Move the cursor")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Alt + move"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Leave the cursor where it is")},
    {image, drag, QT_TRANSLATE_NOOP("GesturesHelp", "Select an area")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Ctrl + drag"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Select an area and zoom to it")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Shift + drag"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Move the view")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Right click"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Clear the selection")},
    {image, wheel, QT_TRANSLATE_NOOP("GesturesHelp", "Zoom about the cursor")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Wheel near the left or right side"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Zoom the height alone, without square pixels")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Wheel near the top or bottom"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Zoom the width alone, without square pixels")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Arrows"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Browse the images")},
    {image, QT_TRANSLATE_NOOP("GesturesHelp", "Shift + arrows"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Move the cursor pixel by pixel")},
    {colorBar, drag, QT_TRANSLATE_NOOP("GesturesHelp", "Move the nearer end of the scale")},
    {colorBar, QT_TRANSLATE_NOOP("GesturesHelp", "Double click"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Automatic range")},
    {spectrum, drag, QT_TRANSLATE_NOOP("GesturesHelp", "Move along the energy axis")},
    {spectrum, wheel, QT_TRANSLATE_NOOP("GesturesHelp", "Zoom the energy axis about the cursor")},
    {rows, QT_TRANSLATE_NOOP("GesturesHelp", "Drop files"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Load them as if they were selected there")},
    {anywhere, QT_TRANSLATE_NOOP("GesturesHelp", "Drop a folder"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Ask what of it is to be loaded")},
    {batchText, QT_TRANSLATE_NOOP("GesturesHelp", "Ctrl+Space"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Offer commands or files")},
    {batchText, QT_TRANSLATE_NOOP("GesturesHelp", "Ctrl+F"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Find a text")},
    {batchText, QT_TRANSLATE_NOOP("GesturesHelp", "F3 or Shift+F3"),
     QT_TRANSLATE_NOOP("GesturesHelp", "Find the next one, or the one before")},
};

void addRow(QTableWidget& table, const QStringList& cells)
{
    const int row = table.rowCount();
    table.insertRow(row);
    for (int i = 0; i < cells.size(); ++i)
        table.setItem(row, i, new QTableWidgetItem(cells[i]));
}

/// The text of an action without the marks that only a menu needs.
QString plainText(const QAction& action)
{
    QString text = action.text();
    text.remove(QLatin1Char('&'));
    return text;
}

QString keysOf(const QAction& action)
{
    QStringList texts;
    for (const QKeySequence& key : action.shortcuts())
        texts.append(key.toString(QKeySequence::NativeText));
    return texts.join(QStringLiteral(" , "));
}

} // namespace

GesturesHelp::GesturesHelp(const QList<QAction*>& actions, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Gestures and Keys"));
    auto* table = new QTableWidget(0, 3);
    table->setHorizontalHeaderLabels({tr("Where"), tr("What"), tr("Effect")});
    for (const Gesture& g : gestures)
        addRow(*table, {tr(g.where), tr(g.what), tr(g.effect)});
    for (const QAction* action : actions) {
        if (!action->shortcuts().isEmpty())
            addRow(*table, {tr(keys), keysOf(*action), plainText(*action)});
    }
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setFocusPolicy(Qt::NoFocus);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->resizeColumnsToContents();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* column = new QVBoxLayout(this);
    column->addWidget(table);
    column->addWidget(buttons);
    resize(660, 540);
}
