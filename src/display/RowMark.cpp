#include "display/RowMark.h"

#include <QStyle>

RowMark::RowMark(QWidget* parent)
    : QLabel(parent)
{
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side, side));
    hide();
}

void RowMark::setReasons(const QString& reasons)
{
    setToolTip(reasons);
    setAccessibleDescription(reasons);
    setVisible(!reasons.isEmpty());
}
