#include "common/SafeFile.h"

#include "common/Fault.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTextStream>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int namesToTry = 100;

/// Repeats a call of the system that a signal has broken off.
template<typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// Of no length that the final name would not have too.
QByteArray temporaryName()
{
    static const char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QByteArray name(".mvk-");
    for (int i = 0; i < 6; ++i)
        name += letters[QRandomGenerator::global()->bounded(36)];
    return name;
}

} // namespace

SafeFile::SafeFile(const QString& fname)
    : name_(fname)
{
}

SafeFile::~SafeFile()
{
    discard();
}

bool SafeFile::failed(int error)
{
    if (reason_.isEmpty())
        reason_ = qt_error_string(error);
    return false;
}

void SafeFile::discard()
{
    if (file_ != -1)
        ::close(file_);
    if (!temporaryName_.isEmpty())
        ::unlinkat(folder_, temporaryName_.constData(), 0);
    if (folder_ != -1)
        ::close(folder_);
    file_ = folder_ = -1;
    temporaryName_.clear();
}

bool SafeFile::open(OpenMode /*mode*/)
{
    if (name_.isEmpty()) {
        reason_ = QStringLiteral("no file name");
        return false;
    }
    const QFileInfo given(name_);
    const QString target = given.exists() ? given.canonicalFilePath() : given.symLinkTarget();
    const QFileInfo file(target.isEmpty() ? name_ : target);
    const QByteArray folder = QFile::encodeName(file.path());
    finalName_ = QFile::encodeName(file.fileName());
    folder_ =
        uninterrupted([&] { return ::open(folder.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC); });
    if (folder_ == -1)
        return failed(errno);
    if (!mayTakeName() || !makeTemporary()) {
        discard();
        return false;
    }
    return QIODevice::open(WriteOnly | Unbuffered);
}

/// Whether a plain file may stand under the final name, and take the place of what does.
bool SafeFile::mayTakeName()
{
    if (finalName_.isEmpty())
        return failed(EISDIR);
    struct stat former
    {
    };
    if (::fstatat(folder_, finalName_.constData(), &former, 0) == -1)
        return (isNew_ = errno == ENOENT) || failed(errno);
    if (S_ISDIR(former.st_mode))
        return failed(EISDIR);
    if (!S_ISREG(former.st_mode)) {
        reason_ = QStringLiteral("not a plain file");
        return false;
    }
    if (::faccessat(folder_, finalName_.constData(), W_OK, AT_EACCESS) == -1)
        return failed(errno);
    mode_ = former.st_mode & 07777;
    replaces_ = true;
    return true;
}

bool SafeFile::makeTemporary()
{
    for (int i = 0; i < namesToTry && file_ == -1; ++i) {
        const QByteArray name = temporaryName();
        file_ = uninterrupted([&] {
            return ::openat(folder_, name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                            replaces_ ? 0600 : 0666);
        });
        if (file_ != -1)
            temporaryName_ = name;
        else if (errno != EEXIST)
            break;
    }
    if (file_ == -1)
        return failed(errno);
    // Who may read the former file may read the new one; a file system without such rights fails
    // here, which costs nobody anything.
    if (replaces_)
        ::fchmod(file_, mode_);
    return true;
}

qint64 SafeFile::readData(char* /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

qint64 SafeFile::writeData(const char* data, qint64 size)
{
    if (file_ == -1 || !reason_.isEmpty())
        return -1;
    qint64 done = 0;
    while (done < size) {
        const ssize_t count = uninterrupted([&] {
            return ::pwrite(file_, data + done, static_cast<size_t>(size - done), pos() + done);
        });
        if (count <= 0) {
            failed(count == 0 ? ENOSPC : errno);
            setErrorString(reason_);
            return -1;
        }
        done += count;
    }
    size_ = qMax(size_, pos() + size);
    return size;
}

bool SafeFile::commit()
{
    const bool whole = file_ != -1 && reason_.isEmpty() && syncContent() && takeName();
    discard();
    QIODevice::close();
    return whole;
}

bool SafeFile::syncContent()
{
    if (uninterrupted([this] { return ::fsync(file_); }) == -1)
        return failed(errno);
    // Some file systems tell only here that the bytes have no room. A close that was broken off is
    // not to be repeated: the descriptor may be another's by then.
    const int file = file_;
    file_ = -1;
    return ::close(file) == 0 || errno == EINTR || failed(errno);
}

bool SafeFile::takeName()
{
    const int error = replaces_ ? swapNames() : EINVAL;
    replaces_ = error == 0;
    if (!replaces_) {
        // Not every file system can swap, and the former file may have gone since.
        if (error != EINVAL && error != ENOSYS && error != ENOENT)
            return failed(error);
        if (::renameat(folder_, temporaryName_.constData(), folder_, finalName_.constData()) == -1)
            return failed(errno);
        temporaryName_.clear();
    }
    if (syncFolder())
        return true;
    failed(errno);
    takeNameBack();
    return false;
}

/// Keeps the former file under the temporary name until the new one is safe; 0 or the error.
int SafeFile::swapNames() const
{
    return ::renameat2(folder_, temporaryName_.constData(), folder_, finalName_.constData(),
                       RENAME_EXCHANGE) == 0
               ? 0
               : errno;
}

bool SafeFile::syncFolder() const
{
    const int folder = uninterrupted(
        [this] { return ::openat(folder_, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (folder == -1)
        return errno == EACCES; // one may write into a folder without being allowed to read it
    int error = uninterrupted([folder] { return ::fsync(folder); }) == -1 ? errno : 0;
    ::close(folder);
    // Some file systems have nothing to bring to the disk for a folder.
    if (error == EINVAL || error == ENOTSUP)
        error = 0;
    errno = error;
    return error == 0;
}

/// Without a swap over a former file, the new one, which is whole, has to stay.
void SafeFile::takeNameBack()
{
    if (replaces_)
        swapNames();
    else if (isNew_)
        ::unlinkat(folder_, finalName_.constData(), 0);
}

bool writeFile(const QString& fname, const FileContents& contents, const QString& cantOpen)
{
    SafeFile file(fname);
    const bool opened = file.open();
    QString reason = opened ? contents(file) : file.reason();
    if (opened && reason.isEmpty() && file.commit())
        return true;
    if (!file.reason().isEmpty())
        reason = file.reason(); // where both failed, the system's fault was the first
    fault(QStringLiteral("%1 %2: %3")
              .arg(opened ? QStringLiteral("Can't write") : cantOpen, quoted(fname), reason));
    return false;
}

bool writeFile(const QString& fname, const QByteArray& bytes)
{
    return writeFile(fname, [&bytes](QIODevice& file) {
        file.write(bytes);
        return QString();
    });
}

bool writeTextFile(const QString& fname, const std::function<void(QTextStream& out)>& contents,
                   const QString& cantOpen)
{
    const auto write = [&contents](QIODevice& file) {
        QTextStream out(&file);
        out.setCodec("UTF-8");
        contents(out);
        out.flush();
        return QString();
    };
    return writeFile(fname, write, cantOpen);
}

void logWritten(const QString& fname)
{
    qDebug().noquote() << QStringLiteral("Written: ") + quoted(QFileInfo(fname).absoluteFilePath());
}
