#pragma once

#include <QWidget>

class QToolButton;

/// A part of a panel that opens and closes below a heading with an arrow. The heading is a button,
/// so the keyboard opens it too.
class Fold : public QWidget
{
    Q_OBJECT
public:
    /// The content becomes the fold's own; closed at first.
    Fold(const QString& title, QWidget* content, QWidget* parent = nullptr);

    QWidget* content() const { return content_; }
    bool isOpen() const;
    /// Why there is nothing to open: the heading is disabled with this tool tip, and the fold
    /// closed; an empty text enables it.
    void setReason(const QString& reason);

public Q_SLOTS:
    void setOpen(bool open);

Q_SIGNALS:
    void toggled(bool open);

private:
    QToolButton* const heading_;
    QWidget* const content_;
};
