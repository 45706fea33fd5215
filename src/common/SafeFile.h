#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <functional>

class QTextStream;

// All files of the program are written here, so that a name always stands for a whole file: the
// bytes go under a short temporary name in the same folder, are brought to the disk, and only then
// take the final name. When anything of it fails, what stood there before stays, and nothing else
// is left.

/// A file that grows under a temporary name. It can be written at any place, not read. The first
/// fault of the system is kept, and from then on nothing is written. Without commit() the file is
/// gone with the object.
class SafeFile : public QIODevice
{
public:
    /// A symbolic link stands for the file that it leads to.
    explicit SafeFile(const QString& fname);
    ~SafeFile() override;

    /// Makes the temporary file, whatever the mode. False when there can be none, or the name is
    /// that of a folder, a device or a file that may not be written.
    bool open(OpenMode mode = WriteOnly) override;
    /// Brings the bytes to the disk and gives them their name. False when any write before, or
    /// anything here, failed.
    bool commit();
    /// Why the file could not be opened or written; empty while nothing has failed.
    const QString& reason() const { return reason_; }

    bool isSequential() const override { return false; }
    qint64 size() const override { return size_; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    Q_DISABLE_COPY(SafeFile)

    bool mayTakeName();
    bool makeTemporary();
    bool syncContent();
    bool takeName();
    int swapNames() const;
    bool syncFolder() const;
    void takeNameBack();
    bool failed(int error);
    void discard();

    QString name_;
    QByteArray finalName_;     ///< in the folder
    QByteArray temporaryName_; ///< in the folder; empty when there is no such file
    int folder_ = -1;
    int file_ = -1;
    unsigned mode_ = 0;     ///< rights of the former file
    bool isNew_ = false;    ///< nothing stood under the name
    bool replaces_ = false; ///< a file stood there, and can come back until the end
    qint64 size_ = 0;
    QString reason_;
};

/// Writes the contents of a file and returns why it could not, an empty text when it has. Faults of
/// the device need not be told.
using FileContents = std::function<QString(QIODevice& file)>;

/// Writes a file as above. False, with one fault line, when it could not be written: `cantOpen`,
/// or "Can't write" once it was open, with the name and the reason.
bool writeFile(const QString& fname, const FileContents& contents,
               const QString& cantOpen = QStringLiteral("Can't open"));
/// The same of these bytes.
bool writeFile(const QString& fname, const QByteArray& bytes);
/// The same of a text, in UTF-8.
bool writeTextFile(const QString& fname, const std::function<void(QTextStream& out)>& contents,
                   const QString& cantOpen = QStringLiteral("Can't open"));

/// Tells the log the whole path of a file that was written under a name of the program's own, into
/// the folder that it runs in: nobody chose that place.
void logWritten(const QString& fname);
