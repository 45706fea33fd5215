#pragma once

#include <QWidget>

/// A page that lies over its parent, opaque and of its size, while what is below stays laid out.
/// Hidden at first.
class CoveringPage : public QWidget
{
    Q_OBJECT
public:
    explicit CoveringPage(QWidget* parent);

    /// Shows the page in front of all that the parent holds.
    void cover();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
