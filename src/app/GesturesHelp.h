#pragma once

#include <QDialog>

class QAction;

/// The window that lists what mouse and keys do.
class GesturesHelp : public QDialog
{
    Q_OBJECT
public:
    /// The keys listed are those of the actions; actions without a key are passed over.
    explicit GesturesHelp(const QList<QAction*>& actions, QWidget* parent = nullptr);
};
