#pragma once

#include "analysis/elements/ElementAnalysis.h"
#include "spectrum/ElementList.h"

#include <QFrame>

#include <memory>

class NumberFields;
class QAbstractButton;
class QLineEdit;
class Ui_ElemCtrl;

/// A row of the element analysis: an element with its conditions and what was found last. One
/// line, below which the arrow at its end folds out the rest.
class ElemCtrl : public QFrame
{
    Q_OBJECT
public:
    explicit ElemCtrl(const ListedElement& element, QWidget* parent = nullptr);
    ~ElemCtrl() override;

    QString name() const { return element_.name; } ///< "Fe-K"
    double energy() const;                         ///< of the edge, as the field stands [eV]
    /// The word means this row, as isCalled() tells.
    bool isNamed(const QString& word) const { return isCalled(element_, word); }
    /// All that an analysis needs of this row.
    ElementRow data() const;
    double stdRatio() const { return stdRatio_; } ///< as it was last entered
    /// What was found last.
    const ElementValues& result() const { return result_; }

    /// The buttons that make the row the target and show its maps; they belong to groups of the
    /// panel.
    QAbstractButton* targetButton() const;
    QAbstractButton* showButton() const;
    /// Widths [pixels] of the line's fields for dmut and ratio, and of the arrow behind them.
    struct Columns
    {
        int field;
        int arrow;
        int gap;
    };
    Columns columns() const;

    /// Has its number fields watched, or no longer.
    void watchFields(NumberFields& numbers) const;
    void forgetFields(NumberFields& numbers) const;

    void setPrePostDE(double eV);
    void setThreshold(double jump);
    void setRoi(double from, double to); ///< [eV]
    void setNoNeg(bool f);
    void setUse(bool f);
    /// Enters a standard ratio.
    void setStdRatio(double ratio);
    void setResult(const ElementValues& result);
    /// Enters a text into the field E0, dE, Th, Std, ROIs or ROIe, as by hand; another name is a
    /// fault.
    void enter(const QString& field, const QString& text);
    /// The batch lines that bring the row's conditions to where they stand.
    QStringList conditionLines() const;

public Q_SLOTS:
    /// Takes the standard ratio that was entered.
    void newStdRatio();

Q_SIGNALS:
    void changed(); ///< a condition is another
    void edited();  ///< the same, once it was entered whole

private:
    Q_DISABLE_COPY(ElemCtrl)

    void setupLine();
    void connectFields();
    void unfold(bool f);
    QVector<QLineEdit*> conditionFields() const;
    struct NamedField
    {
        QString name;
        QLineEdit* field;
    };
    QVector<NamedField> namedFields() const;

    const std::unique_ptr<Ui_ElemCtrl> ui_;
    const ListedElement element_;
    double stdRatio_ = 1.0;
    ElementValues result_{0.0, 1.0}; ///< as the fields stand at first
};
