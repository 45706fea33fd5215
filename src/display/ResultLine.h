#pragma once

#include <QLabel>

/// A label for a result that changes with each move of the mouse: a plain text of any length in
/// two lines, whose height is kept also while it is short, so that nothing round it moves. What
/// does not fit is left out, and the tool tip shows it all. It asks for no width.
class ResultLine : public QLabel
{
    Q_OBJECT
public:
    explicit ResultLine(QWidget* parent = nullptr);

    /// Shows a text; the tool tip is that text, and below it what the label is there for.
    void setResult(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString purpose_; ///< the tool tip of the form
};
