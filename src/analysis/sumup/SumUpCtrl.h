#pragma once

#include "analysis/sumup/SumUpWalk.h"

#include <QFrame>

#include <memory>

class CommandBook;
class NumberFields;
class Ui_SumUpCtrl;

/// The little panel of the ranges of images that are summed up. The list has the ranges that were
/// added and not deleted; what counts are all that were added. Deleting one takes it out of the
/// list alone, so the line below tells what counts, and a button lets go of all.
class SumUpCtrl : public QFrame
{
    Q_OBJECT
public:
    explicit SumUpCtrl(QWidget* parent = nullptr);
    ~SumUpCtrl() override;

    /// All ranges that count, in the order in which they were added.
    const QVector<SumUpRange>& ranges() const { return ranges_; }
    /// Has its number fields watched.
    void watchFields(NumberFields& numbers) const;

    void bindCommands(CommandBook& book);

public Q_SLOTS:
    /// Adds the range of the fields, of which a text that is no whole number counts as 0.
    void add();
    /// Takes the current range out of the list, and not out of the sum.
    void del();
    /// No range counts or stands in the list any more.
    void clear();

Q_SIGNALS:
    void added(const SumUpRange& range);
    void deleted(int index); ///< place in the list
    void cleared();
    /// Other ranges count.
    void changed();

private:
    Q_DISABLE_COPY(SumUpCtrl)

    void deleteByNumber(int index);
    QStringList lines() const;
    void showRanges();

    const std::unique_ptr<Ui_SumUpCtrl> ui_;
    QVector<SumUpRange> ranges_;
};
