#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "app/Messages.h"
#include "app/ProgressSum.h"
#include "common/SafeInt.h"
#include "common/WindowState.h"
#include "display/ElidedLabel.h"
#include "display/FileDialogs.h"
#include "display/FileDrop.h"
#include "display/XafsView.h"
#include "ui_Body.h"

#include <QStatusBar>

namespace {

/// Pieces of work that the progress bar adds up.
enum Work
{
    LoadingI1,
    LoadingI0,
    Walking
};

constexpr int progressBarWidth = 220; ///< [pixels]

} // namespace

void Body::setupShell()
{
    setupMessages();
    setupStatusBar();
    setupMenuBar();
    connect(this, &Body::finishing, this, &Body::saveWindows);
    // The rows of spectra and stacks take dropped files themselves.
    const QStringList images = filterPatterns(SelectImgDialog::imageFilter());
    connect(new FileDrop(ui_->DarkFileName, FileDrop::OneFile, images), &FileDrop::dropped, this,
            [this](const QStringList& files) { selectedDark(files.first()); });
}

/// The windows whose place is kept, by the names of their groups in the store.
QMap<QString, QWidget*> Body::keptWindows()
{
    QMap<QString, QWidget*> kept{{QStringLiteral("Body"), this},
                                 {QStringLiteral("AnalyzerView"), analyzer_->view()}};
    for (QWidget* window : qAsConst(windows_)) {
        // Two windows of one class differ by their place in the list, which is always the same.
        QString name = window->objectName();
        while (kept.contains(name))
            name += QLatin1Char('+');
        kept.insert(name, window);
    }
    return kept;
}

void Body::restoreWindows()
{
    keepsWindows_ = true;
    const QMap<QString, QWidget*> kept = keptWindows();
    for (auto it = kept.cbegin(); it != kept.cend(); ++it) {
        bool popUp = false; // no window has such a mode
        if (isWindowStateStored(it.key()))
            loadWindowState(it.value(), it.key(), &popUp);
    }
}

void Body::saveWindows()
{
    // Once: the windows are closed one after the other, and count as hidden then.
    if (!keepsWindows_)
        return;
    keepsWindows_ = false;
    const QMap<QString, QWidget*> kept = keptWindows();
    for (auto it = kept.cbegin(); it != kept.cend(); ++it)
        saveWindowState(it.value(), it.key(), true);
}

void Body::setupMessages()
{
    messages_ = new Messages;
    windows_.append(messages_);
    dataDialogs_->add(messages_->dialog());
}

void Body::setupStatusBar()
{
    auto* latest = new ElidedLabel;
    latest->setObjectName(QStringLiteral("LatestMessage"));
    latest->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(latest, 1);
    connect(messages_, &Messages::latest, latest, &ElidedLabel::setLine);

    auto* bar = new ProgressSum;
    bar->setObjectName(QStringLiteral("Progress"));
    bar->setFixedWidth(progressBarWidth);
    statusBar()->addPermanentWidget(bar);
    showProgressOf(bar);
}

void Body::showProgressOf(ProgressSum* bar)
{
    connect(i1Loader_.get(), &LoadTiff::progressed, bar,
            [bar](int done, int total) { bar->setPart(LoadingI1, done, total); });
    connect(i0Loader_.get(), &LoadTiff::progressed, bar,
            [bar](int done, int total) { bar->setPart(LoadingI0, done, total); });
    connect(analyzer_, &Analyzer::progressChanged, bar, [this, bar](double perCent) {
        if (walk_.running)
            bar->setPart(Walking, truncatedInt(perCent), 100);
    });
    connect(analyzer_, &Analyzer::contAccessChanged, bar, [bar](bool on) {
        if (!on)
            bar->setPart(Walking, 0, 0);
    });
}
