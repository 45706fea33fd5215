#include "app/StepButton.h"

#include "display/MarkIcon.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace {

constexpr int margin = 6;         ///< left and right of all
constexpr int above = 5;          ///< above and below
constexpr int barHeight = 3;      ///< of the line below the step that is open
constexpr int leastLine = 96;     ///< of a state [pixels]
constexpr int usualHeight = 54;   ///< [pixels]
constexpr double lineShare = 0.9; ///< size of a state's text, of the font

constexpr int lineFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

} // namespace

StepButton::StepButton(QWidget* parent)
    : QPushButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void StepButton::setStep(int number, const QString& name)
{
    number_ = number;
    name_ = name;
    updateGeometry();
}

void StepButton::setState(const StepState& state)
{
    if (state_.line == state.line && state_.mark == state.mark && state_.share == state.share &&
        state_.sentence == state.sentence)
        return;
    const bool otherLine = state_.line != state.line;
    state_ = state;
    setToolTip(state.sentence);
    setAccessibleName(QStringLiteral("%1 %2: %3").arg(number_).arg(name_, state.line));
    if (otherLine)
        updateGeometry();
    update();
}

int StepButton::textLeft() const
{
    return margin + fontMetrics().height() + 5;
}

QFont StepButton::nameFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

/// A little smaller than the name, so that a state commonly takes one line.
QFont StepButton::lineFont() const
{
    QFont small = font();
    small.setPointSizeF(lineShare * small.pointSizeF());
    return small;
}

QRect StepButton::lineBox(int width) const
{
    const int room = qMax(1, width - textLeft() - margin);
    const QFontMetrics metrics(lineFont());
    return metrics.boundingRect(QRect(0, 0, room, 4 * metrics.height()), lineFlags, state_.line);
}

int StepButton::heightForWidth(int width) const
{
    const int lines = qMax(fontMetrics().height(), lineBox(width).height());
    return qMax(usualHeight, above + barHeight + fontMetrics().height() + lines);
}

QSize StepButton::sizeHint() const
{
    const int text = qMax(QFontMetrics(lineFont()).horizontalAdvance(state_.line), leastLine);
    const int width = textLeft() + text + margin + 2;
    return {width, heightForWidth(width)};
}

QSize StepButton::minimumSizeHint() const
{
    const int name = QFontMetrics(nameFont())
                         .horizontalAdvance(QStringLiteral("%1  %2").arg(number_).arg(name_));
    const int width = textLeft() + qMax(name, leastLine) + margin;
    return {width, usualHeight};
}

void StepButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter p(this);
    const QPalette& colours = palette();
    const bool lit = underMouse() && isEnabled();
    if (isChecked())
        p.fillRect(rect(), colours.color(QPalette::Base));
    else if (lit)
        p.fillRect(rect(), colours.color(QPalette::Midlight));
    if (isChecked())
        p.fillRect(0, height() - barHeight, width(), barHeight, colours.color(QPalette::Highlight));
    p.setPen(colours.color(QPalette::Mid));
    p.drawLine(width() - 1, above, width() - 1, height() - above);

    const int side = fontMetrics().height();
    paintMark(p, QRectF(margin, (height() - barHeight - side) / 2.0, side, side), state_.mark,
              state_.share, colours.color(QPalette::WindowText));
    p.setPen(colours.color(QPalette::WindowText));
    p.setFont(nameFont());
    const int room = width() - textLeft() - margin;
    p.drawText(QRect(textLeft(), above, room, side), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("%1  %2").arg(number_).arg(name_));
    p.setFont(lineFont());
    p.drawText(QRect(textLeft(), above + side, room, height() - above - side), lineFlags,
               state_.line);
    if (hasFocus()) {
        QStyleOptionFocusRect frame;
        frame.initFrom(this);
        frame.rect = rect().adjusted(2, 2, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &p, this);
    }
}
