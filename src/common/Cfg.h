#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

/// The table of keys and values that the command line and the configuration files fill. Each line
/// is kept three times: by its key as written and by its key in capitals, where a later line of
/// the same key replaces the earlier one, and in the list of all lines, where repeated keys
/// survive. Of each line the value is the first item behind the key, the rest all the text there.
class Cfg
{
public:
    /// One row per key, as parallel lists in order of first appearance.
    struct Rows
    {
        QStringList keys, values, rests, files;
        QHash<QString, int> rowOf; ///< key to its row

        int find(const QString& key) const { return rowOf.value(key, -1); }
        void put(const QString& key, const QString& value, const QString& rest);
    };

    Cfg() = default;

    /// Takes options from the arguments behind the program's name. A word that begins with "-" is
    /// a key; its value is the next word unless that begins with "-" too, its rest all words up to
    /// the next option, joined with blanks. Then the value of the last of `fileOptions` that is
    /// present (in any case) replaces `fileName`, and a name that is not empty is read.
    Cfg(int argc, const char* const* argv, QString fileName, const QStringList& fileOptions);

    /// Adds the lines of a file; "INCLUDE name" reads another file in its place. A file that can't
    /// be opened or is being read already, nesting over 32 files deep, a line longer than a batch
    /// text's may be, and more than 1,000 files or 4 MB in all, cost one log line each and are
    /// passed over. All but a file that is being read already are faults.
    void readFile(const QString& fileName);

    /// Adds a line, as a file or the command line does.
    void add(const QString& key, const QString& value, const QString& rest);

    /// Gives `key` a value: that of an existing row is replaced, otherwise a line is added.
    void setValue(const QString& key, const QString& value);

    /// Case-sensitive look-up.
    bool contains(const QString& key) const { return rows_.find(key) >= 0; }

    /// Value of the key as written, or `fallback` without such a key. Marks the row as used.
    QString value(const QString& key, const QString& fallback = QString());

    /// Look-ups by a key in capitals, which find a key written in any case.
    bool containsUpper(const QString& upperKey) const { return upperRows_.find(upperKey) >= 0; }
    QString upperValue(const QString& upperKey, const QString& fallback = QString());

    /// The rests of all lines whose key in capitals is `upperKey`, in order. Marks them as used.
    QStringList linesOf(const QString& upperKey);

    const QStringList& keys() const { return rows_.keys; }
    const QStringList& values() const { return rows_.values; }
    const Rows& rows() const { return rows_; }
    const Rows& upperRows() const { return upperRows_; }

    /// Marks `row` as used; a row out of range is ignored.
    void markUsed(int row);
    /// One byte for each line, 1 at the index of each row that was looked up.
    const QByteArray& used() const { return used_; }

private:
    struct Reading;

    void parseArguments(const QStringList& words);
    void readFile(const QString& fileName, Reading& reading);
    void readLine(const QString& line, Reading& reading);
    QString lookUp(const Rows& rows, const QString& key, const QString& fallback);

    Rows rows_;
    Rows upperRows_;
    QStringList allKeys_, allUpperKeys_, allValues_, allRests_, allFiles_;
    QByteArray used_;
};
