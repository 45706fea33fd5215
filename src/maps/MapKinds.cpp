#include "maps/MapKinds.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace {

constexpr MapKindTraits table[] = {
    {MapKind::ShiftMap, "a2d esm", "a2d esm", "eV", ScaleFields::None, false, false},
    {MapKind::LcfJump, "LCF Ref 1", "0", "", ScaleFields::DMut, true, true},
    {MapKind::LcfWeight, "LCF Ref 2", "1", "", ScaleFields::Ratio, true, true},
    {MapKind::Zansa, "a2d Zansa", "Zansa", "", ScaleFields::Ratio, false, true},
    {MapKind::DEdge, "a2d dEdge", "dEdge", "eV", ScaleFields::Ratio, false, true},
};

static_assert(std::size(table) == std::size_t(mapKinds));

constexpr bool standsInOrder()
{
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (std::size_t(table[i].kind) != i)
            return false;
    }
    return true;
}
static_assert(standsInOrder(), "traitsOf() finds a row by the number of its kind");

} // namespace

const MapKindTraits& traitsOf(MapKind kind)
{
    return table[std::size_t(kind)];
}

QVector<MapKind> resultKinds()
{
    QVector<MapKind> kinds;
    for (const MapKindTraits& traits : table) {
        if (traits.isResult)
            kinds.append(traits.kind);
    }
    std::stable_partition(kinds.begin(), kinds.end(),
                          [](MapKind kind) { return traitsOf(kind).ofRow; });
    return kinds;
}

std::optional<MapKind> rowMapKind(int index)
{
    // The rows' kinds stand first.
    const QVector<MapKind> kinds = resultKinds();
    if (index < 0 || index >= kinds.size() || !traitsOf(kinds[index]).ofRow)
        return std::nullopt;
    return kinds[index];
}

bool operator==(const MapKey& a, const MapKey& b)
{
    return a.kind == b.kind && a.row == b.row;
}

bool operator<(const MapKey& a, const MapKey& b)
{
    const auto place = [](const MapKey& key) {
        return std::make_tuple(!traitsOf(key.kind).ofRow, key.row, key.kind);
    };
    return place(a) < place(b);
}

QString mapLabel(const MapKey& key)
{
    const MapKindTraits& traits = traitsOf(key.kind);
    return traits.ofRow ? QString::number(key.row) : QString(QLatin1String(traits.word));
}

QString fullMapLabel(const MapKey& key)
{
    const MapKindTraits& traits = traitsOf(key.kind);
    if (!traits.ofRow)
        return mapLabel(key);
    return QStringLiteral("%1-%2").arg(key.row).arg(QLatin1String(traits.word));
}
