#pragma once

#include "analysis/AnalysisSection.h"

class SumUpCtrl;

/// The part of the panel for the sum of images: its ranges and the line of its walk. Its button
/// chooses the map of the sum, and the walk can be started whatever map is chosen.
class SumUpSection : public AnalysisSection
{
    Q_OBJECT
public:
    explicit SumUpSection(QWidget* parent = nullptr);

    QString analysisName() const override { return QStringLiteral("sum of images"); }
    bool joinsWalk() const override { return true; }
    QVector<ImageButton> imageButtons() const override;
    QVector<MapKey> maps() const override;
    std::optional<MapKey> firstMap() const override { return maps().first(); }
    /// A single spectrum is never summed up.
    WhyNot notReady(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const override;
    SectionConditions conditions(const SpectraInfo& spectra) const override;
    void show(const ShownResult&) override {}
    void bindCommands(CommandBook& book) override;
    RunRow* runRow() const override { return run_; }

private:
    SumUpCtrl* ctrl_;
    RunRow* run_;
};
