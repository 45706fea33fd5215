#pragma once

#include "calibration/CalibBlock.h"

#include <QFrame>
#include <QVector>

#include <memory>

class LateDialog;
class Ui_CalibCtrl;

/// The calibration panel: the standard spectrum, which it owns, the conditions, the progress and
/// the statistics of a calibration, and the map's file. It calculates nothing: its owner runs the
/// calibration, reads and writes the files, and shows here what came of it.
class CalibCtrl : public QFrame
{
    Q_OBJECT
public:
    explicit CalibCtrl(QWidget* parent = nullptr);
    ~CalibCtrl() override;

    /// The standard, normalised; empty without one.
    const XafsSpectrum& standard() const { return standard_; }
    QString stdFileName() const;

    /// The conditions as the form stands.
    CalibConditions conditions(const SuggestElm& sElm) const;
    /// Background model of the pixels' spectra (VictLine's modes).
    int targetBackgroundMode() const;

    double crystalSpacing() const; ///< lattice spacing [angstrom]
    QString crystalName() const;
    double edgeEV() const; ///< edge energy field [eV]; 0 when it holds no number
    bool checksSize() const;

    /// All file dialogs of the panel, for the group that keeps them in one folder.
    QVector<LateDialog*> dialogs() const;

    /// 1 selects the inner product, anything else the mid point.
    void setType(int type);
    /// Half range, step and finest step of the inner product's search [eV].
    void setInnerRange(double range, double step, double minStep);
    /// Crystal by its index; an index that there is not changes nothing.
    void setCrystal(int index);
    void setCheckSize(bool f);
    /// 0 Victoreen, anything else straight lines.
    void setTargetBackground(int mode);
    void setStdBackground(int mode);

    void showStatistics(const CalibStatistics& statistics);
    /// Size and place on the detector of the images or of the map loaded [pixels].
    void showImageGeometry(const QSize& size, const QPoint& offset);
    /// Name of the map file last read or written.
    void showMapFile(const QString& fname);
    /// Whether the button will start or stop a calibration.
    void setRunning(bool running);

public Q_SLOTS:
    /// Reads and normalises the standard. A file without a spectrum empties the row.
    void newFile(const QString& fname);
    /// Normalises the standard anew; whoever copied it is not told.
    void stdBGToggled(bool f);
    /// The same as choosing the file in the row.
    void loadStd(const QString& fname);
    void setEdgeEV(const QString& eV);
    void loadEShiftMap(const QString& fname);
    /// Shows the progress of the calibration [%].
    void progress(double p);

Q_SIGNALS:
    void newStdFileLoaded();
    void execCalibration();
    void saveEMap(const QString& fname);
    void loadEMap(const QString& fname);
    void clearMap();
    void normalizeEShift();
    void targetBackgroundChanged();

private:
    Q_DISABLE_COPY(CalibCtrl)

    void connectForm();
    void fillCrystals();
    int stdBackgroundMode() const;

    const std::unique_ptr<Ui_CalibCtrl> ui_;
    LateDialog* const loadDialog_;
    LateDialog* const saveDialog_;
    XafsSpectrum standard_;
};
