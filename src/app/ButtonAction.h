#pragma once

#include <QAction>

class QAbstractButton;

/// A menu entry that clicks a button of the form. It is enabled and visible as the button is.
class ButtonAction : public QAction
{
    Q_OBJECT
public:
    /// The button must outlive the action.
    ButtonAction(const QString& text, QAbstractButton* button, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QAbstractButton* button_;
};
