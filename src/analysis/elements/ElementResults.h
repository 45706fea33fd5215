#pragma once

#include "analysis/elements/ElementAnalysis.h"

#include <QWidget>

class QTableWidget;

/// A window with a table of what was found last of each element, for reading and copying.
class ElementResults : public QWidget
{
    Q_OBJECT
public:
    explicit ElementResults(QWidget* parent = nullptr);

    void setRows(const QStringList& names, const QVector<ElementValues>& values);
    /// The table with its captions, columns parted by tabs.
    QString text() const;

private:
    QTableWidget* table_;
};
