#include "display/FileCombo.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QStylePainter>

namespace {

constexpr int besideText = 4; ///< what styles keep free round the text [pixels]

} // namespace

FileCombo::FileCombo(QWidget* parent)
    : QComboBox(parent)
{
    view()->setTextElideMode(Qt::ElideMiddle);
}

void FileCombo::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    const int room = field.width() - besideText;
    if (fontMetrics().horizontalAdvance(option.currentText) > room)
        option.currentText = fontMetrics().elidedText(QFileInfo(option.currentText).fileName(),
                                                      Qt::ElideMiddle, room);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
