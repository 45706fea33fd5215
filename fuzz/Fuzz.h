#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What all fuzzers share. A fuzzer hands bytes to a reader of the program the way a user does, as a
// file, and ends by check() where the reader breaks what it promises; the sanitizers find the rest.

/// The bytes that libFuzzer gives, for the length of a call.
inline QByteArray asBytes(const uint8_t* data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
}

/// Writes a file into the fuzzer's own folder, which is in memory and the working folder, and goes
/// with the program. Gives its path.
QString writeInput(const QByteArray& bytes, const QString& name = QStringLiteral("input"));

/// Ends the fuzzer by a finding unless `holds`.
void check(bool holds, const char* promise);

/// Whether both are the same number, or both nan.
bool isSame(double a, double b);
