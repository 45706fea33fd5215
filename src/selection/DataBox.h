#pragma once

#include <QGroupBox>

#include <memory>

class CommandBook;
class NumberFields;
class SelectDataFiles;
class Ui_DataBox;

/// Where the user chooses the files of a measurement: the rows of both stacks, the dark image, the
/// background spectrum and the two total I0. It tells what was chosen; who listens reads the files,
/// and shows or clears here what came of that.
class DataBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit DataBox(QWidget* parent = nullptr);
    ~DataBox() override;

    SelectDataFiles* i1Row() const;
    SelectDataFiles* i0Row() const;

    /// Exposure of the dark image [ms], which the user can overrule; 0 for what is no number.
    double darkExposure() const;
    /// Shows the dark image's file and its exposure [ms].
    void showDark(const QString& fname, double exposureMs);
    /// Empties the file's name alone; the exposure stays.
    void clearDarkName();

    /// The commands of the dark exposure and of the rows of spectra.
    void bindCommands(CommandBook& book);

    /// Names of the number fields in all its rows that can't be read.
    QStringList unreadable() const;

    // Each empties its row and tells that it is cleared.
    void clearBg();
    void clearTotalI0ofI1();
    void clearTotalI0ofI0();

Q_SIGNALS:
    void darkSelected(const QString& fname);
    void darkCleared();
    void darkExposureChanged(); ///< its text
    void fieldsChanged();       ///< a number field can or can't be read any more
    void bgSelected(const QString& fname);
    void bgCleared();
    void totalI0ofI1Selected(const QString& fname);
    void totalI0ofI1Cleared();
    void totalI0ofI0Selected(const QString& fname);
    void totalI0ofI0Cleared();

private:
    void setupRows();
    void setupDark();
    void setupSpectra();
    void layOut();

    std::unique_ptr<Ui_DataBox> ui_;
    NumberFields* numbers_;
};
