#pragma once

#include "analysis/AnalysisSection.h"
#include "analysis/dedge/DEdgeWalk.h"
#include "spectrum/ReferenceSpectrum.h"

#include <memory>

class Ui_DEdgeSection;

/// The part of the panel for the shift of the edge: what it is measured against, and the shift of
/// the last spectrum.
class DEdgeSection : public AnalysisSection
{
    Q_OBJECT
public:
    explicit DEdgeSection(QWidget* parent = nullptr);
    ~DEdgeSection() override;

    QString analysisName() const override { return QStringLiteral("dEdge"); }
    QVector<ImageButton> imageButtons() const override;
    QVector<MapKey> maps() const override { return {{MapKind::DEdge}}; }
    std::optional<MapKey> firstMap() const override { return MapKey{MapKind::DEdge}; }
    QStringList files() const override;
    WhyNot notReady(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const override;
    SectionConditions conditions(const SpectraInfo& spectra) const override;
    void show(const ShownResult& result) override;
    void showPosition(const MapBook& book, QPoint position) override;
    void bindCommands(CommandBook& book) override;
    void setHint(const EdgeHint& hint) override;

    /// The comparison spectrum, with straight lines; empty without a file.
    const XafsSpectrum& comparison() const { return comparison_.spectrum(); }

public Q_SLOTS:
    /// 0 measures the mid point, 1 against the comparison spectrum; another number is a fault.
    void setDEdgeMode(int mode);
    /// The same as choosing the file by hand.
    void setComparisonFile(const QString& fname);
    void toggledDEdgeCompWith(bool f);
    /// Reads the comparison spectrum. A file that can not be read costs one fault line, and there
    /// is none then.
    void selectedNewDEdgeCWFile(const QString& fname);
    void noticedNewDEdge(double dEdge);

private:
    Q_DISABLE_COPY(DEdgeSection)

    void connectForm();
    bool isMidPoint() const;
    DEdgeConditions shiftConditions(const SpectraInfo& spectra) const;
    void clearedFile();
    void showMark();

    const std::unique_ptr<Ui_DEdgeSection> ui_;
    ReferenceSpectrum comparison_;
};
