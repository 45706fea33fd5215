#include "batch/BatchHighlighter.h"

#include <QTextDocument>

namespace {

/// State of a block that the next one continues.
constexpr int continued = 1;

struct Colours
{
    QRgb light, dark; ///< the ground that they stand on
};

constexpr Colours coloursOf[] = {{0xff7a1fa2, 0xffcf9bff},  // Keyword
                                 {0xff0b57b5, 0xff7db8ff},  // Command
                                 {0xffc62828, 0xffff8a80},  // Unknown
                                 {0xff2e6b1f, 0xff9ccc8c},  // Quoted
                                 {0xffa04a00, 0xffffb870},  // Variable
                                 {0xff6b6b6b, 0xffa8a8a8}}; // Comment

} // namespace

BatchHighlighter::BatchHighlighter(QTextDocument* document)
    : QSyntaxHighlighter(document)
{
    makeFormats(dark_);
}

void BatchHighlighter::makeFormats(bool dark)
{
    for (int role = 0; role < roles; ++role) {
        QTextCharFormat format;
        format.setForeground(QColor(dark ? coloursOf[role].dark : coloursOf[role].light));
        formats_[std::size_t(role)] = format;
    }
    formats_[int(BatchRole::Keyword)].setFontWeight(QFont::Bold);
    formats_[int(BatchRole::Unknown)].setUnderlineStyle(QTextCharFormat::WaveUnderline);
    formats_[int(BatchRole::Unknown)].setUnderlineColor(
        formats_[int(BatchRole::Unknown)].foreground().color());
}

void BatchHighlighter::setDark(bool dark)
{
    if (dark == dark_)
        return;
    dark_ = dark;
    makeFormats(dark);
    rehighlight();
}

void BatchHighlighter::setTyping(int block, int column)
{
    const int before = typingBlock_;
    if (before == block && typingColumn_ == column)
        return;
    typingBlock_ = block;
    typingColumn_ = column;
    // What was being typed there counts now.
    for (const int changed : {before, block}) {
        const QTextBlock line = document()->findBlockByNumber(changed);
        if (line.isValid())
            rehighlightBlock(line);
    }
}

bool BatchHighlighter::isBeingTyped(const QString& text, const BatchStretch& word) const
{
    return currentBlock().blockNumber() == typingBlock_ &&
           typingColumn_ == word.start + word.length &&
           beginsAWord(text.mid(word.start, word.length));
}

void BatchHighlighter::highlightBlock(const QString& text)
{
    const bool continues = previousBlockState() == continued;
    bool comment = false;
    for (const BatchStretch& stretch : batchStretches(text, continues)) {
        comment = comment || stretch.role == BatchRole::Comment;
        if (stretch.role == BatchRole::Unknown && isBeingTyped(text, stretch))
            continue;
        setFormat(stretch.start, stretch.length, formats_[std::size_t(stretch.role)]);
    }
    setCurrentBlockState(isContinued(text) ? continued : 0);
}
