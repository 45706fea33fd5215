#pragma once

#include <QGroupBox>

#include <memory>

class Ui_SaveBox;

/// The pages of buttons that save pictures and maps, filter maps and write into the log. Each
/// signal without a word of its own is the click on the button of that name.
class SaveBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit SaveBox(QWidget* parent = nullptr);
    ~SaveBox() override;

    /// Shows whether the map on show is the filtered one, and tells nobody.
    void setShowDeglitched(bool f);

Q_SIGNALS:
    void saveImage();
    void saveAllImages();
    void saveFlatDark();
    void saveData();
    void deglitch();
    void showDeglitchedToggled(bool f); ///< by hand
    void checkVals();

private:
    std::unique_ptr<Ui_SaveBox> ui_;
};
