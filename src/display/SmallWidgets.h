#pragma once

#include <QLabel>
#include <QPushButton>

/// A label that reads from top to bottom.
class VLabel : public QLabel
{
    Q_OBJECT
public:
    explicit VLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A push button that reads from top to bottom. The base class's own text stays empty, so that its
/// painting draws the bare button.
class VPushButton : public QPushButton
{
    Q_OBJECT
public:
    explicit VPushButton(QWidget* parent = nullptr);

    void setText(const QString& text);
    QString text() const { return keeper_.text(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPushButton keeper_; ///< never shown; holds the text, and knows the size that it takes
};
