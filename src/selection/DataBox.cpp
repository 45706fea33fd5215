#include "selection/DataBox.h"

#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "display/FieldWidth.h"
#include "display/FileDialogs.h"
#include "display/FileDrop.h"
#include "display/NumberFields.h"
#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "display/XafsFileSelect.h"
#include "selection/SelectDataFiles.h"
#include "ui_DataBox.h"

DataBox::DataBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_DataBox>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    setupRows();
    setupDark();
    setupSpectra();
    layOut();
}

DataBox::~DataBox() = default;

void DataBox::setupRows()
{
    i1Row()->setCaption(tr("I1 Data"), QStringLiteral("I1"));
    i0Row()->setCaption(tr("I0 Data"), QStringLiteral("I0"));
    i1Row()->offerCopyToI0();
    connect(i1Row(), &SelectDataFiles::copyToI0Asked, this,
            [this] { i0Row()->takeEnergySetup(*i1Row()); });
    for (const SelectDataFiles* row : {i1Row(), i0Row()})
        connect(row, &SelectDataFiles::fieldsChanged, this, &DataBox::fieldsChanged);
}

void DataBox::layOut()
{
    fitDigits(ui_->DarkExpTime, 5);
    fitDigitsAtLeast(ui_->DarkFileName, 5);
    fitButtons(*this);
    tabInReadingOrder(this);
}

QStringList DataBox::unreadable() const
{
    return i1Row()->unreadable() + i0Row()->unreadable() + numbers_->unreadable();
}

void DataBox::setupDark()
{
    numbers_->watch(ui_->DarkExpTime,
                    ui_->DarkCaption->text() + QLatin1Char(' ') + ui_->DarkExpCaption->text());
    connect(numbers_, &NumberFields::changed, this, &DataBox::fieldsChanged);
    auto* dialog = new LateDialog([this] { return new SelectImgDialog(this); }, this);
    dialog->setTitle(tr("Select Dark Data"));
    connect(ui_->SelectDark, &QPushButton::clicked, dialog, &LateDialog::show);
    connect(dialog, &LateDialog::fileSelected, this, &DataBox::darkSelected);
    // The rows take dropped files themselves.
    const QStringList images = filterPatterns(SelectImgDialog::imageFilter());
    connect(new FileDrop(ui_->DarkFileName, FileDrop::OneFile, images), &FileDrop::dropped, this,
            [this](const QStringList& files) { Q_EMIT darkSelected(files.first()); });
    connect(ui_->ClearDark, &QPushButton::clicked, this, &DataBox::darkCleared);
    connect(ui_->DarkExpTime, &QLineEdit::textChanged, this, &DataBox::darkExposureChanged);
}

void DataBox::setupSpectra()
{
    ui_->SelectBG->dialog()->setTitle(tr("Select BG Data"));
    ui_->TotalI0ofI1XAFS->dialog()->setTitle(tr("Select Total I0 of I1"));
    ui_->TotalI0ofI0XAFS->dialog()->setTitle(tr("Select Total I0 of I0"));
    using Row = XafsFileSelect;
    connect(ui_->SelectBG, &Row::newFile, this, &DataBox::bgSelected);
    connect(ui_->SelectBG, &Row::cleared, this, &DataBox::bgCleared);
    connect(ui_->TotalI0ofI1XAFS, &Row::newFile, this, &DataBox::totalI0ofI1Selected);
    connect(ui_->TotalI0ofI1XAFS, &Row::cleared, this, &DataBox::totalI0ofI1Cleared);
    connect(ui_->TotalI0ofI0XAFS, &Row::newFile, this, &DataBox::totalI0ofI0Selected);
    connect(ui_->TotalI0ofI0XAFS, &Row::cleared, this, &DataBox::totalI0ofI0Cleared);
}

void DataBox::bindCommands(CommandBook& book)
{
    book.textUnfollowed(ExCmdDarkExposure, ui_->DarkExpTime);
    const std::pair<EX_CMD_ID, XafsFileSelect*> rows[] = {{ExCmdBackgroundFile, ui_->SelectBG},
                                                          {ExCmdTotalI0OfI1, ui_->TotalI0ofI1XAFS},
                                                          {ExCmdTotalI0OfI0, ui_->TotalI0ofI0XAFS}};
    for (const auto& known : rows) {
        XafsFileSelect* const row = known.second;
        book.action(known.first, [row](const CmdLine& c) {
            if (c.args.isEmpty())
                row->clear();
            else
                row->load(c.arg(0));
        });
        book.history().follow(known.first, [row] { return row->fileName(); });
    }
}

SelectDataFiles* DataBox::i1Row() const
{
    return ui_->SelectI1Files;
}

SelectDataFiles* DataBox::i0Row() const
{
    return ui_->SelectI0Files;
}

double DataBox::darkExposure() const
{
    return ui_->DarkExpTime->text().toDouble();
}

void DataBox::showDark(const QString& fname, double exposureMs)
{
    ui_->DarkFileName->setText(fname);
    ui_->DarkExpTime->setText(fieldText(exposureMs));
}

void DataBox::clearDarkName()
{
    ui_->DarkFileName->clear();
}

void DataBox::clearBg()
{
    ui_->SelectBG->clear();
}

void DataBox::clearTotalI0ofI1()
{
    ui_->TotalI0ofI1XAFS->clear();
}

void DataBox::clearTotalI0ofI0()
{
    ui_->TotalI0ofI0XAFS->clear();
}
