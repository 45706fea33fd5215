#include "selection/FolderQuestion.h"

#include "display/ElidedLabel.h"
#include "display/NumberFields.h"
#include "display/SignLine.h"
#include "selection/EnergyPreview.h"
#include "selection/FolderGuess.h"
#include "selection/SeriesTable.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

namespace {

/// Longest name of a file within a line. [characters]
constexpr int longestName = 32;

QString shortName(const QString& path)
{
    QString name = QFileInfo(path).fileName();
    if (name.size() <= longestName)
        return name;
    return name.left(longestName / 2 - 2) + QStringLiteral("...") + name.right(longestName / 2 - 1);
}

} // namespace

FolderQuestion::FolderQuestion(QWidget* parent)
    : CoveringPage(parent)
{
    auto* const scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(newContent());
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addWidget(scroll);
    connectForm();
}

void FolderQuestion::connectForm()
{
    connect(table_, &SeriesTable::usesChanged, this, &FolderQuestion::usesChanged);
    connect(byNames_, &QRadioButton::toggled, this, &FolderQuestion::energiesChanged);
    for (const QLineEdit* field : {start_, step_}) {
        connect(field, &QLineEdit::textChanged, this, &FolderQuestion::energiesChanged);
        connect(field, &QLineEdit::textEdited, this, [this] { byStart_->setChecked(true); });
    }
    connect(badPixels_, &QCheckBox::toggled, badPixelLists_, &QWidget::setEnabled);
    connect(load_, &QPushButton::clicked, this, &FolderQuestion::accept);
    connect(cancel_, &QPushButton::clicked, this, &FolderQuestion::cancelled);
}

void FolderQuestion::ask(const FolderContents& contents)
{
    contents_ = contents;
    heading_->setLine(tr("Found in %1").arg(contents_.name()));
    heading_->setToolTip(contents_.path.toHtmlEscaped());
    table_->setSeries(contents_.series);
    showExtras();
    setTabOrders();
    usesChanged();
    cover();
    focusFirst();
}

void FolderQuestion::showExtras()
{
    const int spectra = contents_.references.size();
    references_->setVisible(spectra > 0);
    references_->setChecked(spectra > 0);
    references_->setText(spectra == 1
                             ? tr("Load 1 reference spectrum into the analysis")
                             : tr("Load %1 reference spectra into the analysis").arg(spectra));
    references_->setToolTip(contents_.references.join(QLatin1Char('\n')));

    const QStringList& lists = contents_.badPixels;
    badPixels_->setVisible(!lists.isEmpty());
    badPixels_->setChecked(!lists.isEmpty());
    badPixels_->setText(lists.size() == 1
                            ? tr("Mend the bad pixels of %1").arg(shortName(lists.first()))
                            : tr("Mend the bad pixels of"));
    badPixels_->setToolTip(lists.join(QLatin1Char('\n')));
    badPixelLists_->setVisible(lists.size() > 1);
    badPixelLists_->clear();
    for (const QString& list : lists)
        badPixelLists_->addItem(QFileInfo(list).fileName(), list);
}

const ImageSeries* FolderQuestion::series(SeriesUse use) const
{
    const int row = table_->rowOf(use);
    return row < 0 ? nullptr : &contents_.series.at(row);
}

QStringList FolderQuestion::files(SeriesUse use) const
{
    const ImageSeries* const one = series(use);
    return one ? one->files : QStringList();
}

/// The names of other files may tell energies, and sizes may not fit any more.
void FolderQuestion::usesChanged()
{
    QVector<QStringList> stacks{files(SeriesUse::I1)};
    if (series(SeriesUse::I0))
        stacks.append(files(SeriesUse::I0));
    named_ = energiesInNames(stacks);
    const bool any = !named_.pattern.isEmpty();
    byNames_->setEnabled(any);
    byNames_->setToolTip(any ? QString() : tr("The names of I1 and I0 hold no energies that rise"));
    whyNoNames_->setVisible(!any);
    (any ? byNames_ : byStart_)->setChecked(true);
    energiesChanged();
    showNotes();
    showButton();
}

bool FolderQuestion::isStartSet() const
{
    bool isNumber = false;
    start_->text().toDouble(&isNumber);
    return isNumber;
}

EnergyRule FolderQuestion::rule() const
{
    if (byNames_->isChecked())
        return named_;
    EnergyRule rule;
    rule.start = start_->text().toDouble();
    rule.delta = step_->text().toDouble();
    return rule;
}

void FolderQuestion::energiesChanged()
{
    const QStringList i1 = files(SeriesUse::I1);
    const QStringList i0 = files(SeriesUse::I0);
    const bool set = byNames_->isChecked() || isStartSet();
    const EnergyPreview preview = previewOf(energiesOf(rule(), i1));
    const EnergyPreview previewI0 = previewOf(energiesOf(rule(), i0));
    const auto show = [](SignLine* line, const EnergyPreview& shown, const QString& text) {
        line->setLine(shown.isSound() ? Mark::Done : Mark::LookHere,
                      shown.isSound() ? text : text + QStringLiteral(": ") + shown.doubt);
    };
    if (set)
        show(preview_, preview, preview.text);
    else
        preview_->setLine(Mark::LookHere, tr("Energies not set: type the energy of the first image"));
    preview_->setVisible(!i1.isEmpty());
    show(previewI0_, previewI0, tr("I0: %1").arg(previewI0.text));
    previewI0_->setVisible(set && !i1.isEmpty() && !i0.isEmpty() &&
                           (previewI0.text != preview.text || !previewI0.isSound()));
}

/// What somebody should know before the files are loaded.
void FolderQuestion::showNotes()
{
    while (QLayoutItem* const item = notes_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto note = [this](Mark mark, const QString& text) {
        auto* const line = new SignLine;
        line->setLine(mark, text);
        notes_->addWidget(line);
    };
    const ImageSeries* const i1 = series(SeriesUse::I1);
    const ImageSeries* const i0 = series(SeriesUse::I0);
    const ImageSeries* const dark = series(SeriesUse::Dark);
    if (i1 && i0) {
        const PairDoubt doubt = doubtOf(*i1, *i0);
        // What prevents loading stands beside the button.
        if (!doubt.text.isEmpty() && !doubt.prevents)
            note(Mark::LookHere, doubt.text);
    }
    if (i1 && dark && dark->pixels != i1->pixels)
        note(Mark::LookHere, tr("The dark image has other pixels than I1"));
    if (dark && dark->files.size() > 1)
        note(Mark::LookHere, tr("Of %1 dark images the first is used").arg(dark->files.size()));
    for (const QString& remark : qAsConst(contents_.remarks))
        note(Mark::LookHere, remark);
}

QString FolderQuestion::whyNot() const
{
    const ImageSeries* const i1 = series(SeriesUse::I1);
    const ImageSeries* const i0 = series(SeriesUse::I0);
    if (!i1)
        return tr("Choose the series of I1");
    const PairDoubt doubt = i0 ? doubtOf(*i1, *i0) : PairDoubt();
    return doubt.prevents ? doubt.text : QString();
}

void FolderQuestion::showButton()
{
    const int i1 = files(SeriesUse::I1).size();
    const int i0 = files(SeriesUse::I0).size();
    QString text = tr("Load %1 images").arg(i1);
    if (i0 > 0)
        text = tr("Load %1 + %2 images").arg(i1).arg(i0);
    else if (i1 == 1)
        text = tr("Load 1 image");
    load_->setText(i1 > 0 ? text : tr("Load"));
    load_->setMinimumWidth(load_->fontMetrics().horizontalAdvance(load_->text()) + 32);
    const QString why = whyNot();
    load_->setEnabled(why.isEmpty());
    load_->setToolTip(why);
    whyNot_->setLine(Mark::Blocked, why);
    whyNot_->setVisible(!why.isEmpty());
}

void FolderQuestion::focusFirst()
{
    if (!load_->isEnabled() && !table_->uses().isEmpty()) {
        table_->uses().first()->setFocus(Qt::OtherFocusReason);
    } else if (byNames_->isChecked()) {
        load_->setFocus(Qt::OtherFocusReason);
    } else {
        start_->setFocus(Qt::OtherFocusReason);
        start_->selectAll();
    }
}

FolderChoice FolderQuestion::choice() const
{
    FolderChoice choice;
    choice.i1 = files(SeriesUse::I1);
    choice.i0 = files(SeriesUse::I0);
    choice.dark = files(SeriesUse::Dark).value(0);
    choice.byNames = byNames_->isChecked();
    const EnergyRule energies = rule();
    choice.pattern = energies.pattern;
    choice.factor = energies.factor;
    choice.start = energies.start;
    choice.step = energies.delta;
    if (references_->isChecked())
        choice.references = contents_.references;
    if (badPixels_->isChecked())
        choice.badPixels = badPixelLists_->currentData().toString();
    return choice;
}

void FolderQuestion::accept()
{
    if (load_->isEnabled())
        Q_EMIT accepted(choice());
}

void FolderQuestion::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else if (event->key() == Qt::Key_Escape)
        Q_EMIT cancelled();
    else
        CoveringPage::keyPressEvent(event);
}
