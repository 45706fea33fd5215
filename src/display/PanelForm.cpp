#include "display/PanelForm.h"

#include <QComboBox>
#include <QEvent>
#include <QPushButton>

namespace {

constexpr int besideText = 18; ///< frame and air of a button [pixels]

class WheelFilter : public QObject
{
public:
    explicit WheelFilter(QWidget* choice)
        : QObject(choice)
    {
        choice->setFocusPolicy(Qt::StrongFocus); // the wheel alone gives no focus
        choice->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

} // namespace

void fitButtons(QWidget& panel)
{
    for (QPushButton* button : panel.findChildren<QPushButton*>()) {
        if (button->minimumWidth() == 0)
            button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) +
                                    besideText);
    }
}

void keepWheelFromChoices(QWidget& panel)
{
    for (QComboBox* choice : panel.findChildren<QComboBox*>())
        new WheelFilter(choice);
}
