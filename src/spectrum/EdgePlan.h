#pragma once

#include "spectrum/EdgeLanes.h"
#include "spectrum/SuggestElm.h"
#include "spectrum/XafsSpectrum.h"

#include <vector>

/// What the edges of many spectra over the same energies share, worked out once: the sums over
/// energies and the factors of the line fits depend on where the steepest rise is, not on the
/// curve. Immutable, so that any thread reads it.
class EdgePlan
{
public:
    /// `energies` [eV] in the order of the scan.
    EdgePlan(const std::vector<double>& energies, const SuggestElm& elm, int background);

    /// There are lane forms for such energies: enough of them, that ascend strictly. Otherwise
    /// nothing else is of use.
    bool isUsable() const { return usable_; }

    const EdgeTask& task() const { return task_; }
    const std::vector<double>& energies() const { return energies_; }

private:
    Q_DISABLE_COPY(EdgePlan)

    bool ascends() const;
    void tabulate(const XafsSpectrum& grid);
    LineTable tableOf(double from, double to) const;
    bool factoriseStraight(LineTable& table) const;
    bool factoriseVictoreen(LineTable& table) const;

    const std::vector<double> energies_;
    std::vector<double> lambda_;
    std::vector<double> lambda3_;
    std::vector<LineTable> pre_;
    std::vector<LineTable> post_;
    EdgeTask task_{};
    bool usable_ = false;
};
