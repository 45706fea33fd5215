#pragma once

#include "batch/BatchLineWords.h"

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include <array>

/// Colours a batch text: keywords, commands, quoted items, variables, comments, and a wave under
/// unknown words, but not under one that is being typed and may become a known one.
class BatchHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT
public:
    explicit BatchHighlighter(QTextDocument* document);

    /// Colours for a light or a dark ground.
    void setDark(bool dark);
    /// The cursor stands there: a word that ends at it is being typed.
    void setTyping(int block, int column);

protected:
    void highlightBlock(const QString& text) override;

private:
    void makeFormats(bool dark);
    bool isBeingTyped(const QString& text, const BatchStretch& word) const;

    static constexpr int roles = int(BatchRole::Comment) + 1;
    std::array<QTextCharFormat, roles> formats_;
    bool dark_ = false;
    int typingBlock_ = -1;
    int typingColumn_ = 0;
};
