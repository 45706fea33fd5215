#pragma once

#include "display/CoveringPage.h"
#include "selection/EnergyOfFile.h"
#include "selection/FolderChoice.h"
#include "selection/FolderContents.h"

class ElidedLabel;
class NumberFields;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;
class SeriesTable;
class SignLine;

/// The page that asks what of a folder is to be loaded. It shows at once which energies the files
/// would get, and what speaks against loading them. Enter loads and Escape cancels wherever the
/// focus is.
///
/// The energies last typed stay for the next folder.
class FolderQuestion : public CoveringPage
{
    Q_OBJECT
public:
    explicit FolderQuestion(QWidget* parent);

    /// Covers the parent with the question about a folder that holds images.
    void ask(const FolderContents& contents);
    const FolderContents& contents() const { return contents_; }
    /// What is chosen as the page stands.
    FolderChoice choice() const;

Q_SIGNALS:
    void accepted(const FolderChoice& choice);
    void cancelled();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // FolderQuestionForm.cpp
    QWidget* newContent();
    void addEnergies(QVBoxLayout* layout);
    void addExtras(QVBoxLayout* layout);
    void addButtons(QVBoxLayout* layout);
    void setTabOrders();
    // FolderQuestion.cpp
    void connectForm();
    void showExtras();
    void usesChanged();
    void energiesChanged();
    void showNotes();
    void showButton();
    void focusFirst();
    void accept();
    const ImageSeries* series(SeriesUse use) const;
    QStringList files(SeriesUse use) const;
    EnergyRule rule() const;
    bool isStartSet() const;
    QString whyNot() const;

    FolderContents contents_;
    EnergyRule named_; ///< energies in the names of the series chosen; without pattern for none
    ElidedLabel* heading_;
    SeriesTable* table_;
    QRadioButton* byStart_;
    QLineEdit* start_;
    QLineEdit* step_;
    QRadioButton* byNames_;
    QLabel* whyNoNames_;
    NumberFields* numbers_;
    SignLine* preview_;
    SignLine* previewI0_; ///< shown while its energies are others than those of I1
    QCheckBox* references_;
    QCheckBox* badPixels_;
    QComboBox* badPixelLists_;
    QVBoxLayout* notes_;
    QPushButton* load_;
    QPushButton* cancel_;
    SignLine* whyNot_; ///< what prevents loading
};
