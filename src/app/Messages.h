#pragma once

#include <QFrame>
#include <QTimer>

class LateDialog;
class LogTap;
class QPlainTextEdit;

/// The window that shows the latest lines of the log, each with the time of its writing. Lines come
/// in from all threads and are shown in portions, however many there are.
class Messages : public QFrame
{
    Q_OBJECT
public:
    explicit Messages(QWidget* parent = nullptr);

    /// Everything shown, with a line end behind each line.
    QString text() const;

public Q_SLOTS:
    void clear();
    /// Writes text() as UTF-8. A file that can't be written keeps its old contents and costs one
    /// log line.
    void save(const QString& fname);
    /// Puts what is selected, else everything, onto the clipboard.
    void copy();

Q_SIGNALS:
    /// The newest line of a portion that has just been shown, without its time.
    void latest(const QString& line);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void layOut();
    void showWaitingLines();
    bool isAtEnd() const;
    void scrollToEnd();

    LateDialog* saveDialog_;
    LogTap* tap_;
    QPlainTextEdit* view_;
    QTimer pace_; ///< gives a portion time to gather
};
