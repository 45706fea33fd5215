#pragma once

#include <QSaveFile>

/// Brings a written file under its final name; false, leaving whatever stood there, when anything
/// of it could not be written. QSaveFile::commit() alone does not see a fault in writing out what
/// was still buffered. Text streams on the file are to be flushed before.
inline bool commitWritten(QSaveFile& file)
{
    return file.flush() && file.error() == QFileDevice::NoError && file.commit();
}
