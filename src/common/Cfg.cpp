#include "common/Cfg.h"

#include "common/Fault.h"
#include "common/TextFile.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QFileInfo>

namespace {

// A configuration is a page of text. The limits only keep a wrong file, or files that include one
// another in a fan, from taking the machine.
constexpr int deepestNesting = 32;
constexpr int mostFiles = 1000;
constexpr qint64 mostBytes = 4 * 1024 * 1024;

bool isOption(const QString& word)
{
    return word.startsWith(QLatin1Char('-'));
}

} // namespace

/// What one call of readFile() has read so far, over all included files.
struct Cfg::Reading
{
    QStringList open; ///< canonical paths of the files being read, outermost first
    int filesLeft = mostFiles;
    qint64 bytesLeft = mostBytes;
};

void Cfg::Rows::put(const QString& key, const QString& value, const QString& rest)
{
    const int row = find(key);
    if (row >= 0) {
        values[row] = value;
        rests[row] = rest;
        return;
    }
    rowOf.insert(key, keys.size());
    keys.append(key);
    values.append(value);
    rests.append(rest);
    files.append(QString());
}

Cfg::Cfg(int argc, const char* const* argv, QString fileName, const QStringList& fileOptions)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    parseArguments(words);
    for (const QString& option : fileOptions) {
        const QString upper = option.toUpper();
        if (containsUpper(upper))
            fileName = upperValue(upper);
    }
    if (!fileName.isEmpty())
        readFile(fileName);
}

void Cfg::parseArguments(const QStringList& words)
{
    for (int i = 0; i < words.size(); ++i) {
        if (!isOption(words[i]))
            continue;
        QStringList rest;
        for (int j = i + 1; j < words.size() && !isOption(words[j]); ++j)
            rest.append(words[j]);
        add(words[i], rest.value(0), rest.join(QLatin1Char(' ')));
    }
}

void Cfg::add(const QString& key, const QString& value, const QString& rest)
{
    const QString upperKey = key.toUpper();
    rows_.put(key, value, rest);
    upperRows_.put(upperKey, value, rest);
    allKeys_.append(key);
    allUpperKeys_.append(upperKey);
    allValues_.append(value);
    allRests_.append(rest);
    allFiles_.append(QString());
    used_.append('\0');
}

void Cfg::setValue(const QString& key, const QString& value)
{
    if (!contains(key)) {
        add(key, value, value);
        return;
    }
    rows_.put(key, value, value);
    upperRows_.put(key.toUpper(), value, value);
}

QString Cfg::value(const QString& key, const QString& fallback)
{
    return lookUp(rows_, key, fallback);
}

QString Cfg::upperValue(const QString& upperKey, const QString& fallback)
{
    return lookUp(upperRows_, upperKey, fallback);
}

QString Cfg::lookUp(const Rows& rows, const QString& key, const QString& fallback)
{
    const int row = rows.find(key);
    if (row < 0)
        return fallback;
    markUsed(row);
    return rows.values[row];
}

void Cfg::markUsed(int row)
{
    if (row >= 0 && row < used_.size())
        used_[row] = 1;
}

QStringList Cfg::linesOf(const QString& upperKey)
{
    QStringList lines;
    for (int row = 0; row < allUpperKeys_.size(); ++row) {
        if (allUpperKeys_[row] == upperKey) {
            lines.append(allRests_[row]);
            markUsed(row);
        }
    }
    return lines;
}

void Cfg::readFile(const QString& fileName)
{
    Reading reading;
    readFile(fileName, reading);
}

void Cfg::readFile(const QString& fileName, Reading& reading)
{
    const QString path = QFileInfo(fileName).canonicalFilePath();
    if (!path.isEmpty() && reading.open.contains(path)) {
        qDebug() << "Config file is being read already, not included again : " << fileName;
        return;
    }
    if (reading.open.size() >= deepestNesting) {
        fault(QStringLiteral("Config files are nested too deep, not included : ") +
              quoted(fileName));
        return;
    }
    if (--reading.filesLeft < 0) {
        if (reading.filesLeft == -1)
            fault(QStringLiteral("Too many config files, not included : ") + quoted(fileName));
        return;
    }
    QString text;
    switch (readTextFile(fileName, reading.bytesLeft, text)) {
    case TextFileResult::CantOpen:
        fault(QStringLiteral("Can't open config file : ") + quoted(fileName));
        return;
    case TextFileResult::TooLong:
        fault(QStringLiteral("Config file is too long, not read : ") + quoted(fileName));
        return;
    case TextFileResult::Ok:
        break;
    }
    reading.bytesLeft -= qMin(reading.bytesLeft, qint64(text.size()));
    reading.open.append(path);
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        readLine(line, reading);
    reading.open.removeLast();
}

void Cfg::readLine(const QString& line, Reading& reading)
{
    if (line.size() > longestTextLine) {
        fault(QStringLiteral("Config file has a line that is too long, not read : ") +
              quoted(reading.open.last()));
        return;
    }
    const QString entry = stripComment(line);
    if (entry.trimmed().isEmpty())
        return;
    QString key;
    const QString rest = nextItem(entry, key);
    QString value;
    nextItem(rest, value);
    if (key.toUpper() == QLatin1String("INCLUDE"))
        readFile(value, reading);
    else
        add(key, value, rest);
}
