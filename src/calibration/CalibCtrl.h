#pragma once

#include "calibration/CalibBlock.h"
#include "calibration/ShiftMap.h"
#include "spectrum/ReferenceSpectrum.h"

#include <QFrame>

#include <memory>
#include <optional>

class CommandBook;
class History;
class LateDialog;
class NumberFields;
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
    const XafsSpectrum& standard() const { return standard_.spectrum(); }
    QString stdFileName() const;

    /// The conditions as the form stands.
    CalibConditions conditions(const SuggestElm& sElm) const;
    /// Background model of the pixels' spectra (VictLine's modes).
    int targetBackgroundMode() const;

    double crystalSpacing() const; ///< lattice spacing [angstrom]
    QString crystalName() const;
    double edgeEV() const; ///< edge energy field [eV]; 0 when it holds no number
    bool checksSize() const;

    /// 1 selects the inner product, anything else the mid point.
    void setType(int type);
    /// Half range, step and finest step of the inner product's search [eV].
    void setInnerRange(double range, double step, double minStep);
    /// Crystal by its index; an index that there is not changes nothing and is a fault.
    void setCrystal(int index);
    void setCheckSize(bool f);
    /// 0 Victoreen, anything else straight lines.
    void setTargetBackground(int mode);
    void setStdBackground(int mode);
    /// Whether the standard is normalised by the suggested edge, and not over the whole file.
    void setUseHint(bool f);
    /// Takes the suggested edge of the main window. One that tells nothing new costs nothing.
    void setSuggestion(const SuggestElm& elm);

    /// The commands that set its fields, read the standard or show it.
    void bindCommands(CommandBook& book);

    /// Statistics of the map in force: those of its calibration, and what the map itself tells;
    /// what there is not empties its fields.
    void showStatistics(const std::optional<CalibStatistics>& statistics,
                        const std::optional<ShiftMap::MedianAndSpread>& ofMap);
    /// Why nothing can be done with a map, as there is none, and why it can't be saved, in people's
    /// words; their buttons are disabled with the reason. Empty texts enable them.
    void setMapReasons(const QString& noMap, const QString& notSaved);
    /// Why the button can't start a calibration, in people's words: it is disabled then, with the
    /// reason as tool tip and below it. While one runs the button stops it.
    void setReadiness(const QString& reason);
    /// Names of the fields that can't be read as a number.
    QStringList unreadable() const;
    /// Size and place on the detector of the images or of the map loaded [pixels].
    void showImageGeometry(const QSize& size, const QPoint& offset);
    /// Name of the map file last read or written.
    void showMapFile(const QString& fname);
    /// Marks the map as that of a calibration that was stopped.
    void setMapInterrupted(bool f);
    /// Whether there is a former map to bring back; its button tells when there is none.
    void setFormerMap(bool f);
    /// Whether the button will start or stop a calibration.
    void setRunning(bool running);

public Q_SLOTS:
    /// Reads and normalises the standard. A file without a spectrum empties the row.
    void newFile(const QString& fname);
    /// Normalises the standard anew.
    void stdBGToggled(bool f);
    /// The same as choosing the file in the row.
    void loadStd(const QString& fname);
    void setEdgeEV(const QString& eV);
    void loadEShiftMap(const QString& fname);
    /// Shows the progress of the calibration [%].
    void progress(double p);

Q_SIGNALS:
    /// A field can or can't be read as a number any more.
    void fieldsChanged();
    void edgeEVChanged();
    void newStdFileLoaded();
    /// The standard is another without a new file: normalised anew, or gone.
    void standardChanged();
    void execCalibration();
    void saveEMap(const QString& fname);
    void loadEMap(const QString& fname);
    void clearMap();
    void formerMap();
    void normalizeEShift();
    void targetBackgroundChanged();

private:
    Q_DISABLE_COPY(CalibCtrl)

    void connectForm();
    void fillCrystals();
    void watchFields();
    void showReadiness();
    int stdBackgroundMode() const;
    void clearedStd();
    void useHint();
    void tellStandard();
    void showStdMark();
    void tellHistory(History& history) const;

    const std::unique_ptr<Ui_CalibCtrl> ui_;
    LateDialog* const loadDialog_;
    LateDialog* const saveDialog_;
    NumberFields* const numbers_;
    QString notReady_; ///< why no calibration can start
    bool running_ = false;
    ReferenceSpectrum standard_;
    SuggestElm suggestion_; ///< of the main window
    QString stdEdge_;       ///< mid point of the standard as the edge field gets it
};
