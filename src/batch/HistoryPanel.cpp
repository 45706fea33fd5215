#include "batch/HistoryPanel.h"

#include "batch/History.h"
#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "common/Settings.h"
#include "display/FileDialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

namespace {

QFileDialog* newDialog(QWidget* parent)
{
    auto* dialog = new FileDialog(parent);
    dialog->setWindowTitle(HistoryPanel::tr("Save History as Batch"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("bat"));
    dialog->setNameFilters(
        {HistoryPanel::tr("Batch File (*.bat)"), HistoryPanel::tr("Any Files (* *.*)")});
    dialog->setDirectory(BatchRoot);
    return dialog;
}

} // namespace

HistoryPanel::HistoryPanel(QWidget* parent)
    : QFrame(parent)
    , view_(new QPlainTextEdit(this))
    , saveDialog_(new LateDialog([this] { return newDialog(this); }, this))
{
    setObjectName(QStringLiteral("History"));
    setWindowTitle(tr("History"));
    view_->setObjectName(QStringLiteral("Lines"));
    view_->setReadOnly(true);
    view_->setUndoRedoEnabled(false);
    view_->setLineWrapMode(QPlainTextEdit::NoWrap);
    view_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view_->setPlaceholderText(tr("What you do is listed here, as lines of a batch"));
    layOut();
    connect(saveDialog_, &LateDialog::fileSelected, this, &HistoryPanel::save);
}

void HistoryPanel::layOut()
{
    auto* const buttons = new QHBoxLayout;
    const auto add = [&](const QString& text, const QString& tip, const char* name) {
        auto* const button = new QPushButton(text, this);
        button->setToolTip(tip);
        button->setObjectName(QLatin1String(name));
        buttons->addWidget(button);
        return button;
    };
    connect(add(tr("Clear"), tr("Forget what was done so far"), "Clear"), &QPushButton::clicked,
            this, &HistoryPanel::clearAsked);
    connect(add(tr("Copy"), tr("Copy what is selected, or all lines, to the clipboard"), "Copy"),
            &QPushButton::clicked, this, &HistoryPanel::copy);
    buttons->addStretch();
    connect(add(tr("Run Again"), tr("Run all lines as a batch"), "RunAgain"), &QPushButton::clicked,
            this, [this] { Q_EMIT runAsked(text()); });
    connect(add(tr("Save..."), tr("Save all lines as a batch file"), "Save"), &QPushButton::clicked,
            saveDialog_, &LateDialog::show);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(view_);
    column->addLayout(buttons);
}

void HistoryPanel::follow(History& history)
{
    append(history.lines());
    connect(&history, &History::added, this, &HistoryPanel::append);
    connect(&history, &History::cleared, view_, &QPlainTextEdit::clear);
    connect(this, &HistoryPanel::clearAsked, &history, &History::clear);
}

void HistoryPanel::append(const QStringList& lines)
{
    if (!lines.isEmpty())
        view_->appendPlainText(lines.join(QLatin1Char('\n')));
}

QString HistoryPanel::text() const
{
    const QString shown = view_->toPlainText();
    return shown.isEmpty() ? shown : shown + QLatin1Char('\n');
}

void HistoryPanel::copy() const
{
    const QString selected = view_->textCursor().selection().toPlainText();
    QApplication::clipboard()->setText(selected.isEmpty() ? text() : selected);
}

void HistoryPanel::save(const QString& fname) const
{
    writeFile(withExtension(fname, QStringLiteral("bat")), text().toUtf8());
}
