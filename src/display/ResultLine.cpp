#include "display/ResultLine.h"

#include <QPainter>
#include <QTextLayout>

ResultLine::ResultLine(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ResultLine::setResult(const QString& text)
{
    if (text == this->text())
        return;
    if (purpose_.isNull())
        purpose_ = toolTip();
    setText(text);
    const QString words = text.simplified();
    // Rich text, which a tool tip breaks into lines.
    setToolTip(words.isEmpty() ? purpose_
                               : QStringLiteral("<p>%1</p><p>%2</p>")
                                     .arg(words.toHtmlEscaped(), purpose_.toHtmlEscaped()));
}

QSize ResultLine::sizeHint() const
{
    return {0, 2 * fontMetrics().height()};
}

void ResultLine::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    const QRect area = contentsRect();
    QPainter painter(this);
    QTextLayout layout(text(), font());
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(area.width());
    layout.endLayout();
    if (!line.isValid())
        return;
    line.draw(&painter, area.topLeft());
    const QString rest = text().mid(line.textLength()).trimmed();
    painter.drawText(area.left(), area.top() + fontMetrics().height() + fontMetrics().ascent(),
                     fontMetrics().elidedText(rest, Qt::ElideRight, area.width()));
}
