#pragma once

#include <QObject>

class Analyzer;
class CursorConductor;
class DarkConductor;
class DataBox;
class FolderQuestion;
class ImageBox;
class LateDialog;
class SelectDataFiles;
class SpectrumBox;
class StackConductor;
class ViewConductor;
struct FolderChoice;
struct ImageStack;
struct Measurement;

/// Opens a measurement's folder: asks what of it is to be loaded, fills the forms with the answer
/// as by hand, loads, and shows what came of it.
class FolderConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on; all of it outlives it.
    struct Parts
    {
        const Measurement& data;
        DataBox& dataBox;
        SpectrumBox& spectrumBox;
        ImageBox& imageBox;
        Analyzer& analyzer;
        FolderQuestion& question;
    };
    FolderConductor(const Parts& parts, StackConductor& stacks, DarkConductor& dark,
                    ViewConductor& view, CursorConductor& cursor, QObject* parent = nullptr);

    /// The dialog that chooses a folder; it belongs to the question.
    LateDialog* dialog() const { return dialog_; }

public Q_SLOTS:
    void chooseFolder(); ///< shows the dialog
    /// Looks through the folder and asks; one without images costs a notice.
    void open(const QString& folder);
    void carryOut(const FolderChoice& choice);

Q_SIGNALS:
    void questionOpened();
    void questionClosed();
    /// A line for people.
    void notice(const QString& text);
    /// Files of this folder are being loaded.
    void folderOpened(const QString& path);
    /// All that was chosen has come and its middle image is on show.
    void loaded();

private:
    void closeQuestion();
    void setEnergies(SelectDataFiles& row, const FolderChoice& choice, int files);
    void fillRow(SelectDataFiles& row, const FolderChoice& choice, int files);
    void loadStacks(const FolderChoice& choice);
    void loadReferences(const FolderChoice& choice);
    void stackLoaded();
    void showMiddle();

    const Parts parts_;
    StackConductor& stacks_;
    DarkConductor& dark_;
    ViewConductor& view_;
    CursorConductor& cursor_;
    LateDialog* const dialog_;
    bool waits_ = false; ///< for the images of a choice
};
