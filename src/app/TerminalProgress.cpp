#include "app/TerminalProgress.h"

#include "app/ProgressSum.h"

#include <cstdio>

namespace {

constexpr int pauseMs = 200; ///< between two writings of the bar
constexpr int barWidth = 30;

/// Of the pieces of work that the sum adds up, in the order of their numbers.
constexpr const char* partNames[] = {"load of I1", "load of I0", "analysis",    "calibration",
                                     "export",     "dark check", "registration"};
static_assert(std::size(partNames) == ProgressPart::Count);

QString nameOf(int part)
{
    const bool known = part >= 0 && part < int(std::size(partNames));
    return QLatin1String(known ? partNames[part] : "work");
}

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
}

} // namespace

TerminalProgress::TerminalProgress(const ProgressSum& sum, bool terminal)
    : sum_(sum)
    , terminal_(terminal)
{
    connect(&sum, &ProgressSum::partTold, this, &TerminalProgress::partTold);
}

TerminalProgress::~TerminalProgress()
{
    wipe();
}

QString TerminalProgress::bar(double share, const QString& text, int width)
{
    const int full = qBound(0, int(share * width), width);
    return QStringLiteral("[%1%2] %3")
        .arg(QString(full, QLatin1Char('#')), QString(width - full, QLatin1Char('.')), text);
}

int TerminalProgress::tenths(int done, int total)
{
    return total > 0 ? int(qint64(10) * done / total) : 0;
}

void TerminalProgress::partTold(int part, int done, int total)
{
    if (terminal_)
        rewrite();
    else
        tellTenth(part, done, total);
}

void TerminalProgress::tellTenth(int part, int done, int total)
{
    if (total <= 0) {
        tenths_.remove(part);
        return;
    }
    const int now = tenths(done, total);
    if (now <= tenths_.value(part, 0))
        return;
    tenths_[part] = now;
    print(QStringLiteral("%1: %2 %\n").arg(nameOf(part)).arg(10 * now));
}

void TerminalProgress::rewrite()
{
    const bool ended = sum_.isHidden();
    if (ended) {
        wipe();
        return;
    }
    if (written_.isValid() && written_.elapsed() < pauseMs)
        return;
    written_.start();
    const QString line = bar(double(sum_.value()) / sum_.maximum(), sum_.text(), barWidth);
    print(QLatin1Char('\r') + line.leftJustified(columns_));
    columns_ = line.size();
}

void TerminalProgress::wipe()
{
    if (columns_ > 0)
        print(QLatin1Char('\r') + QString(columns_, QLatin1Char(' ')) + QLatin1Char('\r'));
    columns_ = 0;
}
