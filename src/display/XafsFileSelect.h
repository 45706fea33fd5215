#pragma once

#include <QFrame>
#include <QVector>

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
    /// The buttons, which an owner may lay out elsewhere.
    QWidget* buttons() const;
    /// Shows the use box without its text, for rows that have a caption above them.
    void hideUseText();
    /// Those of its widgets in the row itself that take the focus, as they stand.
    QVector<QWidget*> tabChain() const;
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

private:
    void showFile(const QString& fname);

    std::unique_ptr<Ui_XafsFileSelect> ui_;
    LateDialog* dialog_;
    QString fileName_; ///< with its path; the row shows the name alone
    bool fileValid_ = false;
};
