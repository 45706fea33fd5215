#pragma once

#include "maps/Analyzed2DRes.h"
#include "maps/MapKinds.h"
#include "spectrum/Outcome.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class WalkKernel;
struct WalkSource;

/// How a map came to be.
struct MapOrigin
{
    QString analysis;
    QStringList references;                 ///< files that took part, in the order of their rows
    std::weak_ptr<const WalkSource> source; ///< what was walked over, while it is kept elsewhere
    /// What each of its positions went through, by the names of the analyses.
    std::vector<std::pair<QString, std::shared_ptr<WalkKernel>>> kernels;
    OutcomeCounts outcomes; ///< of the positions, once the filling has ended
};

enum class MapState
{
    Empty, ///< never begun
    Filling,
    Whole,  ///< every position was reached
    Stopped ///< positions not reached are 0
};

/// The scales of the result maps: whether they are in force, and what the two pairs of fields say.
struct MapScales
{
    bool fixed;
    Analyzed2DRes::Scale dMut;
    Analyzed2DRes::Scale ratio;
};

/// Owns every map of the program and knows how each came to be. Touched on the GUI thread alone.
///
/// A map is given out to be filled, filtered and shown; begin() and end() bracket its filling, also
/// when it is filled at once from a file or a kept record. What was asked of a key without a map
/// gets the answer for an empty one.
class MapBook : public QObject
{
    Q_OBJECT
public:
    explicit MapBook(QObject* parent = nullptr);
    ~MapBook() override;

    /// The map, made empty with its kind's name and the scale of setScales() when there is none
    /// yet. It stays where it is until dropRows().
    Analyzed2DRes& at(const MapKey& key);
    /// The map; null when there is none.
    Analyzed2DRes* find(const MapKey& key) const;
    /// The key of a map; none for one that is not of this book.
    std::optional<MapKey> keyOf(const Analyzed2DRes* map) const;
    /// The result maps that there are, in the order of saving.
    QVector<MapKey> resultKeys() const;

    /// Names of the element rows, such as "Fe-K", which their maps made from now on have.
    void setElementNames(const QStringList& names) { elementNames_ = names; }
    QString elementName(int row) const { return elementNames_.value(row); }
    /// Number of the reference row that shows the map, or as fullLabel(): "2", "Zansa".
    QString label(const MapKey& key) const;
    /// For files, no two alike: "2-1", "Zansa", "Fe-K-ROI".
    QString fullLabel(const MapKey& key) const;

    /// Prepares the map for a new filling by the walk; what it held is gone.
    void begin(const MapKey& key, const AnalyzeCond& walk, const MapOrigin& origin);
    /// The filling is over, at its last position (whole) or before. Nothing for a map that is not
    /// being filled.
    void end(const MapKey& key, bool whole, const OutcomeCounts& outcomes);
    MapState stateOf(const MapKey& key) const;
    /// No position is missing as far as the book knows. A map that was never begun counts as
    /// complete: that it holds nothing is told by Analyzed2DRes::whyNotSaved().
    bool isComplete(const MapKey& key) const;
    const MapOrigin& originOf(const MapKey& key) const;

    /// Forgets the maps of all rows of a kind. changed() tells each of them when it has left the
    /// book: whoever shows, fills or saves one lets go of it in that call, after which it is
    /// deleted.
    void dropRows(MapKind kind);

    /// Gives all maps with scale fields their scale and paints them; maps made later have it too.
    void setScales(const MapScales& scales);

    /// How the pictures of all maps of a kind are made, also of those made later.
    void setDisplay(MapKind kind, const MapDisplay& display);
    const MapDisplay& displayOf(MapKind kind) const { return displays_[std::size_t(kind)]; }

Q_SIGNALS:
    /// The map's filling began or ended, it was given another scale, or it has left the book.
    void changed(const MapKey& key);

private:
    Q_DISABLE_COPY(MapBook)

    struct Entry
    {
        std::unique_ptr<Analyzed2DRes> map;
        MapOrigin origin;
        MapState state = MapState::Empty;
    };

    Entry& entryAt(const MapKey& key);
    const Entry* findEntry(const MapKey& key) const;
    std::unique_ptr<Analyzed2DRes> emptyMap(const MapKey& key) const;
    template<typename Predicate>
    QVector<MapKey> keysOfKinds(Predicate isMeant) const;

    std::map<MapKey, Entry> entries_; ///< in the order of saving
    QStringList elementNames_;
    std::optional<MapScales> scales_;
    std::array<MapDisplay, mapKinds> displays_; ///< by kind
};
