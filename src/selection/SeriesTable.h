#pragma once

#include "selection/FolderContents.h"

#include <QTableWidget>

class QComboBox;

/// A row for each series of images: what it is to be used as, its name, its files and pixels. Of
/// the uses but "-" each is some series' alone.
class SeriesTable : public QTableWidget
{
    Q_OBJECT
public:
    explicit SeriesTable(QWidget* parent = nullptr);

    /// Shows the series, with the uses that they come with.
    void setSeries(const QVector<ImageSeries>& series);
    /// Row of the series with this use; -1 for none.
    int rowOf(SeriesUse use) const;
    /// The boxes that choose the uses, from top to bottom.
    const QVector<QComboBox*>& uses() const { return uses_; }

Q_SIGNALS:
    void usesChanged();

protected:
    /// The wheel over a box scrolls, unless the box has the focus.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* newUseBox(SeriesUse use);
    void useChosen(int row);
    void fitHeight();

    QVector<QComboBox*> uses_;
};
