#include "batch/CommandBook.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandTable.h"
#include "common/Fault.h"
#include "common/FieldText.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

#include <utility>

namespace {

void enter(QLineEdit* field, const QString& text)
{
    field->setText(text);
    Q_EMIT field->editingFinished();
}

void select(QComboBox* box, const QString& what, const CmdLine& cmd)
{
    const int index = intArg(cmd, 0);
    if (index >= 0 && index < box->count())
        box->setCurrentIndex(index);
    else
        fault(QStringLiteral("No %1 has the number %2: %3")
                  .arg(what, QString::number(index), cmd.simplified));
}

} // namespace

/// A command that shows its argument in a field, after its own manner.
void CommandBook::field(EX_CMD_ID id, QLineEdit* field, QString (*shown)(const QString& text))
{
    action(id, [field, shown](const CmdLine& cmd) { enter(field, shown(cmd.arg(0))); });
    fields_.emplace(id, field);
    history_.follow([id, field, shown] {
        const QString text = field->text();
        // What the command would show otherwise is entered as it stands.
        return QStringList(shown(text) == text ? batchLine(id, {text})
                                               : batchLine(ExCmdEnter, {exCmdName(id), text}));
    });
}

void CommandBook::whole(EX_CMD_ID id, QLineEdit* field)
{
    this->field(id, field, [](const QString& text) { return QString::number(text.toInt()); });
}

void CommandBook::number(EX_CMD_ID id, QLineEdit* field)
{
    this->field(id, field, [](const QString& text) { return fieldText(text.toDouble()); });
}

void CommandBook::text(EX_CMD_ID id, QLineEdit* field)
{
    this->field(id, field, [](const QString& text) { return text; });
}

void CommandBook::textUnfollowed(EX_CMD_ID id, QLineEdit* field)
{
    action(id, [field](const CmdLine& cmd) { enter(field, cmd.arg(0)); });
}

void CommandBook::onOff(EX_CMD_ID id, QAbstractButton* button)
{
    action(id, [button](const CmdLine& cmd) { button->setChecked(onArg(cmd, 0)); });
    history_.follow([id, button] { return QStringList(batchLine(id, button->isChecked())); });
}

void CommandBook::check(EX_CMD_ID id, QAbstractButton* button)
{
    action(id, [button](const CmdLine&) { button->setChecked(true); });
    history_.follow(
        [id, button] { return button->isChecked() ? QStringList(batchLine(id)) : QStringList(); });
}

void CommandBook::choose(EX_CMD_ID id, QComboBox* box, const QString& what)
{
    action(id, [box, what](const CmdLine& cmd) { select(box, what, cmd); });
    history_.follow(
        [id, box] { return QStringList(batchLine(id, {QString::number(box->currentIndex())})); });
}

void CommandBook::bindEnter()
{
    action(ExCmdEnter, [this](const CmdLine& cmd) {
        const auto known = fields_.find(exCmdId(CmdLine(cmd.arg(0))));
        if (known == fields_.end())
            fault(QStringLiteral("No field is set by a command \"%1\"").arg(cmd.arg(0)));
        else
            enter(known->second, cmd.arg(1));
    });
}

void CommandBook::action(EX_CMD_ID id, Action act)
{
    bind(
        id,
        [act = std::move(act)](const CmdLine& cmd, CommandEnd end) {
            act(cmd);
            return end;
        },
        false);
}

void CommandBook::later(EX_CMD_ID id, Start start)
{
    bind(
        id,
        [start = std::move(start)](const CmdLine& cmd, CommandEnd end) {
            start(cmd, std::move(end));
            return CommandEnd();
        },
        true);
}

void CommandBook::bind(EX_CMD_ID id, Row row, bool later)
{
    Q_ASSERT_X(!has(id), "CommandBook", "a command is bound twice");
    bound_.append(id);
    rows_.emplace(id, Bound{std::move(row), later});
}

bool CommandBook::endsLater(EX_CMD_ID id) const
{
    const auto row = rows_.find(id);
    return row != rows_.end() && row->second.later;
}

CommandEnd CommandBook::run(EX_CMD_ID id, const CmdLine& cmd, CommandEnd end) const
{
    const auto row = rows_.find(id);
    if (row != rows_.end())
        return row->second.row(cmd, std::move(end));
    fault(QStringLiteral("Command not available in this version: ") + cmd.word);
    return end;
}
