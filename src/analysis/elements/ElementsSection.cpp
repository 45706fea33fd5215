#include "analysis/elements/ElementsSection.h"

#include "analysis/elements/ElemCtrl.h"
#include "analysis/elements/ElementsWalk.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/NumberFields.h"
#include "display/ReadingOrder.h"
#include "display/RunRow.h"
#include "maps/MapBook.h"
#include "ui_ElementsSection.h"

#include <QButtonGroup>

ElementsSection::ElementsSection(MapBook& book, QWidget* parent)
    : AnalysisSection(AnalysisWalk::Elements, QStringLiteral("SelElemA"), tr("Element Analysis"),
                      parent)
    , ui_(std::make_unique<Ui_ElementsSection>())
    , book_(book)
{
    ui_->setupUi(body());
    chooser()->setToolTip(tr("Measure the jumps of several elements in a scan over their edges"));
    ui_->CorTh->setText(fieldText(corTh_));
    ui_->ElemsRun->setNames(QStringLiteral("AskAnalyzeElems"), QStringLiteral("ElemsProgress"));
    ui_->ElemsRun->setTips({tr("Analyse the elements in each block of the selected area"),
                            tr("Stop the analysis; the maps keep what is done")});
    numbers()->watch(ui_->CorTh, tr("Threshold of the correlation"));
    numbers()->watch(ui_->AElemsCds->field(AElemsConds::DMut), tr("Background value of dmut"));
    numbers()->watch(ui_->AElemsCds->field(AElemsConds::DE), tr("Background value of dE"));
    numbers()->watch(ui_->AElemsCds->field(AElemsConds::ROI), tr("Background value of ROI"));
    makeGroups();
    placeCaptions();
    connectForm();
}

ElementsSection::~ElementsSection() = default;

void ElementsSection::connectForm()
{
    connect(ui_->AElemNames, &QLineEdit::editingFinished, this, &ElementsSection::editedNames);
    // Leaving the field as it was must not make the maps anew.
    connect(ui_->CorTh, &QLineEdit::editingFinished, this, [this] {
        if (fieldValue(ui_->CorTh) != corTh_)
            newCorTh();
    });
    connect(ui_->SetSTD, &QPushButton::clicked, this, &ElementsSection::setElemsStd);
    connect(ui_->ShowElmARes, &QPushButton::clicked, this, &ElementsSection::showResults);
    connect(ui_->ReCalcCor, &QPushButton::clicked, this, &ElementsSection::askedRecalc);
    connect(ui_->AElemsCds, &AElemsConds::changed, this, &ElementsSection::changed);
    connect(ui_->AElemsCds, &AElemsConds::edited, this, &ElementsSection::askReanalyze);
    // The maps of elements are shown only while their analysis is chosen.
    connect(chooser(), &QAbstractButton::toggled, this, &ElementsSection::changedSelection);
}

void ElementsSection::placeCaptions()
{
    QFont small = font();
    small.setPointSizeF(0.85 * small.pointSizeF());
    for (QLabel* label : {ui_->ButtonsCaption, ui_->JumpCaption, ui_->RatioCaption})
        label->setFont(small);
    for (QLabel* label : {ui_->JumpCaption, ui_->RatioCaption})
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui_->CaptionFrame->hide();
}

/// Groups whose ids are the rows.
void ElementsSection::makeGroups()
{
    delete targetGroup_;
    delete showGroup_;
    targetGroup_ = new QButtonGroup(this);
    showGroup_ = new QButtonGroup(this);
    connect(targetGroup_, &QButtonGroup::idToggled, this, [this](int, bool f) {
        if (!f)
            return;
        Q_EMIT changed();
        Q_EMIT askReanalyze();
    });
    connect(showGroup_, &QButtonGroup::idClicked, this, &ElementsSection::changedSelection);
}

/// Leaving the field as it was must not cost the maps.
void ElementsSection::editedNames()
{
    if (listText() != listed_)
        newElems();
}

/// All that rows are made of.
QString ElementsSection::listText() const
{
    return ui_->AElemNames->text() +
           (ui_->SortByANo->isChecked() ? QStringLiteral("\n") : QString());
}

void ElementsSection::setTargetElements(const QString& elements)
{
    if (!isWalking())
        ui_->AElemNames->setText(elements);
    newElems();
}

void ElementsSection::newElems()
{
    if (isWalking()) {
        fault(QStringLiteral("The target elements stay: their analysis runs"));
        return;
    }
    listed_ = listText();
    QStringList faults;
    QVector<ListedElement> listed = readElementList(ui_->AElemNames->text(), faults);
    for (const QString& text : qAsConst(faults))
        fault(text);
    if (ui_->SortByANo->isChecked())
        sortByAtomicNumber(listed);
    removeRows();
    for (const ListedElement& element : qAsConst(listed))
        addRow(new ElemCtrl(element, ui_->AElemBaseFrame));
    ui_->CaptionFrame->setVisible(!elems_.isEmpty());
    tabInReadingOrder(this);
    renewMaps();
    Q_EMIT rowsChanged();
    Q_EMIT changed();
    Q_EMIT changedSelection();
    Q_EMIT askReanalyze();
}

void ElementsSection::removeRows()
{
    makeGroups();
    for (ElemCtrl* row : qAsConst(elems_)) {
        row->forgetFields(*numbers());
        delete row;
    }
    elems_.clear();
}

/// The first row is the target, and shows its maps.
void ElementsSection::addRow(ElemCtrl* row)
{
    const int no = elems_.size();
    elems_.append(row);
    ui_->AElemBaseLayout->addWidget(row);
    row->targetButton()->setChecked(no == 0);
    row->showButton()->setChecked(no == 0);
    targetGroup_->addButton(row->targetButton(), no);
    showGroup_->addButton(row->showButton(), no);
    row->watchFields(*numbers());
    connect(row, &ElemCtrl::changed, this, &ElementsSection::changed);
    connect(row, &ElemCtrl::edited, this, &ElementsSection::askReanalyze);
    row->show();
    const ElemCtrl::Columns columns = row->columns();
    ui_->Captions->setSpacing(columns.gap);
    ui_->Captions->setContentsMargins(0, 0, columns.arrow + columns.gap, 0);
    ui_->JumpCaption->setMinimumWidth(columns.field);
    ui_->RatioCaption->setMinimumWidth(columns.field);
}

QVector<ImageButton> ElementsSection::imageButtons() const
{
    return {{FixedImage::ElemJump, ui_->ShowElemsDMut0},
            {FixedImage::ElemJumpRatio, ui_->ShowElemsDMutN},
            {FixedImage::ElemsCor, ui_->ShowElemsCorr},
            {FixedImage::ElemsCorTh, ui_->ShowElemsCorrTh},
            {FixedImage::ElemMutPlus, ui_->ShowElemsMutPlus},
            {FixedImage::ElemMutMinus, ui_->ShowElemsMutMinus},
            {FixedImage::ElemDE, ui_->ShowElemsDE},
            {FixedImage::ElemRoi, ui_->ShowElemsROI},
            {FixedImage::ElemRoiRatio, ui_->ShowElemsNROI}};
}

QVector<MapKey> ElementsSection::jumpMaps() const
{
    QVector<MapKey> keys;
    for (int row = 0; row < elems_.size(); ++row)
        keys.append({MapKind::ElemJump, row});
    return keys;
}

std::optional<MapKey> ElementsSection::firstMap() const
{
    if (elems_.isEmpty())
        return std::nullopt;
    return MapKey{MapKind::ElemJump, elementRow()};
}

WhyNot ElementsSection::notReady(const SpectraInfo&) const
{
    if (!elems_.isEmpty())
        return {};
    return {QStringLiteral("Elements are left out, the list of target elements is empty"),
            tr("No target element: enter some above")};
}

ElementConditions ElementsSection::elementConditions() const
{
    ElementConditions c;
    for (const ElemCtrl* row : elems_)
        c.rows.append(row->data());
    c.target = std::max(targetGroup_->checkedId(), 0);
    ui_->AElemsCds->fill(c);
    c.correlationThreshold = corTh_;
    return c;
}

std::unique_ptr<WalkKernel> ElementsSection::kernel(const SpectraInfo&) const
{
    return std::make_unique<ElementsKernel>(elementConditions());
}

void ElementsSection::bindFields(CommandBook& book)
{
    book.onOff(ExCmdAnalyzerElemsDispOnTime, ui_->ElemsDispOnTime);
    book.onOff(ExCmdAnalyzerElemsSortByAn, ui_->SortByANo);
    book.enterable(ExCmdAnalyzerElemsSetCorrTh, ui_->CorTh);
    History& history = book.history();
    connect(ui_->SetSTD, &QPushButton::clicked, &history,
            [&history] { history.add(ExCmdAnalyzerElemsSetStd); });
    connect(ui_->ReCalcCor, &QPushButton::clicked, &history,
            [&history] { history.add(ExCmdAnalyzerElemsRecalcCor); });
}

AElemsConds& ElementsSection::backgrounds() const
{
    return *ui_->AElemsCds;
}

void ElementsSection::setSortByANo(bool f)
{
    ui_->SortByANo->setChecked(f);
}

RunRow* ElementsSection::runRow() const
{
    return ui_->ElemsRun;
}

int ElementsSection::elementRow() const
{
    return showGroup_->checkedId();
}

void ElementsSection::showRow(int row)
{
    if (QAbstractButton* const button = showGroup_->button(row))
        button->setChecked(true);
}

bool ElementsSection::displaysOnTime() const
{
    return ui_->ElemsDispOnTime->isChecked();
}

void ElementsSection::setRunning(bool f)
{
    ui_->AElemNames->setReadOnly(f);
}

bool ElementsSection::isWalking() const
{
    return book_.stateOf({MapKind::ElemsCor}) == MapState::Filling;
}

void ElementsSection::setCorrelation(double cor)
{
    correlation_ = cor;
    ui_->ElemsCorrelation->setText(fieldText(cor));
    const bool isOver = cor > corTh_;
    if (isOver == isOverTh_)
        return;
    isOverTh_ = isOver;
    ui_->ElemsCorrelation->setStyleSheet(
        isOver ? QStringLiteral("background-color: rgb(211, 255, 241); color: black;")
               : QStringLiteral("background-color: rgb(176, 192, 192); color: black;"));
}

void ElementsSection::setCorTh(double threshold)
{
    ui_->CorTh->setText(fieldText(threshold));
    newCorTh();
}

void ElementsSection::newCorTh()
{
    corTh_ = fieldValue(ui_->CorTh);
    setCorrelation(correlation_);
    Q_EMIT changed();
    recalcCorMap();
}

void ElementsSection::selectImage(int id)
{
    const QVector<ImageButton> buttons = imageButtons();
    if (id < 0 || id >= buttons.size()) {
        fault(QStringLiteral("No map of elements has the number %1").arg(id));
        return;
    }
    // Pressed as by hand, so that whatever stood above it makes room.
    buttons.at(id).button->click();
    Q_EMIT changedSelection();
}
