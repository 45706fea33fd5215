#pragma once

#include <QCompleter>

class QKeyEvent;
class QPlainTextEdit;
class QStandardItemModel;

/// Completes what is typed in a batch text: words of commands and keywords, from their third letter
/// on or by Ctrl+Space, and names of files where a command takes one.
class BatchCompleter : public QCompleter
{
    Q_OBJECT
public:
    /// The editor owns it.
    explicit BatchCompleter(QPlainTextEdit& editor);

    /// A key that the list of completions takes, or that calls for it; nobody else gets it.
    bool takesKey(QKeyEvent* event);
    /// A key has been typed into the text.
    void keyTyped(const QKeyEvent& event);

    /// The command of the line with its arguments, the one at the column in bold, and what it does,
    /// as rich text; empty without a known command, and while its word is typed.
    static QString hint(const QString& line, int column);

private:
    void offer(bool asked);
    void accept(const QModelIndex& chosen);
    bool fillWords(const QString& typed);
    bool fillFiles(const QString& typed);

    QPlainTextEdit& editor_;
    QStandardItemModel* const offers_;
    int start_ = 0; ///< of what is completed, in its line
};
