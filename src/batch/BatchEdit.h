#pragma once

#include <QPlainTextEdit>

class BatchCompleter;
class BatchHighlighter;

/// The editor of a batch text: line numbers in a margin, colours, the running line marked, and
/// completion of words and file names.
class BatchEdit : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit BatchEdit(QWidget* parent = nullptr);

    /// Marks a line of the text, counted from 1; 0 for none. It is not brought into view: its user
    /// may be elsewhere.
    void setRunningLine(int line);
    int runningLine() const { return runningLine_; }

    /// Selects the next place of a text behind the cursor, or before it, from the other end when
    /// there is none on; false when there is none at all. Case does not matter.
    bool findText(const QString& text, bool backward);

    /// Width of the margin [pixels], and its painting.
    int marginWidth() const;
    void paintMargin(QPaintEvent* event);

Q_SIGNALS:
    /// What is known of the line that is being typed: its command with the arguments, the one at
    /// the cursor in bold. Empty without one.
    void hintChanged(const QString& hint);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitMargin();
    void scrollMargin(const QRect& rect, int dy);
    void markLines();
    void cursorMoved();

    QWidget* const margin_;
    BatchHighlighter* const highlighter_;
    BatchCompleter* const completer_;
    int runningLine_ = 0;
};
