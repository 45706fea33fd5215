#include "display/FieldWidth.h"

#include <QLineEdit>
#include <QStyleOptionFrame>

namespace {

/// Room that a field keeps free on both sides of its text, and the cursor's. [pixels]
constexpr int besideText = 2 * 2 + 1;

int widthOf(const QLineEdit* field, int digits)
{
    const int text = field->fontMetrics().horizontalAdvance(QString(digits, QLatin1Char('0')));
    QStyleOptionFrame option;
    option.initFrom(field);
    option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
    option.rect = QRect(0, 0, 1000, field->sizeHint().height());
    const QRect inner = field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
    return text + besideText + option.rect.width() - inner.width();
}

} // namespace

void fitDigits(QLineEdit* field, int digits)
{
    field->setFixedWidth(widthOf(field, digits));
}

void fitDigitsAtLeast(QLineEdit* field, int digits)
{
    field->setMinimumWidth(widthOf(field, digits));
}
