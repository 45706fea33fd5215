#pragma once

#include "analysis/AnalysisSection.h"

#include <memory>

class Ui_ResidualSection;

/// The part of the panel for the residual absorption: its energy and factor, the line of its walk,
/// and the values of the last spectrum.
class ResidualSection : public AnalysisSection
{
    Q_OBJECT
public:
    explicit ResidualSection(QWidget* parent = nullptr);
    ~ResidualSection() override;

    QString analysisName() const override { return QStringLiteral("residual absorption"); }
    QVector<ImageButton> imageButtons() const override;
    QVector<MapKey> maps() const override;
    std::optional<MapKey> firstMap() const override { return MapKey{MapKind::ResidualRest}; }
    WhyNot notReady(const SpectraInfo&) const override { return {}; }
    std::unique_ptr<WalkKernel> kernel(const SpectraInfo& spectra) const override;
    std::unique_ptr<WalkSink> sink(const SpectraInfo& spectra, MapBook& book) const override;
    SectionConditions conditions(const SpectraInfo& spectra) const override;
    /// Makes the ratio.
    void finishMaps(MapBook& book) override;
    void show(const ShownResult& result) override;
    void showPosition(const MapBook& book, QPoint position) override;
    void bindCommands(CommandBook& book) override;
    RunRow* runRow() const override;

public Q_SLOTS:
    void setRaEnergy(double eng);
    void setRaFactor(double factor);

private:
    Q_DISABLE_COPY(ResidualSection)

    void showValues(double jump, double rest);

    const std::unique_ptr<Ui_ResidualSection> ui_;
};
