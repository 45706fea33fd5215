#include "maps/MapBook.h"

#include "maps/OutcomeColours.h"

#include <algorithm>

namespace {

Analyzed2DRes::Scale scaleOf(MapKind kind, const MapScales& scales)
{
    return traitsOf(kind).scale == ScaleFields::DMut ? scales.dMut : scales.ratio;
}

bool hasScaleFields(MapKind kind)
{
    return traitsOf(kind).scale != ScaleFields::None;
}

} // namespace

MapBook::MapBook(QObject* parent)
    : QObject(parent)
{
}

MapBook::~MapBook() = default;

QString MapBook::label(const MapKey& key) const
{
    return traitsOf(key.kind).rows == RowsOf::References ? QString::number(key.row)
                                                         : fullLabel(key);
}

QString MapBook::fullLabel(const MapKey& key) const
{
    const MapKindTraits& traits = traitsOf(key.kind);
    const QString word = QLatin1String(traits.word);
    if (traits.rows == RowsOf::Nothing)
        return word;
    const QString row =
        traits.rows == RowsOf::Elements ? elementName(key.row) : QString::number(key.row);
    return row + QLatin1Char('-') + word;
}

std::unique_ptr<Analyzed2DRes> MapBook::emptyMap(const MapKey& key) const
{
    const MapKind kind = key.kind;
    QString name = QLatin1String(traitsOf(kind).name);
    if (traitsOf(kind).rows == RowsOf::Elements)
        name = name.arg(elementName(key.row));
    auto map = std::make_unique<Analyzed2DRes>(name);
    map->setDisplay(displayOf(kind));
    if (kind == MapKind::Outcomes)
        map->setClassColours(outcomeColours());
    if (!scales_ || !hasScaleFields(kind))
        return map;
    // Straight into the record: an empty map needs no picture.
    const Analyzed2DRes::Scale scale = scaleOf(kind, *scales_);
    map->fixedScale = scales_->fixed;
    map->fixedMin = scale.min;
    map->fixedMax = scale.max;
    return map;
}

MapBook::Entry& MapBook::entryAt(const MapKey& key)
{
    Entry& entry = entries_[key];
    if (!entry.map)
        entry.map = emptyMap(key);
    return entry;
}

const MapBook::Entry* MapBook::findEntry(const MapKey& key) const
{
    const auto at = entries_.find(key);
    return at == entries_.end() ? nullptr : &at->second;
}

Analyzed2DRes& MapBook::at(const MapKey& key)
{
    return *entryAt(key).map;
}

Analyzed2DRes* MapBook::find(const MapKey& key) const
{
    const Entry* const entry = findEntry(key);
    return entry ? entry->map.get() : nullptr;
}

std::optional<MapKey> MapBook::keyOf(const Analyzed2DRes* map) const
{
    const auto at = std::find_if(entries_.begin(), entries_.end(), [map](const auto& known) {
        return known.second.map.get() == map;
    });
    if (at == entries_.end())
        return std::nullopt;
    return at->first;
}

template<typename Predicate>
QVector<MapKey> MapBook::keysOfKinds(Predicate isMeant) const
{
    QVector<MapKey> keys;
    for (const auto& known : entries_) {
        if (isMeant(known.first.kind))
            keys.append(known.first);
    }
    return keys;
}

QVector<MapKey> MapBook::resultKeys() const
{
    return keysOfKinds([](MapKind kind) { return traitsOf(kind).isResult; });
}

void MapBook::begin(const MapKey& key, const AnalyzeCond& walk, const MapOrigin& origin)
{
    Entry& entry = entryAt(key);
    entry.map->prepare(walk);
    entry.origin = origin;
    entry.state = MapState::Filling;
    Q_EMIT changed(key);
}

void MapBook::end(const MapKey& key, bool whole, const OutcomeCounts& outcomes)
{
    if (stateOf(key) != MapState::Filling)
        return;
    Entry& entry = entryAt(key);
    entry.origin.outcomes = outcomes;
    entry.state = whole ? MapState::Whole : MapState::Stopped;
    Q_EMIT changed(key);
}

MapState MapBook::stateOf(const MapKey& key) const
{
    const Entry* const entry = findEntry(key);
    return entry ? entry->state : MapState::Empty;
}

bool MapBook::isComplete(const MapKey& key) const
{
    const MapState state = stateOf(key);
    return state == MapState::Empty || state == MapState::Whole;
}

const MapOrigin& MapBook::originOf(const MapKey& key) const
{
    static const MapOrigin none;
    const Entry* const entry = findEntry(key);
    return entry ? entry->origin : none;
}

void MapBook::dropRows(MapKind kind)
{
    const QVector<MapKey> keys = keysOfKinds([kind](MapKind known) { return known == kind; });
    // Out of the book first, so that nobody who is told finds one again.
    std::map<MapKey, Entry> leaving;
    for (const MapKey& key : keys)
        leaving.insert(entries_.extract(key));
    for (const MapKey& key : keys)
        Q_EMIT changed(key);
}

void MapBook::setScales(const MapScales& scales)
{
    scales_ = scales;
    const QVector<MapKey> keys = keysOfKinds(hasScaleFields);
    for (const MapKey& key : keys) {
        // The policy first: setting the scale paints the map and tells the scale in force.
        Analyzed2DRes& map = at(key);
        const Analyzed2DRes::Scale scale = scaleOf(key.kind, scales);
        map.fixedScale = scales.fixed;
        map.setScale(scale.min, scale.max);
    }
    // All have their scale before anybody who is told looks at another.
    for (const MapKey& key : keys)
        Q_EMIT changed(key);
}

void MapBook::setDisplay(MapKind kind, const MapDisplay& display)
{
    displays_[std::size_t(kind)] = display;
    for (const MapKey& key : keysOfKinds([kind](MapKind known) { return known == kind; }))
        at(key).setDisplay(display);
}
