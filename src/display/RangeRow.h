#pragma once

#include "image/DisplayRange.h"

#include <QWidget>

class NumberFields;
class QComboBox;
class QLabel;
class QLineEdit;

/// The row below the image: the range of values that the picture spans, the rule that it follows,
/// and the colour map.
class RangeRow : public QWidget
{
    Q_OBJECT
public:
    explicit RangeRow(QWidget* parent = nullptr);

    /// Shows the range, unless one is being typed; and that there is none. Tell nobody.
    void showRange(const ValueRange& range);
    void showNoRange();
    /// Shows the rule, or that the range was given.
    void showChoice(const RangeChoice& choice);
    /// With a reason the rule can not be chosen: the reason is its tool tip then.
    void setRuleLocked(const QString& why);

    int ramp() const;
    void setRamp(int ramp);

    /// Number fields of it that can not be read, by their names.
    QStringList unreadable() const;

Q_SIGNALS:
    void rangeTyped(double min, double max);
    void ruleChosen(RangeRule rule);
    void rampChanged(int ramp);

private:
    QLineEdit* addField(const QString& name, const QString& label, const QString& toolTip);
    void addRules();
    void addRamps();
    void takeTyped();
    void takeRule(int index);
    void setNumbers();
    void fitWidths();
    void changeEvent(QEvent* event) override;

    NumberFields* numbers_;
    QLineEdit* min_ = nullptr;
    QLineEdit* max_ = nullptr;
    QComboBox* rule_ = nullptr;
    QComboBox* ramp_ = nullptr;
    ValueRange shown_{0.0, 1.0};
    bool hasRange_ = false;
};
