#pragma once

#include "app/Body.h"

#include <array>

// Arguments as numbers; what is missing or no number counts as 0.
inline int intArg(const CmdLine& cmd, int i)
{
    return cmd.arg(i).toInt();
}
inline double doubleArg(const CmdLine& cmd, int i)
{
    return cmd.arg(i).toDouble();
}
/// Of the switches, only the value 1 means on.
inline bool onArg(const CmdLine& cmd, int i)
{
    return intArg(cmd, i) == 1;
}

/// The batch commands as they act on the main window and its panels: tables from a command's number
/// to what it does.
struct Body::Commands
{
    using B = Body;
    using C = CmdLine;
    using Handler = void (*)(Body& body, const CmdLine& cmd);

    /// Who reports the end of a command.
    enum End
    {
        AtOnce,
        Later
    };

    struct Entry
    {
        EX_CMD_ID id;
        Handler run;
        End end = AtOnce;
    };

    struct Slot
    {
        Handler run = nullptr;
        void (*runOnRow)(SelectDataFiles& row, const CmdLine& cmd) = nullptr;
        bool i0 = false;
        bool changesSpectrum = false; ///< the spectrum at the cursor is made of what it sets
        End end = AtOnce;
    };
    using Table = std::array<Slot, ExCmdEnd>;

    // BodyCommands.cpp
    static void load(Body& b, const CmdLine& c, const QStringList& files, bool i0);
    static bool namesFiles(Body& b, const CmdLine& c);
    static void loadFiles(Body& b, const CmdLine& c, bool i0);
    static void loadPattern(Body& b, const CmdLine& c, bool i0);
    static void selectDispImage(Body& b, const CmdLine& c);
    static void setColourRange(Body& b, const CmdLine& c);
    static QVector<Entry> stackCommands();
    static QVector<Entry> viewCommands();
    static QVector<Entry> conditionCommands();
    static const Table& table();

    // BodyPanelCommands.cpp
    static void setReference(Body& b, const CmdLine& c);
    static QVector<Entry> analyzerCommands();
    static QVector<Entry> calibrationCommands();
    static QVector<Entry> savingCommands();
};
