#include "maps/MapChoice.h"

#include "maps/MapBook.h"

namespace {

std::optional<MapKey> chosenKey(const MapChoice& choice)
{
    if (choice.zansa)
        return MapKey{MapKind::Zansa};
    // Ids of rows added later are those of fixed buttons too, which were numbered first.
    if (choice.imageId < 0 || choice.imageId >= choice.rows)
        return std::nullopt;
    return MapKey{rowMapKind(choice.kindIndex).value_or(MapKind::LcfJump), choice.imageId};
}

} // namespace

std::optional<MapKey> chosenMap(const MapChoice& choice, const MapBook& book)
{
    const std::optional<MapKey> key = chosenKey(choice);
    return key && book.find(*key) ? key : std::nullopt;
}
