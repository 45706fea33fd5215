#pragma once

#include "display/Fold.h"
#include "maps/MapArithmetic.h"
#include "maps/MapKinds.h"

#include <memory>
#include <optional>

class QAbstractButton;
class QLineEdit;
class Ui_ArithmeticSection;

/// The part of the panel for map arithmetic: which maps are its operands, what is made of them, and
/// which of the three is shown. It holds no map and calculates nothing. Operands are 1 and 2.
class ArithmeticSection : public Fold
{
    Q_OBJECT
public:
    explicit ArithmeticSection(QWidget* parent = nullptr);
    ~ArithmeticSection() override;

    /// What an operand is: the name of the map that was captured, or a file.
    void setOperandName(int operand, const QString& name);

    MapOperation operation() const;
    void setOperation(MapOperation operation);

    /// The map whose button is checked; none at start.
    std::optional<MapKind> shownOperand() const;
    /// The same by number: 0 the processed map, 1 and 2 the operands.
    std::optional<int> shownNumber() const;
    /// Shows one of the three by its number, as by hand; another is a fault.
    void showByNumber(int number);
    /// Unchecks all three buttons without a signal: another map is shown.
    void clearShown();
    /// Checks the button of the processed map: whoever processes wants to see what came of it.
    void showProcessed();

    /// Why the maps can not be processed, in people's words; empty when they can.
    void setReadiness(const QString& why);

Q_SIGNALS:
    void captureAsked(int operand);
    void fileChosen(int operand, const QString& file);
    void processAsked(MapOperation operation);
    /// Another of the three maps is to be shown.
    void changedSelection();

private:
    void connectOperand(int operand, QAbstractButton* select, QAbstractButton* capture);

    std::unique_ptr<Ui_ArithmeticSection> ui_;
};
