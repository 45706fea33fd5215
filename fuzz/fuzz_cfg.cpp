#include "Fuzz.h"

#include "common/Cfg.h"
#include "common/Settings.h"

namespace {

/// Splits the input into files that may include one another; "config" is the first.
void writeFiles(QByteArray bytes)
{
    const QByteArray separator = "\n@@@\n";
    const QString names[] = {QStringLiteral("config"), QStringLiteral("a"), QStringLiteral("b")};
    for (const QString& name : names) {
        const int end = bytes.indexOf(separator);
        writeInput(bytes.left(end), name);
        bytes = end < 0 ? QByteArray() : bytes.mid(end + separator.size());
    }
}

void checkTable(Cfg& cfg)
{
    const Cfg::Rows& rows = cfg.rows();
    check(rows.keys.size() == rows.values.size() && rows.keys.size() == rows.rests.size() &&
              rows.keys.size() == rows.files.size() && rows.keys.size() == rows.rowOf.size(),
          "a row has all its parts");
    check(cfg.upperRows().keys.size() <= rows.keys.size(), "capitals join keys");
    for (int row = 0; row < rows.keys.size(); ++row) {
        check(rows.find(rows.keys[row]) == row, "a key finds its row");
        check(cfg.containsUpper(rows.keys[row].toUpper()), "a key is found in capitals");
        check(cfg.value(rows.keys[row]) == rows.values[row], "a key has its value");
    }
}

} // namespace

/// Configuration files, and the settings that are taken from them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    writeFiles(asBytes(data, size));
    Cfg& cfg = theCfg();
    cfg = Cfg();
    initSettings();
    cfg.readFile(QStringLiteral("config"));
    checkTable(cfg);
    applySettings(cfg);
    configuredBatch(cfg);
    check(WalkThreads >= 0 && WalkThreads <= 256, "threads are a number that a machine can have");
    return 0;
}
