#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Keeps the log lines written while it lives, from all threads, instead of printing them. One at a
/// time.
class LogCapture
{
public:
    LogCapture()
    {
        lines().clear();
        previous_ = qInstallMessageHandler(&LogCapture::take);
    }
    ~LogCapture() { qInstallMessageHandler(previous_); }
    Q_DISABLE_COPY(LogCapture)

    /// Number of lines that hold the text.
    int linesWith(const QString& text) const
    {
        const QMutexLocker lock(&mutex());
        return lines().filter(text).size();
    }

    QStringList all() const
    {
        const QMutexLocker lock(&mutex());
        return lines();
    }

private:
    static QMutex& mutex()
    {
        static QMutex m;
        return m;
    }
    static QStringList& lines()
    {
        static QStringList list;
        return list;
    }
    static void take(QtMsgType, const QMessageLogContext&, const QString& text)
    {
        const QMutexLocker lock(&mutex());
        lines().append(text);
    }

    QtMessageHandler previous_ = nullptr;
};
