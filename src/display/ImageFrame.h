#pragma once

#include <QWidget>

class ImgDispA;

/// Lays the image area out with what stands along its sides: below it the section across, to its
/// right the upright section and the colour bar, which are as long as the area, and two buttons in
/// the corner.
///
/// With square pixels the area takes the shape of its view, as large as there is room, and all of
/// it stands in the middle; so the view is stretched over the area in either case. The area is
/// never narrower than a strip that a mouse can hit.
class ImageFrame : public QWidget
{
    Q_OBJECT
public:
    explicit ImageFrame(QWidget* parent = nullptr);

    /// What it lays out: its children.
    struct Parts
    {
        ImgDispA* area = nullptr;
        QWidget* across = nullptr;
        QWidget* upright = nullptr;
        QWidget* bar = nullptr;
        QWidget* upperButton = nullptr;
        QWidget* lowerButton = nullptr;
    };
    void setParts(const Parts& parts);

    void setSquarePixels(bool on);
    bool squarePixels() const { return square_; }
    /// The buttons of the corner go with the sections.
    void setSectionsVisible(bool on);
    bool sectionsVisible() const { return sections_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void layOut();
    QSize margins() const;
    QSize areaSize(const QSize& room) const;
    int uprightWidth() const;
    int acrossHeight() const;

    Parts parts_;
    bool square_ = false;
    bool sections_ = true;
};
