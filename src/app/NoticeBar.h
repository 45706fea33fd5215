#pragma once

#include "common/Mark.h"

#include <QWidget>

class ElidedLabel;
class QLabel;

/// The last line for people, with its mark, in the status bar. A click asks for all messages.
class NoticeBar : public QWidget
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    QString text() const { return text_; }

public Q_SLOTS:
    void notice(const QString& text, Mark mark);

Q_SIGNALS:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QLabel* const mark_;
    ElidedLabel* const line_;
    QString text_;
};
