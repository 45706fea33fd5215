#include "app/StateStrip.h"

#include "display/MarkIcon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int buttonAir = 18; ///< round a button's text; Fusion's own would be 80 pixels wide

} // namespace

StateStrip::StateStrip(QWidget* parent)
    : QFrame(parent)
    , mark_(new QLabel(this))
    , sentence_(new QLabel(this))
    , button_(new QPushButton(this))
{
    sentence_->setWordWrap(true);
    setObjectName(QStringLiteral("StateStrip"));
    sentence_->setObjectName(QStringLiteral("Sentence"));
    button_->setObjectName(QStringLiteral("MendIt"));
    sentence_->setTextFormat(Qt::PlainText);
    button_->hide();
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(6, 3, 4, 3);
    row->setSpacing(6);
    row->addWidget(mark_, 0, Qt::AlignVCenter);
    row->addWidget(sentence_, 1);
    row->addWidget(button_);
    setAutoFillBackground(true);
    connect(button_, &QPushButton::clicked, this, [this] { Q_EMIT mendAsked(shown_.mend); });
}

void StateStrip::setState(const StepState& state)
{
    if (shown_.sentence == state.sentence && shown_.mark == state.mark &&
        shown_.mend == state.mend && shown_.share == state.share)
        return;
    if (shown_.mark != state.mark || shown_.share != state.share ||
        mark_->pixmap(Qt::ReturnByValue).isNull())
        mark_->setPixmap(markPixmap(*this, state.mark, state.share));
    if (shown_.mark != state.mark)
        tint(state.mark);
    shown_ = state;
    sentence_->setText(state.sentence);
    const QString text = mendText(state.mend);
    button_->setVisible(!text.isEmpty());
    button_->setText(text);
    button_->setMinimumWidth(fontMetrics().horizontalAdvance(text) + buttonAir);
}

/// A tinted ground is light in every palette, and takes black text.
void StateStrip::tint(Mark mark)
{
    const QColor ground = markTint(mark);
    if (!ground.isValid()) {
        setPalette(QPalette());
        return;
    }
    QPalette tinted = palette();
    tinted.setColor(QPalette::Window, ground);
    tinted.setColor(QPalette::WindowText, Qt::black);
    setPalette(tinted);
    // The button stands on the ground in its own colours.
    button_->setPalette(QPalette());
}
