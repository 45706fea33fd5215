#pragma once

#include <QFrame>

class History;
class LateDialog;
class QPlainTextEdit;

/// What the user has done, as a list of batch lines that can be copied, saved as a batch and run
/// again. It has the buttons of the window of messages.
class HistoryPanel : public QFrame
{
    Q_OBJECT
public:
    explicit HistoryPanel(QWidget* parent = nullptr);

    /// Shows a history, which outlives the panel or ends with its own signals.
    void follow(History& history);
    /// All lines, each with a line end behind it.
    QString text() const;

Q_SIGNALS:
    /// The lines are to be run as a batch.
    void runAsked(const QString& text);
    void clearAsked();

private:
    void layOut();
    void append(const QStringList& lines);
    /// What is selected, else everything.
    void copy() const;
    /// Writes text() as UTF-8. A file that can't be written keeps its old contents and costs one
    /// log line.
    void save(const QString& fname) const;

    QPlainTextEdit* view_;
    LateDialog* saveDialog_;
};
