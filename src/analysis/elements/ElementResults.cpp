#include "analysis/elements/ElementResults.h"

#include "common/FieldText.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

ElementResults::ElementResults(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , table_(new QTableWidget(this))
{
    setObjectName(QStringLiteral("ElementResults"));
    setWindowTitle(tr("Results of the element analysis"));
    const QStringList captions{tr("Element"), tr("dmut"),    tr("N. dmut"), tr("Mut+"),
                               tr("Mut-"),    tr("dE [eV]"), tr("ROI"),     tr("N.ROI")};
    table_->setColumnCount(captions.size());
    table_->setHorizontalHeaderLabels(captions);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->verticalHeader()->hide();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const copy = buttons->addButton(tr("Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("CopyElementResults"));
    copy->setToolTip(tr("Copy the table as text, columns parted by tabs"));
    auto* const column = new QVBoxLayout(this);
    column->addWidget(table_);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(text()); });
    resize(640, 240);
}

void ElementResults::setRows(const QStringList& names, const QVector<ElementValues>& values)
{
    table_->setRowCount(values.size());
    for (int row = 0; row < values.size(); ++row) {
        const ElementValues& v = values.at(row);
        table_->setItem(row, 0, new QTableWidgetItem(names.value(row)));
        int column = 0;
        for (const double value :
             {v.jump, v.jumpRatio, v.above, v.below, v.shift, v.roi, v.roiRatio}) {
            auto* const item = new QTableWidgetItem(fieldText(value));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table_->setItem(row, ++column, item);
        }
    }
    table_->resizeColumnsToContents();
}

QString ElementResults::text() const
{
    QString text;
    for (int row = -1; row < table_->rowCount(); ++row) {
        for (int column = 0; column < table_->columnCount(); ++column) {
            const QTableWidgetItem* const item =
                row < 0 ? table_->horizontalHeaderItem(column) : table_->item(row, column);
            text += (column > 0 ? QStringLiteral("\t") : QString()) + item->text();
        }
        text += QLatin1Char('\n');
    }
    return text;
}
