#include "app/NoticeBar.h"

#include "display/ElidedLabel.h"
#include "display/MarkIcon.h"

#include <QHBoxLayout>
#include <QMouseEvent>

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent)
    , mark_(new QLabel(this))
    , line_(new ElidedLabel(this))
{
    mark_->hide();
    setObjectName(QStringLiteral("NoticeBar"));
    line_->setObjectName(QStringLiteral("Notice"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    row->addWidget(mark_);
    row->addWidget(line_, 1);
    setCursor(Qt::PointingHandCursor);
    notice(tr("Ready"), Mark::Done);
}

/// A quiet line stands without a mark: only what asks for a look has one.
void NoticeBar::notice(const QString& text, Mark mark)
{
    text_ = text;
    line_->setLine(text);
    mark_->setVisible(isLoud(mark));
    if (isLoud(mark))
        mark_->setPixmap(markPixmap(*this, mark));
}

void NoticeBar::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT clicked();
}
