#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

// What the user asked for and did not get: a file not read or not written, an analysis not started.
// It costs one line of the log wherever it happens; and whoever carried the request out collects
// it, so that a batch can count what failed. Warnings about what was done all the same are plain
// log lines.

/// Logs the text, one line that names the file or field and the reason, and hands it to the
/// collector of this thread, if there is one. The line then begins with what the collector was
/// told of the request. Any thread.
void fault(const QString& text);

/// Tells every fault of any thread, wherever it is collected, in the thread that it lives in. At
/// most one at a time: the latest one made is told.
class FaultTap : public QObject
{
    Q_OBJECT
public:
    explicit FaultTap(QObject* parent = nullptr);
    ~FaultTap() override;

Q_SIGNALS:
    void told(const QString& text);
};

/// Collects the faults of its thread from its construction to its end. Collectors nest: the inner
/// one takes them all.
class FaultCollector
{
public:
    /// `where` says in log lines what the faults belong to, with what separates it from them
    /// ("line 3, load_I1_files: "); the faults that are collected are without it.
    explicit FaultCollector(const QString& where = QString());
    ~FaultCollector();

    const QStringList& faults() const { return faults_; }

private:
    Q_DISABLE_COPY(FaultCollector)
    friend void fault(const QString& text);

    FaultCollector* const outer_;
    const QString where_;
    QStringList faults_;
};
