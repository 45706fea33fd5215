#include "batch/BatchCompleter.h"

#include "batch/BatchLineWords.h"
#include "batch/CmdLine.h"
#include "batch/CommandArguments.h"
#include "batch/CommandTable.h"
#include "common/Settings.h"

#include <QAbstractItemView>
#include <QDir>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTextBlock>

namespace {

constexpr int fewestLetters = 3;
constexpr int mostFiles = 500;
constexpr int replacementRole = Qt::UserRole + 1;

/// The item that the column stands in or behind: where it begins, what of it stands before the
/// column, and its number in the line, 0 for the word.
struct ItemAt
{
    int start;
    QString typed; ///< without the quote
    int number;
};

ItemAt itemAt(const QString& line, int column)
{
    ItemAt item{column, {}, 0};
    int i = 0;
    while (i < column) {
        while (i < column && line.at(i).isSpace())
            ++i;
        item.start = i;
        item.typed.clear();
        if (i == column)
            break;
        const bool quoted = line.at(i) == QLatin1Char('"');
        int end = quoted ? i + 1 : i;
        while (end < column &&
               (quoted ? line.at(end) != QLatin1Char('"') : !line.at(end).isSpace()))
            ++end;
        if (end >= column) {
            item.typed = line.mid(quoted ? i + 1 : i, column - (quoted ? i + 1 : i));
            break;
        }
        ++item.number;
        i = quoted ? end + 1 : end;
    }
    return item;
}

/// The argument that stands at this place of a line, from 0; null without one.
const Argument* argumentAt(const QVector<Argument>& arguments, int place)
{
    if (place < arguments.size())
        return &arguments.at(place);
    return !arguments.isEmpty() && arguments.last().repeated ? &arguments.last() : nullptr;
}

bool isFileKind(ArgumentKind kind)
{
    return kind == ArgumentKind::File || kind == ArgumentKind::NewFile ||
           kind == ArgumentKind::Folder;
}

/// What the word of a line takes and does.
struct Described
{
    QString word;
    QString arguments;
    QString effect;
};

Described describedBy(const QString& text)
{
    // Not taken apart whole: a quote that is not closed yet would cost a log line at each key.
    CmdLine line;
    line.word = text.simplified().section(QLatin1Char(' '), 0, 0);
    if (isKeyword(line)) {
        const KeywordRow& row = keywordTable().at(keywordId(line));
        return {row.word, row.arguments, row.effect};
    }
    const ExCmdRow* const row = isExCmd(line) ? exCmdRow(exCmdId(line)) : nullptr;
    return row ? Described{row->word, row->arguments, row->effect} : Described();
}

QStandardItem* newOffer(const QString& shown, const QString& replacement, const QString& tip)
{
    auto* const item = new QStandardItem(shown);
    item->setData(replacement, replacementRole);
    item->setToolTip(tip);
    return item;
}

} // namespace

BatchCompleter::BatchCompleter(QPlainTextEdit& editor)
    : QCompleter(&editor)
    , editor_(editor)
    , offers_(new QStandardItemModel(this))
{
    setModel(offers_);
    setWidget(&editor);
    setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    popup()->setObjectName(QStringLiteral("Completions"));
    connect(this, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            &BatchCompleter::accept);
}

bool BatchCompleter::takesKey(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
        offer(true);
        return true;
    }
    if (!popup()->isVisible())
        return false;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        accept(popup()->currentIndex());
        popup()->hide();
        return true;
    case Qt::Key_Escape:
        popup()->hide();
        return true;
    default:
        return false;
    }
}

void BatchCompleter::keyTyped(const QKeyEvent& event)
{
    const bool types = !event.text().isEmpty() && event.text().at(0).isPrint();
    if (types || (popup()->isVisible() && event.key() == Qt::Key_Backspace))
        offer(false);
    else
        popup()->hide();
}

void BatchCompleter::offer(bool asked)
{
    const QTextCursor cursor = editor_.textCursor();
    const QString line = cursor.block().text();
    const bool continues = isContinued(cursor.block().previous().text());
    const ItemAt item = itemAt(line, cursor.positionInBlock());
    start_ = item.start;
    offers_->clear();
    const bool isWord = item.number == 0 && !continues;
    const bool enough = asked || item.typed.size() >= fewestLetters;
    bool found = false;
    if (isWord) {
        found = enough && fillWords(item.typed);
    } else {
        const QVector<Argument> arguments = argumentsOf(describedBy(line).arguments);
        const Argument* const argument = argumentAt(arguments, item.number - 1);
        const bool files = argument && isFileKind(argument->kind);
        found = files && (asked || !item.typed.isEmpty()) && fillFiles(item.typed);
    }
    if (!found) {
        popup()->hide();
        return;
    }
    QRect place = editor_.cursorRect();
    place.setWidth(popup()->sizeHintForColumn(0) +
                   popup()->verticalScrollBar()->sizeHint().width() + 8);
    place.translate(editor_.viewport()->x(), 0);
    complete(place);
    popup()->setCurrentIndex(completionModel()->index(0, 0));
}

/// False when there is nothing to offer that is not typed already.
bool BatchCompleter::fillWords(const QString& typed)
{
    const auto add = [&](const QString& word, const QString& usage, const QString& effect) {
        const bool fits = word.startsWith(typed, Qt::CaseInsensitive);
        if (fits && word.size() > typed.size())
            offers_->appendRow(newOffer(usage, word + QLatin1Char(' '), effect));
    };
    for (const KeywordRow& row : keywordTable())
        add(row.word, row.usage(), row.effect);
    for (const ExCmdRow& row : exCmdTable() + extensionTable()) {
        if (row.id != ExCmdNone)
            add(row.word, row.usage(), row.effect);
    }
    return offers_->rowCount() > 0;
}

bool BatchCompleter::fillFiles(const QString& typed)
{
    const int slash = typed.lastIndexOf(QLatin1Char('/'));
    const QString folder = typed.left(slash + 1);
    const QString name = typed.mid(slash + 1);
    QString real = folder;
    real.replace(QLatin1String("$DataRoot$"), DataRoot);
    const QDir dir(real.isEmpty() ? QStringLiteral(".") : real);
    const QFileInfoList entries = dir.entryInfoList(
        QDir::AllEntries | QDir::NoDotAndDotDot, QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo& entry : entries) {
        if (!entry.fileName().startsWith(name) || entry.fileName() == name)
            continue;
        const QString text = entry.fileName() + (entry.isDir() ? QStringLiteral("/") : QString());
        offers_->appendRow(newOffer(text, folder + text, entry.absoluteFilePath()));
        if (offers_->rowCount() == mostFiles)
            break;
    }
    return offers_->rowCount() > 0;
}

/// In one step of undo.
void BatchCompleter::accept(const QModelIndex& chosen)
{
    QString text = chosen.data(replacementRole).toString();
    if (text.isEmpty())
        return;
    const bool folder = text.endsWith(QLatin1Char('/'));
    const bool word = text.endsWith(QLatin1Char(' '));
    if (!word && text.contains(QLatin1Char(' ')))
        text = QLatin1Char('"') + text + (folder ? QString() : QStringLiteral("\""));
    QTextCursor cursor = editor_.textCursor();
    const int column = cursor.positionInBlock();
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, column - start_);
    cursor.insertText(text);
    editor_.setTextCursor(cursor);
}

QString BatchCompleter::hint(const QString& line, int column)
{
    const ItemAt item = itemAt(line, column);
    const Described described = describedBy(line);
    if (item.number == 0 || described.word.isEmpty())
        return {};
    const QVector<Argument> arguments = argumentsOf(described.arguments);
    const Argument* const current = argumentAt(arguments, item.number - 1);
    QString text = QStringLiteral("<b>%1</b>").arg(described.word);
    for (const Argument& argument : arguments) {
        const QString name = argument.name.isEmpty()
                                 ? argument.word
                                 : argument.word + QLatin1Char(' ') + argument.name;
        const QString shown =
            QStringLiteral("&lt;%1&gt;%2")
                .arg(name.toHtmlEscaped(), argument.repeated ? QStringLiteral("...") : QString());
        text += QLatin1Char(' ') +
                (&argument == current ? QStringLiteral("<b><u>%1</u></b>").arg(shown) : shown);
    }
    return text + QStringLiteral(" \u2014 ") + described.effect.toHtmlEscaped();
}
