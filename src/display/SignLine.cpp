#include "display/SignLine.h"

#include "display/MarkIcon.h"

#include <QHBoxLayout>
#include <QLabel>

SignLine::SignLine(QWidget* parent)
    : QWidget(parent)
    , picture_(new QLabel(this))
    , text_(new QLabel(this))
{
    text_->setWordWrap(true);
    text_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    text_->setTextFormat(Qt::PlainText);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(picture_, 0, Qt::AlignTop);
    layout->addWidget(text_, 1);
    picture_->setPixmap(markPixmap(*this, mark_));
}

void SignLine::setLine(Mark mark, const QString& text)
{
    mark_ = mark;
    text_->setText(text);
    picture_->setPixmap(markPixmap(*this, mark_));
}

QString SignLine::text() const
{
    return text_->text();
}
