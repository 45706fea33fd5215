#include "Fuzz.h"

#include <QDebug>
#include <QDir>
#include <QFile>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <unistd.h>

namespace {

/// A folder in memory, so that a disk is not written a thousand times a second.
class InputFolder
{
public:
    InputFolder()
    {
        char path[] = "/dev/shm/morvenkite-fuzz-XXXXXX";
        if (mkdtemp(path) == nullptr || chdir(path) != 0) {
            std::perror(path);
            std::exit(1);
        }
        path_ = QString::fromLocal8Bit(path);
    }
    ~InputFolder() { QDir(path_).removeRecursively(); }
    Q_DISABLE_COPY(InputFolder)

    QString path(const QString& name) const { return path_ + QLatin1Char('/') + name; }

private:
    QString path_;
};

/// Log lines are formed, since forming one may fail too, and thrown away.
void dropMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/)
{
}

} // namespace

QString writeInput(const QByteArray& bytes, const QString& name)
{
    static const InputFolder folder;
    QFile file(folder.path(name));
    check(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
          "the input is written");
    return file.fileName();
}

void check(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

/// libFuzzer calls this once before the first input.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    qInstallMessageHandler(dropMessage);
    return 0;
}
