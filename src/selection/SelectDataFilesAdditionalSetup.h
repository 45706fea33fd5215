#pragma once

#include "image/ErrPoints.h"
#include "selection/T20.h"

#include <QFrame>

#include <memory>

class LateDialog;
class Ui_SelectDataFilesAdditionalSetup;

/// Further settings of one stack, folded out in its row: display while loading, its list of bad
/// pixels, its dark area.
class SelectDataFilesAdditionalSetup : public QFrame
{
    Q_OBJECT
public:
    explicit SelectDataFilesAdditionalSetup(QWidget* parent = nullptr);
    ~SelectDataFilesAdditionalSetup() override;

    bool showLatest() const;
    void setShowLatest(bool f);
    bool ignoreLive() const;
    void setIgnoreLive(bool f);
    /// The list is used where there is one.
    bool errPointsSwitchedOn() const;
    void switchErrPoints(bool f);
    /// Bad pixels for images read from now on.
    const ErrPoints& errPoints() const { return errPoints_; }
    /// Selects a list and switches it on; an empty name switches it off.
    void useErrPoints(const QString& fname);
    /// The dialog that selects the list of bad pixels.
    LateDialog* dialog() const { return errPsDialog_; }

Q_SIGNALS:
    void setDarkArea();
    void updateDarkArea();
    void clearDarkArea();

public Q_SLOTS:
    void errPsDefSelected(const QString& fname);
    void toggledUseErrPs(bool f);
    /// Shows the rectangle of the dark area, or that there is none.
    void darkArea(const T20& area);
    void noDarkArea();

private:
    std::unique_ptr<Ui_SelectDataFilesAdditionalSetup> ui_;
    LateDialog* errPsDialog_;
    ErrPoints errPoints_;
};
