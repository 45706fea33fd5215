#pragma once

#include <QLayout>
#include <QVector>

class QBoxLayout;

/// Lays widgets out side by side, each as wide as it asks for, and goes on in a new line where the
/// next one does not fit: a line of a form that stays whole in a narrow dock, a large font or
/// another language. It stands in another layout.
class WrapLayout : public QLayout
{
    Q_OBJECT
public:
    WrapLayout();
    ~WrapLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Line
    {
        QVector<QLayoutItem*> items;
        int height = 0;
    };
    QVector<Line> lines(int width) const;

    QVector<QLayoutItem*> items_;
};

/// Lets a line of a form's column wrap; it is replaced.
void wrapLine(QBoxLayout* column, QBoxLayout* line);
