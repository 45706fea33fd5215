#include "maps/MapChoice.h"

#include "maps/MapBook.h"

#include <algorithm>
#include <iterator>

namespace {

/// What has to hold for a fixed button to choose its map.
enum class Needs
{
    Nothing,
    Picture,
    Elements
};

struct FixedMap
{
    FixedImage image;
    MapKind kind;
    Needs needs;
};

constexpr FixedMap fixedMaps[] = {
    {FixedImage::ResidualJump, MapKind::ResidualJump, Needs::Picture},
    {FixedImage::ResidualRest, MapKind::ResidualRest, Needs::Picture},
    {FixedImage::ResidualRatio, MapKind::ResidualRatio, Needs::Picture},
    {FixedImage::Zansa, MapKind::Zansa, Needs::Nothing},
    {FixedImage::DEdge, MapKind::DEdge, Needs::Nothing},
    {FixedImage::ElemJump, MapKind::ElemJump, Needs::Elements},
    {FixedImage::ElemJumpRatio, MapKind::ElemJumpRatio, Needs::Elements},
    {FixedImage::ElemsCor, MapKind::ElemsCor, Needs::Elements},
    {FixedImage::ElemsCorTh, MapKind::ElemsCorTh, Needs::Elements},
    {FixedImage::ElemMutPlus, MapKind::ElemMutPlus, Needs::Elements},
    {FixedImage::ElemMutMinus, MapKind::ElemMutMinus, Needs::Elements},
    {FixedImage::ElemDE, MapKind::ElemDE, Needs::Elements},
    {FixedImage::ElemRoi, MapKind::ElemRoi, Needs::Elements},
    {FixedImage::ElemRoiRatio, MapKind::ElemRoiRatio, Needs::Elements},
    {FixedImage::SumUp, MapKind::SumUp, Needs::Nothing},
    {FixedImage::Outcomes, MapKind::Outcomes, Needs::Nothing},
};

std::optional<MapKey> keyOf(const FixedMap& map, const MapChoice& choice, const MapBook& book)
{
    if (map.needs == Needs::Elements && (!choice.elements || choice.elementRows == 0))
        return std::nullopt;
    MapKey key{map.kind};
    if (traitsOf(map.kind).rows == RowsOf::Elements) {
        if (choice.elementRow < 0)
            return std::nullopt;
        key.row = choice.elementRow;
    }
    const Analyzed2DRes* const found = book.find(key);
    if (map.needs == Needs::Picture && !(found && found->imgValid))
        return std::nullopt;
    return key;
}

/// Each test stands above those before it.
std::optional<MapKey> chosenKey(const MapChoice& choice, const MapBook& book)
{
    std::optional<MapKey> key;
    if (choice.row >= 0 && choice.row < choice.rows)
        key = MapKey{rowMapKind(choice.kindIndex).value_or(MapKind::LcfJump), choice.row};
    if (choice.fixed) {
        const auto* const map =
            std::find_if(std::begin(fixedMaps), std::end(fixedMaps),
                         [&](const FixedMap& known) { return known.image == *choice.fixed; });
        if (map != std::end(fixedMaps)) {
            if (const std::optional<MapKey> fixed = keyOf(*map, choice, book))
                key = fixed;
        }
    }
    if (choice.arithmetic && choice.operand)
        key = MapKey{*choice.operand};
    return key;
}

} // namespace

std::optional<FixedImage> fixedImageOf(MapKind kind)
{
    for (const FixedMap& map : fixedMaps) {
        if (map.kind == kind)
            return map.image;
    }
    return std::nullopt;
}

std::optional<MapKey> chosenMap(const MapChoice& choice, const MapBook& book)
{
    const std::optional<MapKey> key = chosenKey(choice, book);
    return key && book.find(*key) ? key : std::nullopt;
}
