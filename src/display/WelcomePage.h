#pragma once

#include "display/CoveringPage.h"

#include <QStringList>

class QLabel;
class QVBoxLayout;

/// What stands in the place of the image before there is any: how to begin, and the road to a map.
class WelcomePage : public CoveringPage
{
    Q_OBJECT
public:
    explicit WelcomePage(QWidget* parent);

    /// Folders that were opened before, the last one first; the page shows the first few.
    void setRecentFolders(const QStringList& paths);
    /// Offers the session that was used last; an empty name offers none.
    void setLastSession(const QString& file);

Q_SIGNALS:
    void openFolder();
    void openRecent(const QString& path);
    void openSession(const QString& file);
    void openI1();
    void openI0();
    void openBatch();

private:
    void addHeading(QVBoxLayout* layout);
    void addRoad(QVBoxLayout* layout);
    void addOthers(QVBoxLayout* layout);

    QLabel* const session_; ///< link to the last session
    QWidget* const recent_; ///< heading and links
    QVBoxLayout* const links_;
};
