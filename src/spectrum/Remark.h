#pragma once

#include <QStringList>

/// A sentence about a spectrum's file: English in the log, in the interface's language at the row
/// that holds the file.
struct Remark
{
    /// With %1 and on for the arguments; marked for translation in the context "Remark".
    const char* text;
    QStringList args;
    bool atRow = true; ///< worth a mark at the row, else for the log alone

    QString english() const;
    QString shown() const;
    /// One line that names the file.
    void log(const QString& fname) const;
};
