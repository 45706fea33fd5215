#pragma once

#include <QLabel>

/// A warning sign in a row of controls, with the reasons in its tool tip; hidden while there are
/// none.
class RowMark : public QLabel
{
    Q_OBJECT
public:
    explicit RowMark(QWidget* parent = nullptr);

    /// Shows the sign for these reasons, one a line; an empty text hides it.
    void setReasons(const QString& reasons);
    QString reasons() const { return toolTip(); }
};
