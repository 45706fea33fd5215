#pragma once

#include "batch/CmdLine.h"

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
