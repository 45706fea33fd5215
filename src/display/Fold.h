#pragma once

#include <QFrame>

class QAbstractButton;
class QToolButton;

/// A part of a panel that folds away under the box that chooses it: checking the box opens the
/// fold, taking the check away closes it, and the arrow opens and closes it without choosing.
class Fold : public QFrame
{
    Q_OBJECT
public:
    /// What chooses it.
    enum Head
    {
        Box,
        OneOfMany ///< a button for a group of which one is checked
    };
    /// `boxName` is the object name of the box.
    Fold(const QString& boxName, const QString& boxText, QWidget* parent = nullptr,
         Head head = Box);

    QAbstractButton* chooser() const { return chooser_; }
    bool isChosen() const;
    /// Where the contents are laid out; hidden while it is closed.
    QWidget* body() const { return body_; }

    bool isOpen() const;
    void setOpen(bool f);

private:
    QAbstractButton* chooser_;
    QToolButton* arrow_;
    QWidget* body_;
};
