#pragma once

#include <QObject>
#include <QVector>

class DataBox;
class ImageBox;
class QMainWindow;
class QMenu;
class SaveConductor;
struct Windows;

/// The menus of the main window with their keys, and the buttons that open windows. Most entries
/// only press a button of the forms.
class MenuBar : public QObject
{
    Q_OBJECT
public:
    /// What the entries act on; it outlives the menus.
    struct Parts
    {
        QMainWindow& window;
        Windows& windows;
        DataBox& dataBox;
        ImageBox& imageBox;
        SaveConductor& saving;
    };
    explicit MenuBar(const Parts& parts);

private:
    struct Entry;
    struct Table;

    static QVector<Table> tables();
    void addEntry(QMenu& menu, const Entry& entry);
    void connectOpeners();
    void openBatchFile();
    void showGestures();
    void showAbout();

    const Parts parts_;
};
