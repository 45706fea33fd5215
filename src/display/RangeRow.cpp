#include "display/RangeRow.h"

#include "common/ColorScale.h"
#include "display/NumberFields.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <cmath>

namespace {

constexpr int digits = 6;
constexpr int fieldMargin = 10; ///< round the number in a field [pixels]

/// By the number of the rule; behind them what stands for a range that was given.
constexpr std::array<const char*, rangeRules + 1> ruleTexts = {
    "1 - 99 %",
    "0.1 - 99.9 %",
    "5 - 95 %", // the same in every language
    QT_TRANSLATE_NOOP("RangeRow", "All values"),
    QT_TRANSLATE_NOOP("RangeRow", "Each image"),
    QT_TRANSLATE_NOOP("RangeRow", "Typed")};
constexpr int typedIndex = rangeRules;

constexpr std::array<const char*, rampCount> rampTexts = {
    QT_TRANSLATE_NOOP("RangeRow", "Grey"), QT_TRANSLATE_NOOP("RangeRow", "Hot"),
    QT_TRANSLATE_NOOP("RangeRow", "Viridis"), QT_TRANSLATE_NOOP("RangeRow", "Cividis")};

QString numberText(double v)
{
    return QString::number(v, 'g', digits);
}

} // namespace

RangeRow::RangeRow(QWidget* parent)
    : QWidget(parent)
    , numbers_(new NumberFields(this))
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(new QLabel(tr("Scale"), this));
    min_ = addField(QStringLiteral("ScaleMin"), tr("Scale Min."), tr("Value of the lowest colour"));
    row->addWidget(new QLabel(QStringLiteral("-"), this));
    max_ =
        addField(QStringLiteral("ScaleMax"), tr("Scale Max."), tr("Value of the highest colour"));
    addRules();
    row->addStretch(1);
    addRamps();
    fitWidths();
}

QLineEdit* RangeRow::addField(const QString& name, const QString& label, const QString& toolTip)
{
    auto* const field = new QLineEdit(this);
    field->setObjectName(name);
    field->setToolTip(toolTip);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    numbers_->watch(field, label);
    layout()->addWidget(field);
    connect(field, &QLineEdit::editingFinished, this, &RangeRow::takeTyped);
    return field;
}

void RangeRow::addRules()
{
    rule_ = new QComboBox(this);
    rule_->setObjectName(QStringLiteral("ScaleRule"));
    for (const char* text : ruleTexts)
        rule_->addItem(tr(text));
    layout()->addWidget(rule_);
    connect(rule_, qOverload<int>(&QComboBox::activated), this, &RangeRow::takeRule);
    setRuleLocked(QString());
}

void RangeRow::addRamps()
{
    ramp_ = new QComboBox(this);
    ramp_->setObjectName(QStringLiteral("ColourMap"));
    ramp_->setToolTip(tr("Colours of image and bar"));
    for (const char* text : rampTexts)
        ramp_->addItem(tr(text));
    layout()->addWidget(ramp_);
    connect(ramp_, qOverload<int>(&QComboBox::currentIndexChanged), this, &RangeRow::rampChanged);
}

/// Usual numbers fit always, and the widest that is shown where there is room.
void RangeRow::fitWidths()
{
    const auto width = [this](const char* text) {
        return fontMetrics().horizontalAdvance(QLatin1String(text)) + fieldMargin;
    };
    for (QLineEdit* field : {min_, max_}) {
        field->setMinimumWidth(width("-0.123457"));
        field->setMaximumWidth(width("-1.23457e-05"));
    }
}

void RangeRow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        fitWidths();
    QWidget::changeEvent(event);
}

void RangeRow::showRange(const ValueRange& range)
{
    if (hasRange_ && shown_ == range)
        return;
    shown_ = range;
    hasRange_ = true;
    setNumbers();
}

void RangeRow::showNoRange()
{
    hasRange_ = false;
    setNumbers();
}

void RangeRow::setNumbers()
{
    for (const auto& [field, value] : {std::pair(min_, shown_.min), std::pair(max_, shown_.max)}) {
        field->setEnabled(hasRange_);
        if (!(field->hasFocus() && field->isModified()))
            field->setText(hasRange_ ? numberText(value) : QString());
    }
}

void RangeRow::showChoice(const RangeChoice& choice)
{
    rule_->setCurrentIndex(choice.given ? typedIndex : int(choice.rule));
}

void RangeRow::setRuleLocked(const QString& why)
{
    rule_->setEnabled(why.isEmpty());
    rule_->setToolTip(why.isEmpty() ? tr("Share of the values that the scale spans") : why);
}

int RangeRow::ramp() const
{
    return ramp_->currentIndex();
}

void RangeRow::setRamp(int ramp)
{
    if (ramp >= 0 && ramp < rampCount)
        ramp_->setCurrentIndex(ramp);
}

QStringList RangeRow::unreadable() const
{
    return numbers_->unreadable();
}

/// A field that was left as it is keeps its value with all digits; with what can't be read there is
/// no range to take, and the field says so.
void RangeRow::takeTyped()
{
    if (!min_->isModified() && !max_->isModified())
        return;
    bool ok = hasRange_;
    const auto value = [&ok](QLineEdit* field, double shown) {
        bool isNumber = true;
        const bool typed = field->isModified() && !field->text().isEmpty();
        const double v = typed ? field->text().toDouble(&isNumber) : shown;
        ok = ok && isNumber && std::isfinite(v);
        return v;
    };
    const ValueRange typed{value(min_, shown_.min), value(max_, shown_.max)};
    if (!ok)
        return;
    min_->setModified(false);
    max_->setModified(false);
    Q_EMIT rangeTyped(typed.min, typed.max);
    setNumbers();
}

void RangeRow::takeRule(int index)
{
    if (index < rangeRules)
        Q_EMIT ruleChosen(RangeRule(index));
    else
        Q_EMIT rangeTyped(shown_.min, shown_.max);
}
