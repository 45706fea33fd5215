#pragma once

#include "common/ExCmdId.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <functional>

/// What a user has done, as the lines of a batch that does it again. GUI thread.
///
/// Controls are not listened to: whoever owns them tells the lines that bring them to where they
/// stand, and before each press of a key or button, and once it has had its effect, those that tell
/// something new are written down. So a value is recorded when it counts, whoever set it. Deeds
/// (loads, walks, saves) are told by add() by whoever does them.
class History : public QObject
{
    Q_OBJECT
public:
    /// Lines that bring something to where it stands, in their order; none where it stands as at
    /// the start, or where no line can tell.
    using Lines = std::function<QStringList()>;

    explicit History(QObject* parent = nullptr);

    enum Writing
    {
        NewLines,    ///< those that were not told before
        AllTogether, ///< all, when one is new: later ones undo effects of earlier ones
        InState      ///< only in state(): deeds bring it about otherwise
    };
    /// Follows a control or a few that belong together. What stands at this moment is what a fresh
    /// program starts with.
    void follow(Lines lines, Writing writing = NewLines);
    /// The same of one that always has the same command.
    void follow(EX_CMD_ID id, std::function<QString()> argument);
    /// The same for the place of the cursor, which is written down only before a deed.
    void followCursor(Lines lines);

    /// Records from now on; before that, and while held, nothing is.
    void begin();

    /// A deed of the user, done just now or about to be done. What it has changed on the way is its
    /// own effect, and is not written down.
    void add(const QStringList& lines);
    void add(const QString& line) { add(QStringList(line)); }
    void add(EX_CMD_ID id, const QStringList& arguments = {});

    /// Writes down what controls tell anew.
    void settle();
    /// What stands now has come by itself, and comes again when the deeds are done again.
    void accept() { takeAsTold(); }

    /// While one lives what happens is not the user's doing: a batch acts.
    class Hold
    {
    public:
        explicit Hold(History& history);
        ~Hold();
        Q_DISABLE_COPY(Hold)

    private:
        History& history_;
    };

    const QStringList& lines() const { return lines_; }
    void clear();
    /// All controls that are followed, as lines.
    QStringList controls() const;
    /// Everything that stands otherwise than in a fresh program, as lines.
    QStringList state() const;
    /// The lines that bring everything back to where a fresh program starts.
    QStringList wayBack() const;

Q_SIGNALS:
    void added(const QStringList& lines);
    void cleared();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Followed
    {
        Lines lines;
        Writing writing = NewLines;
        QStringList atStart;
        QStringList told;
    };

    bool records() const { return recording_ && holds_ == 0; }
    static QStringList newOnes(const Followed& followed, const QStringList& now);
    void takeAsTold();
    void write(const QStringList& lines);

    QVector<Followed> followed_;
    Followed cursor_;
    QTimer settling_; ///< once the events at hand are through
    QStringList lines_;
    bool recording_ = false;
    int holds_ = 0;
};
