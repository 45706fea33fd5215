#pragma once

#include "batch/CommandEnd.h"
#include "batch/History.h"
#include "common/ExCmdId.h"

#include <QVector>

#include <functional>
#include <map>

class CmdLine;
class QAbstractButton;
class QComboBox;
class QLineEdit;

/// The table from a command's number to what it does. Panels, boxes and conductors bind their own
/// commands in it; whoever takes commands from the batch runs them by it.
///
/// Nothing is owned: fields and what functions hold must live until the last run(). So the book
/// belongs to the conductor, which goes before the forms do. A command must not destroy the book.
/// GUI thread.
class CommandBook
{
public:
    using Action = std::function<void(const CmdLine& cmd)>;
    using Start = std::function<void(const CmdLine& cmd, CommandEnd end)>;

    /// What the user does, as lines of these commands. Fields and buttons that are bound below are
    /// followed in it; whoever binds functions tells it of what they set.
    History& history() { return history_; }

    // Each command is bound once: a second binding is an error of the program, and has no effect.
    // Rows of fields take argument 0, and go by CommandArgs.h; the fields send the signals that
    // they send when their values change.

    /// Sets a whole number, or a number as fieldText() writes it, or the argument as it stands.
    /// The field tells the end of an edit.
    void whole(EX_CMD_ID id, QLineEdit* field);
    void number(EX_CMD_ID id, QLineEdit* field);
    void text(EX_CMD_ID id, QLineEdit* field);

    /// The last one, of a field that whoever binds it follows in the history itself.
    void textUnfollowed(EX_CMD_ID id, QLineEdit* field);

    /// Checks the button when the argument is 1, and unchecks it otherwise.
    void onOff(EX_CMD_ID id, QAbstractButton* button);

    /// Selects the item of that index. One that there is not is a fault, in which `what` names the
    /// kind of item ("edge"), and changes nothing.
    void choose(EX_CMD_ID id, QComboBox* box, const QString& what);

    /// Lets the command that enters any text do so in a field whose own command is a function.
    void enterable(EX_CMD_ID id, QLineEdit* field) { fields_.emplace(id, field); }

    /// The button alone, which the command checks: one of an exclusive group.
    void check(EX_CMD_ID id, QAbstractButton* button);

    /// The command that enters any text into the field of another command: numbers that are typed
    /// may have more digits than those of a command.
    void bindEnter();

    /// A command that has ended when the function returns.
    void action(EX_CMD_ID id, Action act);

    /// A command whose end is reported by the function, or by whoever it hands the handle to.
    void later(EX_CMD_ID id, Start start);

    bool has(EX_CMD_ID id) const { return rows_.count(id) != 0; }

    /// The command may end behind its return.
    bool endsLater(EX_CMD_ID id) const;

    /// All bindings in their order, a second one of the same command too.
    const QVector<EX_CMD_ID>& bound() const { return bound_; }

    /// Carries the command out; one that is not bound is a fault. Hands `end` back, with done()
    /// still to be said, when the command has ended by its return. The caller says it, once it has
    /// recorded the faults: a report takes the batch to its next line. Of later() rows nothing
    /// comes back (an empty handle, on which done() does nothing), so the caller need not know the
    /// kind. Such a row may report before run() returns, and its faults are then recorded behind
    /// the report.
    [[nodiscard]] CommandEnd run(EX_CMD_ID id, const CmdLine& cmd, CommandEnd end) const;

private:
    /// Returns the handle when the command has ended.
    using Row = std::function<CommandEnd(const CmdLine& cmd, CommandEnd end)>;

    void bind(EX_CMD_ID id, Row row, bool later);
    void field(EX_CMD_ID id, QLineEdit* field, QString (*shown)(const QString& text));

    struct Bound
    {
        Row row;
        bool later;
    };
    std::map<EX_CMD_ID, Bound> rows_;
    std::map<EX_CMD_ID, QLineEdit*> fields_;
    History history_;
    QVector<EX_CMD_ID> bound_;
};
