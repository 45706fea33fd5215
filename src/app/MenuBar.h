#pragma once

#include "app/StepStates.h"

#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>

class FolderConductor;
class ImageBox;
class QMainWindow;
class QMenu;
class SaveConductor;
class Sessions;
class Shell;
class Workbench;
struct Panels;

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
        Panels& panels;
        Workbench& workbench;
        Shell& shell;
        FolderConductor& folders;
        SaveConductor& saving;
        Sessions& sessions;
    };
    explicit MenuBar(const Parts& parts);

    void openBatchFile();

private:
    struct Entry;
    struct Table;

    static QVector<Table> tables();
    void addEntry(QMenu& menu, const Entry& entry);
    void connectOpeners();
    void addRecent(const QString& title, int behind, QStringList (*paths)(), const QString& none,
                   const std::function<void(const QString&)>& open);
    void addSwitches();
    void addColours();
    void openStep(Step step);
    ImageBox& box() const;
    void showGestures();
    void showAbout();

    const Parts parts_;
    QVector<QMenu*> menus_; ///< in the order of the bar
};
