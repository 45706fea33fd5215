#pragma once

#include <QLabel>

/// A label for one line of plain text of any length: what does not fit is left out, and the tool
/// tip shows it all. It asks for no width.
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Shows the text with each stretch of white space as one blank.
    void setLine(const QString& line);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
