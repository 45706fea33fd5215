#pragma once

#include "output/SpectrumExport.h"

#include <QGroupBox>
#include <QVector>

#include <memory>

class CommandBook;
class RunRow;
class Ui_SaveBox;

/// The pages of buttons that save pictures and maps, filter maps and write into the log. Each
/// signal without a word of its own is the click on the button of that name.
class SaveBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit SaveBox(QWidget* parent = nullptr);
    ~SaveBox() override;

    /// The forms of spectra that are checked, in their order.
    QVector<SpectrumForm> chosenForms() const;
    /// The lines of both walks that its buttons start.
    RunRow& spectraRow() const;
    RunRow& fourierRow() const;
    void bindCommands(CommandBook& book);

    /// Shows whether the map on show is the filtered one, and tells nobody.
    void setShowDeglitched(bool f);
    /// Why no picture, and why no map can be saved now; an empty text when it can. The buttons that
    /// would save one are disabled, with the reason in their tool tips and in a line below them.
    void setReasons(const QString& noPicture, const QString& noMap);

Q_SIGNALS:
    void saveImage();
    void saveAllImages();
    void saveFlatDark();
    void saveData();
    void deglitch();
    void showDeglitchedToggled(bool f); ///< by hand
    void checkVals();
    void formsChanged(); ///< others are checked

private:
    struct Explained
    {
        QWidget* button;
        QString toolTip; ///< of its own
    };
    void setupRows();
    void disable(const QVector<Explained>& buttons, const QString& reason);

    std::unique_ptr<Ui_SaveBox> ui_;
    QVector<Explained> ofPictures_;
    QVector<Explained> ofMaps_;
};
