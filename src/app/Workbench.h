#pragma once

#include "app/StepStates.h"

#include <QMap>
#include <QObject>
#include <QPointer>

#include <array>

class PanelDock;
class QMainWindow;
class QScrollArea;
class StateStrip;
class StepBar;
struct Panels;

/// The lay-out of the main window: the bar of the steps, and the docks round the image. The forms
/// of the steps share the left side, one of them in front; what is pulled out of there stands where
/// its user puts it. It decides nothing of the work: it shows the states that it is given, and
/// tells what was asked for.
class Workbench : public QObject
{
    Q_OBJECT
public:
    /// Lays the panels out in the window, `central` in its middle. All of it outlives this.
    Workbench(QMainWindow& window, Panels& panels, QWidget& central);

    StepBar& bar() const { return *bar_; }
    PanelDock* dock(const QString& name) const { return docks_.value(name); }
    PanelDock* stepDock(Step step) const;
    Step step() const { return step_; }

    void setStates(const StepStates& states);

    /// Shows the form of a step, with the keys in its first field when `focus` is on.
    void openStep(Step step, bool focus = false);
    /// Hides every dock, or brings back those that were hidden so.
    void setImageAlone(bool alone);
    bool isImageAlone() const { return !besideImage_.isEmpty(); }
    /// All docks where they are in a new window.
    void resetLayout();
    /// The keys go to the next region: bar, forms, image, plots, what lies below.
    void focusNextRegion();

    /// The places of all docks, of F9 those before it, and back; false, with everything left as it
    /// is, for a lay-out of another version.
    QByteArray layout() const;
    bool restoreLayout(const QByteArray& layout);

Q_SIGNALS:
    void mendAsked(Mend mend);
    void openFolderAsked();
    void stepOpened(Step step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeStepDocks();
    void makeDock(const QString& name, const QString& title, QWidget* panel, bool shown);
    void placeDocks();
    void sizeDocks();
    void comesUp(Step step);
    void bringFloatingUp();
    QScrollArea* formArea(Step step) const;

    QMainWindow& window_;
    Panels& panels_;
    StepBar* bar_;
    QMap<QString, PanelDock*> docks_; ///< by object name; children of the window
    std::array<PanelDock*, stepCount> stepDocks_{};
    std::array<StateStrip*, stepCount> strips_{};
    std::array<QPointer<QScrollArea>, stepCount> areas_;
    Step step_ = Step::Data;
    QByteArray besideImage_; ///< the lay-out that the image alone hides; empty otherwise
    bool sized_ = false;     ///< docks have had their widths, which only a shown window gives
};
