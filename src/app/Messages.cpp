#include "app/Messages.h"

#include "common/FileNames.h"
#include "common/LogRelay.h"
#include "common/SafeFile.h"
#include "display/FileDialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDebug>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

/// Long against the showing of a portion, short against a reader's patience.
constexpr int portionMs = 50;

QString shownText(const LogLine& line)
{
    return QDateTime::fromMSecsSinceEpoch(line.time).toString(QStringLiteral("hh:mm:ss.zzz  ")) +
           line.text;
}

QFileDialog* newDialog(QWidget* parent)
{
    auto* dialog = new FileDialog(parent);
    dialog->setWindowTitle(Messages::tr("Save Messages"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setNameFilters({Messages::tr("Text File (*.txt)"), Messages::tr("Any Files (* *.*)")});
    return dialog;
}

} // namespace

Messages::Messages(QWidget* parent)
    : QFrame(parent)
    , saveDialog_(new LateDialog([this] { return newDialog(this); }, this))
    , tap_(new LogTap(this))
    , view_(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("Messages"));
    setWindowTitle(tr("Messages"));
    view_->setObjectName(QStringLiteral("Lines"));
    view_->setReadOnly(true);
    view_->setUndoRedoEnabled(false);
    view_->setLineWrapMode(QPlainTextEdit::NoWrap);
    view_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view_->setMaximumBlockCount(LogRelay::mostLines);
    layOut();
    pace_.setSingleShot(true);
    pace_.setInterval(portionMs);
    connect(saveDialog_, &LateDialog::fileSelected, this, &Messages::save);
    connect(tap_, &LogTap::linesWait, &pace_, qOverload<>(&QTimer::start));
    connect(&pace_, &QTimer::timeout, this, &Messages::showWaitingLines);
}

void Messages::layOut()
{
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& text, const QString& tip, const char* name, auto* receiver,
                         auto slot) {
        auto* button = new QPushButton(text, this);
        button->setToolTip(tip);
        button->setObjectName(QLatin1String(name));
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, receiver, slot);
    };
    add(tr("Clear"), tr("Drop all messages"), "Clear", this, &Messages::clear);
    add(tr("Copy"), tr("Copy what is selected, or all messages, to the clipboard"), "Copy", this,
        &Messages::copy);
    buttons->addStretch();
    add(tr("Save..."), tr("Save all messages as a text file"), "Save", saveDialog_,
        &LateDialog::show);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(view_);
    column->addLayout(buttons);
    resize(700, 400);
}

QString Messages::text() const
{
    const QString shown = view_->toPlainText();
    return shown.isEmpty() ? shown : shown + QLatin1Char('\n');
}

void Messages::clear()
{
    view_->clear();
}

void Messages::copy()
{
    if (view_->textCursor().hasSelection())
        view_->copy();
    else
        QApplication::clipboard()->setText(text());
}

void Messages::save(const QString& fname)
{
    writeFile(withExtension(fname, QStringLiteral("txt")), text().toUtf8());
}

void Messages::showWaitingLines()
{
    const QVector<LogLine> lines = tap_->take();
    if (lines.isEmpty())
        return;
    // A reader who has scrolled back is not disturbed.
    const bool follow = isAtEnd();
    QStringList texts;
    texts.reserve(lines.size());
    for (const LogLine& line : lines)
        texts.append(shownText(line));
    view_->appendPlainText(texts.join(QLatin1Char('\n')));
    if (follow)
        scrollToEnd();
    Q_EMIT latest(lines.last().text);
}

void Messages::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    scrollToEnd();
}

bool Messages::isAtEnd() const
{
    const QScrollBar* bar = view_->verticalScrollBar();
    return bar->value() == bar->maximum();
}

void Messages::scrollToEnd()
{
    view_->verticalScrollBar()->setValue(view_->verticalScrollBar()->maximum());
}
