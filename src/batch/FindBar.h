#pragma once

#include <QWidget>

class BatchEdit;
class QLabel;
class QLineEdit;

/// A slim bar below the editor that finds a text in it: Return and Shift+Return go on and back,
/// Escape closes it.
class FindBar : public QWidget
{
    Q_OBJECT
public:
    explicit FindBar(BatchEdit& editor, QWidget* parent = nullptr);

    /// Comes up with the focus, and with what is selected in the editor.
    void open();
    void findNext() { find(false); }
    void findPrevious() { find(true); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void find(bool backward);

    BatchEdit& editor_;
    QLineEdit* const field_;
    QLabel* const told_;
};
