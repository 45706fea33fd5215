#pragma once

#include "display/XafsPlot.h"

#include <QFrame>

#include <memory>

class LateDialog;
class QAbstractButton;
class QFileDialog;
class QPainter;
class Ui_XafsView;

/// The window that shows a spectrum: its plot, the values under the mouse, and a line with its
/// edge. Spectra come in as copies, which share their points. GUI thread.
///
/// A plain left drag pans along the x axis and the wheel zooms; the energies in view then stay,
/// also for new spectra, until resetXScale().
class XafsView : public QFrame
{
    Q_OBJECT
public:
    explicit XafsView(QWidget* parent = nullptr);
    ~XafsView() override;

    enum Box
    {
        Normalize,
        CorrectEnergy,
        Raw,
        Frequencies ///< of the raw curve
    };
    /// The boxes that say what is plotted.
    QAbstractButton* box(Box which) const;

    /// The main spectrum, with a note for the line of its edge. Returns how far its mid point lies
    /// above the standard's [eV]; 0.0 when one of the two has no points.
    double setSpectrum(const XafsSpectrum& s, const QString& note = QString());
    /// The raw values behind the main spectrum, for the raw modes.
    void setRawSpectrum(const Spectrum& s);
    void setStdSpectrum(const XafsSpectrum& s);
    /// Names for the legend, of the spectrum that is set next. The main spectrum is not in it
    /// without one; the standard is, as such.
    void setSpectrumName(const QString& name);
    void setStdSpectrumName(const QString& name);
    /// What an empty plot says; by default that there is no spectrum yet.
    void setEmptyText(const QString& sentence);
    void setOthers(const QVector<ViewCurve>& curves);
    /// One of the further spectra; an index that there is none of changes nothing.
    void setOther(int index, const ViewCurve& curve);
    /// Marks the energy of the image shown [eV]; none when not above 0.
    void setMarkerEnergy(double energy);
    void setEdgeMarks(const QVector<EdgeMark>& marks);
    /// While on, setters only store; off shows what has come meanwhile.
    void setStopRedraw(bool f);

    const XafsSpectrum& spectrum() const { return plot_.spectrum(); }
    const QVector<ViewCurve>& others() const { return plot_.others; }
    double markerEnergy() const { return plot_.markerEnergy; }
    /// Energies at the ends of the plot [eV].
    double xMin() const { return plot_.range.min(); }
    double xMax() const { return plot_.range.max(); }
    /// Mapping of the plot as it was laid out last.
    const ChCoord& coord() const { return plot_.coord; }

public Q_SLOTS:
    void draw(QPainter* p);
    void onMouseMoved();
    void onWheelMoved();
    /// Brings the whole x axis into view.
    void resetXScale();
    /// Repaints the plot and tells updated().
    void update();
    /// Writes the spectra into text files beside each other: of "a.dat", the main one into
    /// "a-T.dat", the standard into "a-std.dat" and further ones into "a-other0.dat" and on. One
    /// without points writes no file; none at all costs one fault line.
    void saveData(const QString& fname);
    void setNormalize(bool f);
    void setEnergyCorrection(bool f);

Q_SIGNALS:
    /// Something else is shown.
    void updated();
    /// The user has the spectra written.
    void saveAsked(const QString& fname);

protected:
    void changeEvent(QEvent* event) override;

private:
    Q_DISABLE_COPY(XafsView)

    QFileDialog* newSaveDialog();
    void connectForm();
    void narrowControls();
    void showEdge();
    void showValues(const QString& x, const QString& value);

    const std::unique_ptr<Ui_XafsView> ui_;
    LateDialog* const saveDialog_;
    XafsPlot plot_;
    QString note_; ///< of the main spectrum
    QString emptyText_;
    bool edgeIsTold_ = true; ///< the line of the edge is that of the main spectrum
    bool stopRedraw_ = false;
};
