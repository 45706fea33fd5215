#pragma once

#include "batch/CommandTable.h"

#include <cstddef>

// The rows of the command tables, as they are written down.

struct CommandText
{
    EX_CMD_ID id;
    const char* word;
    const char* arguments;
    const char* example;
    bool later;
    const char* effect;
};

template<std::size_t N>
QVector<ExCmdRow> commandRows(const CommandText (&texts)[N])
{
    QVector<ExCmdRow> rows;
    for (const CommandText& text : texts)
        rows.append({text.id, QLatin1String(text.word), QLatin1String(text.arguments),
                     QLatin1String(text.example), text.later, QLatin1String(text.effect)});
    return rows;
}

/// In the order of their identifiers, as batches have always known them; the last row stands for
/// no command.
QVector<ExCmdRow> toldCommands();
QVector<ExCmdRow> extensionCommands();
