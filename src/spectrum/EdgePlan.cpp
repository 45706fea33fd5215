#include "spectrum/EdgePlan.h"

#include "common/Constants.h"
#include "spectrum/CentredColumns.h"
#include "spectrum/SmallSystem.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Fewer energies than that are no scan that speed matters to.
constexpr std::size_t fewestEnergies = 8;

/// Factors of an N x N system, rows in the order in which they are solved; false for a singular
/// one.
template<int N>
bool factorise(const std::array<std::array<double, N>, N>& a, LineTable& table)
{
    SmallFactors<N> factors;
    if (!factors.make(a))
        return false;
    std::copy(factors.pivots.begin(), factors.pivots.end(), table.pivots);
    double* out = table.factor;
    for (int i = 1; i < N; ++i) {
        for (int k = 0; k < i; ++k)
            *out++ = factors.l[std::size_t(table.pivots[i])][k];
    }
    for (int i = 0; i < N; ++i) {
        for (int k = i; k < N; ++k)
            *out++ = factors.u[std::size_t(table.pivots[i])][k];
    }
    return true;
}

} // namespace

EdgePlan::EdgePlan(const std::vector<double>& energies, const SuggestElm& elm, int background)
    : energies_(energies)
{
    usable_ = energies_.size() >= fewestEnergies && ascends();
    if (!usable_)
        return;
    XafsSpectrum grid;
    for (const double E : energies_)
        grid.append(E, 0.0);
    grid.init(QString(), elm);
    task_.n = int(energies_.size());
    task_.E = energies_.data();
    task_.hc = hcEvAngstrom;
    task_.bezierWeights = bezierWeights().data()->data();
    task_.isVictoreen = background == VictLine::Victoreen;
    if (task_.isVictoreen) {
        for (const double lambda : wavelengthsOf(grid)) {
            lambda_.push_back(lambda);
            lambda3_.push_back(lambda * lambda * lambda);
        }
    }
    task_.lambda = lambda_.data();
    task_.lambda3 = lambda3_.data();
    const XafsSpectrum::RiseWindow window = grid.riseWindow();
    task_.firstRise = window.first;
    task_.endRise = window.end;
    task_.isSuggested = elm.use;
    task_.lowestMid = elm.edgeE + elm.preEnd;
    task_.highestMid = elm.edgeE + elm.postStart;
    task_.thJump = elm.thJump;
    tabulate(grid);
}

bool EdgePlan::ascends() const
{
    if (!(energies_.front() > 0.0) || !std::isfinite(energies_.back()))
        return false;
    for (std::size_t i = 1; i < energies_.size(); ++i) {
        if (!(energies_[i - 1] < energies_[i]))
            return false;
    }
    return true;
}

void EdgePlan::tabulate(const XafsSpectrum& grid)
{
    for (const double edgeE : energies_) {
        pre_.push_back(tableOf(energies_.front(), edgeE + grid.dPreE));
        post_.push_back(tableOf(edgeE + grid.dPostS, energies_.back()));
        // Rows of the straight system never change places above 1 eV.
        usable_ = usable_ && (task_.isVictoreen ||
                              (pre_.back().pivots[0] == 0 && post_.back().pivots[0] == 0));
    }
    task_.pre = pre_.data();
    task_.post = post_.data();
}

LineTable EdgePlan::tableOf(double from, double to) const
{
    LineTable table{};
    table.from = from;
    table.to = to;
    const auto countOf = [this](auto test) {
        int count = 0;
        while (count < task_.n && test(energies_[std::size_t(count)]))
            ++count;
        return count;
    };
    table.first = countOf([from](double E) { return !(E >= from); });
    // Two ways to count, which differ for an end that is no number: the fit then takes all points,
    // the residual none.
    table.end = std::max(countOf([to](double E) { return !(E >= to); }), table.first);
    const bool endIncluded = task_.isVictoreen;
    const auto isInResidual = [=](double E) { return endIncluded ? E <= to : E < to; };
    table.residualEnd = std::max(countOf(isInResidual), table.first);
    table.solvable = task_.isVictoreen ? factoriseVictoreen(table) : factoriseStraight(table);
    return table;
}

bool EdgePlan::factoriseStraight(LineTable& table) const
{
    double sumE = 0.0;
    double sumEE = 0.0;
    for (int i = table.first; i < table.end; ++i) {
        const double E = energies_[std::size_t(i)];
        sumE += E;
        sumEE += E * E;
    }
    const int n = table.end - table.first;
    return n >= 2 && factorise<2>({{{sumEE, sumE}, {sumE, double(n)}}}, table);
}

bool EdgePlan::factoriseVictoreen(LineTable& table) const
{
    const int n = table.end - table.first;
    if (n < 3)
        return false;
    const double* const E = energies_.data() + table.first;
    const CentredColumns columns(E[0], E[n - 1]);
    std::vector<double> f1(static_cast<std::size_t>(n));
    std::vector<double> f2(f1.size());
    columns.fill(E, n, f1.data(), f2.data());
    double sum1 = 0.0;
    double sum2 = 0.0;
    double sum11 = 0.0;
    double sum12 = 0.0;
    double sum22 = 0.0;
    for (std::size_t i = 0; i < f1.size(); ++i) {
        sum1 += f1[i];
        sum2 += f2[i];
        sum11 += f1[i] * f1[i];
        sum12 += f1[i] * f2[i];
        sum22 += f2[i] * f2[i];
    }
    const double L = hcEvAngstrom / columns.middleE;
    table.middleE = columns.middleE;
    table.scale1 = columns.scale1;
    table.scale2 = columns.scale2;
    table.L3 = L * L * L;
    table.L4 = L * L * L * L;
    return factorise<3>({{{double(n), sum1, sum2}, {sum1, sum11, sum12}, {sum2, sum12, sum22}}},
                        table);
}
