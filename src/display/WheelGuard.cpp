#include "display/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QSlider>

namespace {

class WheelGuard : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return QObject::eventFilter(watched, event);
        event->ignore(); // which hands it to the parent
        return true;
    }
};

template<typename Widget>
void guard(QWidget* panel, QObject* filter)
{
    for (Widget* widget : panel->findChildren<Widget*>()) {
        widget->setFocusPolicy(Qt::StrongFocus);
        widget->installEventFilter(filter);
    }
}

} // namespace

void guardWheel(QWidget* panel)
{
    auto* const filter = new WheelGuard(panel);
    guard<QComboBox>(panel, filter);
    guard<QAbstractSpinBox>(panel, filter);
    guard<QSlider>(panel, filter);
}
