#pragma once

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QString>

class ProgressSum;

/// Progress of an unattended run on the error stream: on a terminal a bar with the time left, which
/// is rewritten in its place, elsewhere a line for each tenth of a piece of work.
class TerminalProgress : public QObject
{
    Q_OBJECT
public:
    /// Follows the sum, which outlives it.
    TerminalProgress(const ProgressSum& sum, bool terminal);
    /// Wipes the bar away.
    ~TerminalProgress() override;

    /// A bar of `width` columns, such as "[####......]  40%, 17 s left".
    static QString bar(double share, const QString& text, int width);
    /// Whole tenths of a share.
    static int tenths(int done, int total);

private:
    void partTold(int part, int done, int total);
    void tellTenth(int part, int done, int total);
    void rewrite();
    void wipe();

    const ProgressSum& sum_;
    const bool terminal_;
    QMap<int, int> tenths_; ///< told of each piece of work that is under way
    QElapsedTimer written_;
    int columns_ = 0; ///< of the bar that stands there
};
