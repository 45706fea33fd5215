#pragma once

#include <QString>

/// Reads a batch file into `text`, which then ends with a line end unless it is empty. Empty when
/// that went well; else what is wrong with the file, which is named, with `text` as it was: a file
/// that can't be opened, is over 16 MB, or has a longer line than an editor can show. Logs nothing.
QString readBatchFile(const QString& fname, QString& text);
