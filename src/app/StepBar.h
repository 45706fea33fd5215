#pragma once

#include "app/StepStates.h"

#include <QToolBar>

#include <memory>

class QPushButton;
class StepButton;
class Ui_StepBar;

/// The bar of the five steps above everything else, and the tab bar of their forms: how all of them
/// stand is seen whichever is open. At its right end stand the buttons that open windows.
class StepBar : public QToolBar
{
    Q_OBJECT
public:
    explicit StepBar(QWidget* parent = nullptr);
    ~StepBar() override;

    void setStates(const StepStates& states);
    /// Marks the step whose form is in front; tells nobody.
    void setOpen(Step step);
    StepButton* button(Step step) const;
    /// The button that opens a window, by its object name.
    QPushButton* opener(const QString& name) const;

Q_SIGNALS:
    /// A step's button was pressed, also that of the open one.
    void stepChosen(Step step);

private:
    const std::unique_ptr<Ui_StepBar> ui_;
    QWidget* const row_;
};
