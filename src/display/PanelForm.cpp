#include "display/PanelForm.h"

#include <QPushButton>

namespace {

constexpr int besideText = 18; ///< frame and air of a button [pixels]

} // namespace

void fitButtons(QWidget& panel)
{
    for (QPushButton* button : panel.findChildren<QPushButton*>()) {
        if (button->minimumWidth() == 0)
            button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) +
                                    besideText);
    }
}
