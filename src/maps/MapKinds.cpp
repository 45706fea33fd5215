#include "maps/MapKinds.h"

#include <iterator>
#include <tuple>

namespace {

using Scale = ScaleFields;
using Rows = RowsOf;

// clang-format off
constexpr MapKindTraits table[] = {
    {MapKind::ShiftMap, "a2d esm", "a2d esm", "eV", Scale::None, Rows::Nothing, false},
    {MapKind::LcfJump, "LCF Ref 1", "0", "", Scale::DMut, Rows::References, true},
    {MapKind::LcfWeight, "LCF Ref 2", "1", "", Scale::Ratio, Rows::References, true},
    {MapKind::Zansa, "a2d Zansa", "Zansa", "", Scale::Ratio, Rows::Nothing, true},
    {MapKind::DEdge, "a2d dEdge", "dEdge", "eV", Scale::Ratio, Rows::Nothing, true},
    {MapKind::Outcomes, "a2d Outcomes", "Outcomes", "", Scale::None, Rows::Nothing, true},
    {MapKind::ResidualJump, "a2d DMut", "DMut", "", Scale::DMut, Rows::Nothing, true},
    {MapKind::ResidualRest, "a2d Rest", "Rest", "", Scale::DMut, Rows::Nothing, true},
    {MapKind::ResidualRatio, "a2d Rati", "Rati", "", Scale::Ratio, Rows::Nothing, true},
    {MapKind::ElemJump, "%1 Elem Ctrl 0", "0", "", Scale::DMut, Rows::Elements, true},
    {MapKind::ElemJumpRatio, "%1 Elem Ctrl N", "N", "", Scale::Ratio, Rows::Elements, true},
    {MapKind::ElemMutPlus, "%1 Elem Ctrl MP", "MP", "", Scale::DMut, Rows::Elements, true},
    {MapKind::ElemMutMinus, "%1 Elem Ctrl MM", "MM", "", Scale::DMut, Rows::Elements, true},
    {MapKind::ElemDE, "%1 Elem Ctrl DE", "DE", "eV", Scale::Ratio, Rows::Elements, true},
    {MapKind::ElemRoi, "%1 Elem Ctrl ROI", "ROI", "", Scale::DMut, Rows::Elements, true},
    {MapKind::ElemRoiRatio, "%1 Elem Ctrl NROI", "NROI", "", Scale::Ratio, Rows::Elements, true},
    {MapKind::ElemsCor, "a2d ElemsCor", "ElemsCor", "", Scale::Ratio, Rows::Nothing, true},
    {MapKind::ElemsCorTh, "a2d ElemsCorTh", "ElemsCorTh", "", Scale::Ratio, Rows::Nothing, true},
    {MapKind::SumUp, "Sum Up Img", "SumUp", "", Scale::None, Rows::Nothing, true},
    {MapKind::Processed, "Processed Map", "Processed", "", Scale::Ratio, Rows::Nothing, true},
    {MapKind::Operand1, "E-Shift Map 1", "Map1", "", Scale::Ratio, Rows::Nothing, false},
    {MapKind::Operand2, "E-Shift Map 2", "Map2", "", Scale::Ratio, Rows::Nothing, false},
};
// clang-format on

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
    return kinds;
}

std::optional<MapKind> rowMapKind(int index)
{
    constexpr MapKind kinds[] = {MapKind::LcfJump, MapKind::LcfWeight};
    if (index < 0 || index >= int(std::size(kinds)))
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
        const RowsOf rows = traitsOf(key.kind).rows;
        const int group = rows == RowsOf::References ? 0 : rows == RowsOf::Nothing ? 1 : 2;
        return std::make_tuple(group, key.row, key.kind);
    };
    return place(a) < place(b);
}
