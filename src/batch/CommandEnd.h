#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The one handle by which whoever carries out a command reports its end. An open handle reports
/// exactly once, whatever becomes of it, so that no stop, reload or lost answer leaves a batch
/// waiting; one that leaveOpen() was told reports nothing.
///
/// The report may destroy the object that holds the handle, or start the next command and put its
/// handle into the same place: give the word last, and touch neither behind it. A handle may be let
/// go as late as the program's end, so a report must not need what has gone by then. GUI thread.
///
/// Move-only, so a std::function can't hold it: keep it in a member or in a record.
class CommandEnd
{
public:
    /// Told the failures that failed() was given. Their log lines are written already; only that
    /// of letGo is not, since the handle does not know the command.
    using Report = std::function<void(const QStringList& failures)>;

    /// The failure of a command whose handle was let go without a word.
    static constexpr char letGo[] = "Stopped without telling how it ended";

    /// Of what a click started: never open, and each word is welcome and does nothing. So is a
    /// handle that was moved from.
    CommandEnd() = default;
    explicit CommandEnd(Report report);
    CommandEnd(CommandEnd&& other) noexcept;
    /// The handle that stood here is let go, once the other has taken its place.
    CommandEnd& operator=(CommandEnd&& other) noexcept;
    CommandEnd(const CommandEnd&) = delete;
    CommandEnd& operator=(const CommandEnd&) = delete;
    /// Reports letGo when the handle is open.
    ~CommandEnd();

    // Words of the end. A second one on a handle that was open is an error of the program, and
    // ignored.

    /// The command has ended; what went wrong on the way was told by fault().
    void done();
    /// The command has ended, with these failures; an empty list is done().
    void failed(const QString& why);
    void failed(const QStringList& reasons);
    /// The command waits on purpose, and its end will never be reported.
    void leaveOpen();

    /// A report is still to come.
    bool isOpen() const { return bool(report_); }

private:
    Report takeReport();
    void give(QStringList failures);

    Report report_;
    bool spoken_ = false; ///< was open, and had its word
};
