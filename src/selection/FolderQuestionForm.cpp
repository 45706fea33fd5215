#include "display/ElidedLabel.h"
#include "display/NumberFields.h"
#include "display/SignLine.h"
#include "selection/FolderQuestion.h"
#include "selection/SeriesTable.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

QFont boldOf(QFont font, double factor = 1.0)
{
    font.setBold(true);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

QLineEdit* newField(const char* name)
{
    auto* const field = new QLineEdit;
    field->setObjectName(QLatin1String(name));
    field->setAlignment(Qt::AlignRight);
    // Narrow where the page is, or its other texts are wide.
    const QFontMetrics metrics = field->fontMetrics();
    field->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("8948.00")) + 14);
    field->setMaximumWidth(metrics.horizontalAdvance(QStringLiteral("200000.000")) + 14);
    return field;
}

} // namespace

QWidget* FolderQuestion::newContent()
{
    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(10);
    heading_ = new ElidedLabel;
    heading_->setFont(boldOf(heading_->font(), 1.25));
    layout->addWidget(heading_);
    table_ = new SeriesTable;
    table_->setObjectName(QStringLiteral("FolderSeries"));
    layout->addWidget(table_);
    addEnergies(layout);
    addExtras(layout);
    addButtons(layout);
    layout->addStretch(1);
    return content;
}

void FolderQuestion::addEnergies(QVBoxLayout* layout)
{
    auto* const heading = new QLabel(tr("Energies of I1 and I0"));
    heading->setFont(boldOf(heading->font()));
    layout->addSpacing(4);
    layout->addWidget(heading);

    byStart_ = new QRadioButton(tr("Start"));
    byStart_->setObjectName(QStringLiteral("FolderByStart"));
    byNames_ = new QRadioButton(tr("From the names"));
    byNames_->setObjectName(QStringLiteral("FolderByNames"));
    auto* const group = new QButtonGroup(this);
    group->addButton(byStart_);
    group->addButton(byNames_);
    byStart_->setChecked(true);
    start_ = newField("FolderStart");
    step_ = newField("FolderStep");
    step_->setText(QStringLiteral("1"));
    numbers_ = new NumberFields(this);
    numbers_->watch(start_, tr("Start"));
    numbers_->watch(step_, tr("Step"));
    auto* const typed = new QHBoxLayout;
    for (QWidget* widget :
         {static_cast<QWidget*>(byStart_), static_cast<QWidget*>(start_),
          static_cast<QWidget*>(new QLabel(tr("Step"))), static_cast<QWidget*>(step_),
          static_cast<QWidget*>(new QLabel(QStringLiteral("[eV]")))})
        typed->addWidget(widget);
    typed->addStretch(1);
    layout->addLayout(typed);

    whyNoNames_ = new QLabel(tr("(none found)"));
    whyNoNames_->setWordWrap(true);
    auto* const names = new QHBoxLayout;
    names->addWidget(byNames_);
    names->addWidget(whyNoNames_, 1);
    layout->addLayout(names);

    preview_ = new SignLine;
    preview_->setObjectName(QStringLiteral("FolderPreview"));
    previewI0_ = new SignLine;
    previewI0_->setObjectName(QStringLiteral("FolderPreviewI0"));
    layout->addWidget(preview_);
    layout->addWidget(previewI0_);
}

void FolderQuestion::addExtras(QVBoxLayout* layout)
{
    references_ = new QCheckBox;
    references_->setObjectName(QStringLiteral("FolderReferences"));
    badPixels_ = new QCheckBox;
    badPixels_->setObjectName(QStringLiteral("FolderBadPixels"));
    badPixelLists_ = new QComboBox;
    badPixelLists_->setFocusPolicy(Qt::StrongFocus);
    badPixelLists_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    badPixelLists_->setMinimumContentsLength(12);
    layout->addSpacing(4);
    layout->addWidget(references_);
    layout->addWidget(badPixels_);
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(24, 0, 0, 0); // below the text of the box
    row->addWidget(badPixelLists_);
    layout->addLayout(row);
    notes_ = new QVBoxLayout;
    notes_->setSpacing(6);
    layout->addLayout(notes_);
}

void FolderQuestion::addButtons(QVBoxLayout* layout)
{
    load_ = new QPushButton;
    load_->setObjectName(QStringLiteral("FolderLoad"));
    load_->setDefault(true);
    cancel_ = new QPushButton(tr("Cancel"));
    cancel_->setObjectName(QStringLiteral("FolderCancel"));
    cancel_->setMinimumWidth(cancel_->fontMetrics().horizontalAdvance(cancel_->text()) + 32);
    for (QPushButton* button : {load_, cancel_}) {
        button->setAutoDefault(true);
        button->setMinimumHeight(qRound(1.9 * button->fontMetrics().height()));
    }
    whyNot_ = new SignLine;
    whyNot_->setObjectName(QStringLiteral("FolderWhyNot"));
    auto* const row = new QHBoxLayout;
    row->addWidget(load_);
    row->addWidget(cancel_);
    row->addStretch(1);
    layout->addSpacing(4);
    layout->addLayout(row);
    layout->addWidget(whyNot_);
}

/// The boxes of the table are made anew for each folder, and would come last.
void FolderQuestion::setTabOrders()
{
    QVector<QWidget*> order;
    for (QComboBox* box : table_->uses())
        order.append(box);
    order += QVector<QWidget*>{byStart_,   start_,         step_, byNames_, references_,
                               badPixels_, badPixelLists_, load_, cancel_};
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}
