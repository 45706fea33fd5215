#include "batch/CommandEnd.h"

#include <utility>

CommandEnd::CommandEnd(Report report)
    : report_(std::move(report))
{
}

CommandEnd::CommandEnd(CommandEnd&& other) noexcept
    : report_(std::exchange(other.report_, nullptr))
    , spoken_(std::exchange(other.spoken_, false))
{
}

CommandEnd& CommandEnd::operator=(CommandEnd&& other) noexcept
{
    CommandEnd former(std::move(other));
    report_.swap(former.report_);
    std::swap(spoken_, former.spoken_);
    return *this;
}

CommandEnd::~CommandEnd()
{
    if (report_)
        failed(QLatin1String(letGo));
}

void CommandEnd::done()
{
    give({});
}

void CommandEnd::failed(const QString& why)
{
    give({why});
}

void CommandEnd::failed(const QStringList& reasons)
{
    give(reasons);
}

void CommandEnd::leaveOpen()
{
    takeReport();
}

/// Empties the handle.
CommandEnd::Report CommandEnd::takeReport()
{
    Q_ASSERT_X(!spoken_, "CommandEnd", "a second word on the end of a command");
    spoken_ = spoken_ || report_;
    return std::exchange(report_, nullptr);
}

/// The list is a copy, since the report may destroy the one that was given, with this handle.
void CommandEnd::give(QStringList failures) // NOLINT(performance-unnecessary-value-param)
{
    if (const Report report = takeReport())
        report(failures);
}
