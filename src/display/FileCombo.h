#pragma once

#include <QComboBox>

/// A list of files, by their paths, that takes no more room than it is given: a path that does not
/// fit is shown as the file's name, a name that does not fit without its middle.
class FileCombo : public QComboBox
{
    Q_OBJECT
public:
    explicit FileCombo(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
