#include "batch/BatchEdit.h"

#include "batch/BatchCompleter.h"
#include "batch/BatchHighlighter.h"

#include <QPainter>
#include <QTextBlock>

namespace {

constexpr int besideNumber = 6; ///< [pixels]

/// The margin has no life of its own: the editor knows its lines.
class Margin : public QWidget
{
public:
    explicit Margin(BatchEdit& editor)
        : QWidget(&editor)
        , editor_(editor)
    {
        setObjectName(QStringLiteral("LineNumbers"));
    }
    QSize sizeHint() const override { return {editor_.marginWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent* event) override { editor_.paintMargin(event); }

private:
    BatchEdit& editor_;
};

QColor mixed(const QColor& a, const QColor& b, double shareOfB)
{
    const auto mix = [shareOfB](int x, int y) { return qRound(x + (y - x) * shareOfB); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

} // namespace

BatchEdit::BatchEdit(QWidget* parent)
    : QPlainTextEdit(parent)
    , margin_(new Margin(*this))
    , highlighter_(new BatchHighlighter(document()))
    , completer_(new BatchCompleter(*this))
{
    connect(this, &QPlainTextEdit::blockCountChanged, this, &BatchEdit::fitMargin);
    connect(this, &QPlainTextEdit::updateRequest, this, &BatchEdit::scrollMargin);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &BatchEdit::cursorMoved);
    fitMargin();
    markLines();
}

int BatchEdit::marginWidth() const
{
    const int digits = qMax(2, QString::number(blockCount()).size());
    return digits * fontMetrics().horizontalAdvance(QLatin1Char('9')) + 2 * besideNumber;
}

void BatchEdit::fitMargin()
{
    setViewportMargins(marginWidth(), 0, 0, 0);
    const QRect inner = contentsRect();
    margin_->setGeometry(inner.left(), inner.top(), marginWidth(), inner.height());
}

void BatchEdit::scrollMargin(const QRect& rect, int dy)
{
    if (dy != 0)
        margin_->scroll(0, dy);
    else
        margin_->update(0, rect.y(), margin_->width(), rect.height());
}

void BatchEdit::paintMargin(QPaintEvent* event)
{
    QPainter p(margin_);
    p.fillRect(event->rect(), palette().color(QPalette::Window));
    const int now = textCursor().blockNumber();
    QTextBlock block = firstVisibleBlock();
    double top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const double height = blockBoundingRect(block).height();
        const int number = block.blockNumber();
        const bool runs = number + 1 == runningLine_;
        const auto group = number == now || runs ? QPalette::Active : QPalette::Disabled;
        p.setPen(palette().color(group, QPalette::WindowText));
        const QRectF line(0, top, margin_->width() - besideNumber, height);
        p.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                   runs ? QStringLiteral("\u25b6") : QString::number(number + 1));
        top += height;
        block = block.next();
    }
}

void BatchEdit::setRunningLine(int line)
{
    if (line == runningLine_)
        return;
    runningLine_ = line;
    markLines();
    margin_->update();
}

/// The lines of the cursor and of the run, over their whole width.
void BatchEdit::markLines()
{
    const QColor ground = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor accent = palette().color(QPalette::Highlight);
    QList<QTextEdit::ExtraSelection> marks;
    const auto mark = [&](const QTextCursor& cursor, const QColor& colour) {
        QTextEdit::ExtraSelection selection;
        selection.cursor = cursor;
        selection.cursor.clearSelection();
        selection.format.setBackground(colour);
        selection.format.setProperty(QTextFormat::FullWidthSelection, true);
        marks.append(selection);
    };
    mark(textCursor(), mixed(ground, text, 0.06));
    const QTextBlock running = document()->findBlockByNumber(runningLine_ - 1);
    if (running.isValid())
        mark(QTextCursor(running), mixed(ground, accent, 0.35));
    setExtraSelections(marks);
}

void BatchEdit::cursorMoved()
{
    markLines();
    const QTextCursor cursor = textCursor();
    highlighter_->setTyping(cursor.blockNumber(), cursor.positionInBlock());
    margin_->update();
    Q_EMIT hintChanged(BatchCompleter::hint(cursor.block().text(), cursor.positionInBlock()));
}

bool BatchEdit::findText(const QString& text, bool backward)
{
    if (text.isEmpty())
        return false;
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (find(text, flags))
        return true;
    const QTextCursor before = textCursor();
    moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    if (find(text, flags))
        return true;
    setTextCursor(before);
    return false;
}

void BatchEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    fitMargin();
}

void BatchEdit::keyPressEvent(QKeyEvent* event)
{
    if (completer_->takesKey(event))
        return;
    QPlainTextEdit::keyPressEvent(event);
    completer_->keyTyped(*event);
}

void BatchEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    highlighter_->setDark(palette().color(QPalette::Base).lightness() < 128);
    fitMargin();
    markLines();
}
