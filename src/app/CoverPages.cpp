#include "app/CoverPages.h"

#include "app/WorkbenchStore.h"
#include "conduct/FolderConductor.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "display/WelcomePage.h"
#include "image/Measurement.h"
#include "selection/FolderQuestion.h"

CoverPages::CoverPages(QWidget& below)
    : QObject(&below)
    , welcome_(new WelcomePage(&below))
    , question_(new FolderQuestion(&below))
{
}

void CoverPages::follow(const Measurement& data, StackConductor& stacks, FolderConductor& folders,
                        ViewConductor& view)
{
    const auto look = [this, &data, &view] {
        showWelcome(data.i1.images.isEmpty() && data.i0.images.isEmpty() && !view.isMapFilled() &&
                    question_->isHidden());
    };
    connect(&stacks, &StackConductor::imageCame, this, look);
    connect(&stacks, &StackConductor::cleared, this, look);
    connect(&view, &ViewConductor::shownChanged, this, look);
    connect(&folders, &FolderConductor::questionOpened, this, look);
    connect(&folders, &FolderConductor::questionClosed, this, look);
    connect(&folders, &FolderConductor::folderOpened, this, [this](const QString& path) {
        addRecentFolder(path);
        welcome_->setRecentFolders(recentFolders());
    });
    connect(welcome_, &WelcomePage::openFolder, &folders, &FolderConductor::chooseFolder);
    connect(welcome_, &WelcomePage::openRecent, &folders, &FolderConductor::open);
    welcome_->setRecentFolders(recentFolders());
    look();
}

void CoverPages::showWelcome(bool wanted)
{
    if (wanted && welcome_->isHidden())
        welcome_->cover();
    else if (!wanted)
        welcome_->hide();
}
