#pragma once

#include "common/TimeLeft.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class RowMark;

/// The line of a walk or of another long run: the button that starts and stops it, how far it is,
/// and the time left; below it why it can't start, or what it would go over.
class RunRow : public QWidget
{
    Q_OBJECT
public:
    explicit RunRow(QWidget* parent = nullptr);

    /// Object names of the button and of the label between "(" and ")".
    void setNames(const QString& button, const QString& progress);
    /// What the button says of itself.
    struct Tips
    {
        QString start;
        QString stop;
    };
    void setTips(const Tips& tips);
    /// What the button that starts reads, instead of "Analyze".
    void setStartText(const QString& text);

    QPushButton* button() const { return button_; }

    /// Why the button can't start the walk, in people's words: it is disabled then, with the reason
    /// as tool tip and in the line below. Without a reason that line tells of the walk.
    void setReadiness(const QString& reason, const QString& walkText);
    /// While the walk runs the button stops it, whatever the reason; the bar shows while it does.
    void setRunning(bool f);
    /// Another walk runs: the button can start none until it is through.
    void setHeldBack(bool f);
    /// What the label shows. [%]
    void setProgress(double perCent);
    /// What the bar shows. [%]
    void setDone(double perCent);
    /// The walk was stopped at its progress, which the label keeps showing. [%]
    void setStoppedAt(double perCent);
    /// Marks its maps, with the reasons as tool tip; none for an empty text.
    void setMark(const QString& reasons);

Q_SIGNALS:
    void pressed();

private:
    void showReadiness();

    QPushButton* button_;
    QLabel* progress_;
    RowMark* mark_;
    QProgressBar* bar_;
    QLabel* text_;
    Tips tips_;
    QString startText_;
    QString reason_;
    QString walkText_;
    TimeLeft timeLeft_;
    bool running_ = false;
    bool heldBack_ = false;
};
