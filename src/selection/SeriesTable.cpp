#include "selection/SeriesTable.h"

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>

#include <algorithm>

namespace {

enum Column
{
    UseColumn,
    SeriesColumn,
    FilesColumn,
    PixelsColumn
};

/// Rows that are shown without scrolling.
constexpr int mostRows = 7;

/// The folders tell series apart when they are not all the same.
bool foldersDiffer(const QVector<ImageSeries>& series)
{
    return std::any_of(series.begin(), series.end(), [&series](const ImageSeries& one) {
        return one.folder != series.first().folder;
    });
}

QTableWidgetItem* cell(const QString& text, Qt::Alignment alignment)
{
    auto* const item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    item->setTextAlignment(int(alignment | Qt::AlignVCenter));
    return item;
}

} // namespace

SeriesTable::SeriesTable(QWidget* parent)
    : QTableWidget(0, 4, parent)
{
    setHorizontalHeaderLabels({tr("Use as"), tr("Series"), tr("Files"), tr("Pixels")});
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(SeriesColumn, QHeaderView::Stretch);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setSelectionMode(QAbstractItemView::NoSelection);
    setTextElideMode(Qt::ElideMiddle);
    setWordWrap(false);
    // The boxes within are what the keyboard goes to.
    setFocusPolicy(Qt::NoFocus);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QComboBox* SeriesTable::newUseBox(SeriesUse use)
{
    auto* const box = new QComboBox;
    // In the order of SeriesUse but for "-", which stands last.
    box->addItem(tr("I1"), int(SeriesUse::I1));
    box->addItem(tr("I0"), int(SeriesUse::I0));
    box->addItem(tr("dark"), int(SeriesUse::Dark));
    box->addItem(QStringLiteral("-"), int(SeriesUse::Unused));
    box->setCurrentIndex(box->findData(int(use)));
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    return box;
}

void SeriesTable::setSeries(const QVector<ImageSeries>& series)
{
    uses_.clear();
    setRowCount(0);
    setRowCount(series.size());
    const bool withFolders = foldersDiffer(series);
    for (int row = 0; row < series.size(); ++row) {
        const ImageSeries& one = series.at(row);
        const bool inside = withFolders && !one.folder.isEmpty();
        auto* const name =
            cell(inside ? one.folder + QLatin1Char('/') + one.pattern : one.pattern, Qt::AlignLeft);
        name->setToolTip(one.files.size() == 1
                             ? one.files.first()
                             : tr("%1\nto %2").arg(one.files.first(), one.files.last()));
        setItem(row, SeriesColumn, name);
        setItem(row, FilesColumn, cell(QString::number(one.files.size()), Qt::AlignRight));
        setItem(row, PixelsColumn,
                cell(QStringLiteral("%1 x %2").arg(one.pixels.width()).arg(one.pixels.height()),
                     Qt::AlignRight));
        QComboBox* const box = newUseBox(one.use);
        uses_.append(box);
        setCellWidget(row, UseColumn, box);
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
                [this, row] { useChosen(row); });
    }
    fitHeight();
}

int SeriesTable::rowOf(SeriesUse use) const
{
    for (int row = 0; row < uses_.size(); ++row) {
        if (uses_.at(row)->currentData().toInt() == int(use))
            return row;
    }
    return -1;
}

/// The series that had the use before gives it up.
void SeriesTable::useChosen(int row)
{
    const int chosen = uses_.at(row)->currentData().toInt();
    for (QComboBox* box : qAsConst(uses_)) {
        if (box == uses_.at(row) || box->currentData().toInt() != chosen)
            continue;
        const QSignalBlocker quiet(box);
        box->setCurrentIndex(box->findData(int(SeriesUse::Unused)));
    }
    Q_EMIT usesChanged();
}

void SeriesTable::fitHeight()
{
    resizeRowsToContents();
    int height = horizontalHeader()->sizeHint().height() + 2 * frameWidth();
    for (int row = 0; row < qMin(mostRows, rowCount()); ++row)
        height += rowHeight(row);
    setFixedHeight(height);
}

bool SeriesTable::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    return QTableWidget::eventFilter(watched, event);
}
