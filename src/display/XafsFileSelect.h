#pragma once

#include <QFrame>

#include <memory>

class LateDialog;
class Ui_XafsFileSelect;

/// The row that selects one spectrum file: its name, the buttons, and a box that tells whether the
/// file is to be used. The owner reads the file and reports with fileNameValid() what came of it.
class XafsFileSelect : public QFrame
{
    Q_OBJECT
    // A form that holds the row can choose whether it has a use box.
    Q_PROPERTY(bool useShown READ isUseShown WRITE showUse)
public:
    explicit XafsFileSelect(QWidget* parent = nullptr);
    ~XafsFileSelect() override;

    QString fileName() const;
    bool isUsed() const;
    bool isFileValid() const { return fileValid_; }
    void setCaption(const QString& caption);
    bool isUseShown() const;
    QString mark() const;
    LateDialog* dialog() const { return dialog_; }

Q_SIGNALS:
    void changedUse(bool f);
    void newFile(const QString& fname);
    void cleared();

public Q_SLOTS:
    void load(const QString& fname);
    void fileSelected(const QString& fname);
    void fileNameValid(bool f);
    void clear();
    void setUse(bool f);
    /// Marks the file for these reasons, one a line; none for an empty text.
    void setMark(const QString& reasons);
    /// Shows or hides the use box.
    void showUse(bool f);
    /// Greatest width of the buttons [pixels].
    void setMaxSelectBW(int max);
    void setMaxClearBW(int max);

private:
    std::unique_ptr<Ui_XafsFileSelect> ui_;
    LateDialog* dialog_;
    bool fileValid_ = false;
};
