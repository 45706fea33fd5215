#pragma once

#include <QDialog>

class LateDialog;
class QPlainTextEdit;

/// A window with a text to be read, copied and saved; it stays beside the work.
class TextWindow : public QDialog
{
    Q_OBJECT
public:
    explicit TextWindow(const QString& objectName, QWidget* parent = nullptr);

    /// Shows another text in front of the other windows.
    void showText(const QString& title, const QString& text);

private:
    void copy() const;

    QPlainTextEdit* text_;
    LateDialog* saveDialog_;
};
