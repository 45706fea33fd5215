#pragma once

#include <optional>

/// What the program does without a window, and so without a display: "--check file" tells what a
/// batch would stumble over, "--help" lists the options, "--help-commands" the batch commands,
/// "--version" tells what this program is built of. Results go to the standard output, why there
/// are none to the error stream. Gives the exit code, or nothing when the command line, which
/// theCfg() holds already, asks for none of these. To be called before there is an application.
std::optional<int> runConsoleMode(int argc, char** argv, const char* version);
