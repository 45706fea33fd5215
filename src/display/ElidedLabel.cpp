#include "display/ElidedLabel.h"

#include <QPainter>

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setLine(const QString& line)
{
    setText(line.simplified());
    // Rich text, which a tool tip breaks into lines.
    setToolTip(QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped()));
}

QSize ElidedLabel::sizeHint() const
{
    return {0, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return sizeHint();
}

void ElidedLabel::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.drawText(contentsRect(), int(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
}
