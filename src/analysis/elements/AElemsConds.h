#pragma once

#include "analysis/elements/ElementAnalysis.h"

#include <QFrame>

#include <memory>

class QLineEdit;
class Ui_AElemsConds;

/// The values that a row without an edge gets at a position. Those of the dmut ratio and of the
/// normalised region of interest are kept and take no part: the ratio is made of what stands for
/// the jumps, and both regions have the same value.
class AElemsConds : public QFrame
{
    Q_OBJECT
public:
    explicit AElemsConds(QWidget* parent = nullptr);
    ~AElemsConds() override;

    enum Field
    {
        DMut,
        DMutR,
        DE,
        ROI,
        NROI
    };
    QLineEdit* field(Field which) const;
    void setValue(Field which, double v);
    /// Takes the background values over.
    void fill(ElementConditions& conditions) const;

Q_SIGNALS:
    void changed(); ///< a value that takes part is another
    void edited();  ///< the same, once it was entered whole

private:
    Q_DISABLE_COPY(AElemsConds)

    const std::unique_ptr<Ui_AElemsConds> ui_;
};
