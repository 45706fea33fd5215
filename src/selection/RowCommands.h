#pragma once

class CommandBook;
class SelectDataFiles;

/// Binds the commands that exist for both stacks and act on the rows of their files.
void bindRowCommands(CommandBook& book, SelectDataFiles& i1, SelectDataFiles& i0);
