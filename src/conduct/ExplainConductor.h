#pragma once

#include "maps/MapKinds.h"
#include "walk/WalkSource.h"

#include <QObject>
#include <QPointer>

#include <map>

class CommandBook;
class ImageBox;
class MapBook;
class QPoint;
class SourceReader;
class StackConductor;
class TextWindow;
class ViewConductor;

/// Tells how a value of a map came to be, from what the map was made of, whatever the form says
/// now. That is kept as long as the images of the map's walk are loaded: those that were loaded
/// again, or cleared, must not stay in memory for its sake.
class ExplainConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    ExplainConductor(const MapBook& book, const SourceReader& reader, ImageBox& box,
                     StackConductor& stacks, const ViewConductor& view, QObject* parent = nullptr);
    ~ExplainConductor() override;

    void bindCommands(CommandBook& book);

    /// Every stage of a position of the map on show as text, or of the chosen one under an image;
    /// why there is none goes into `why`.
    QString explanation(int x, int y, QString& why) const;

private:
    void mapChanges(const MapKey& key);
    void letGoOfOthersImages();
    void openMenu(const QPoint& place, int x, int y);
    void show(int x, int y);
    void save(int x, int y, const QString& file) const;

    const MapBook& book_;
    const SourceReader& reader_;
    ImageBox& box_;
    const ViewConductor& view_;
    std::map<MapKey, SharedSource> sources_;
    QPointer<TextWindow> window_; ///< the box's; null until it is asked for
};
