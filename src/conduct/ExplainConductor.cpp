#include "conduct/ExplainConductor.h"

#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/SafeFile.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/TextWindow.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "walk/ExplainPosition.h"

#include <QMenu>

namespace {

bool sameImages(const TiffStack& a, const TiffStack& b)
{
    if (a.isEmpty() || b.isEmpty())
        return a.isEmpty() && b.isEmpty();
    return a.first()->jobNumber == b.first()->jobNumber;
}

QString notExplained(int x, int y, const QString& why)
{
    return QStringLiteral("Position %1, %2 not explained: %3").arg(x).arg(y).arg(why);
}

} // namespace

ExplainConductor::ExplainConductor(const MapBook& book, const SourceReader& reader, ImageBox& box,
                                   StackConductor& stacks, const ViewConductor& view,
                                   QObject* parent)
    : QObject(parent)
    , book_(book)
    , reader_(reader)
    , box_(box)
    , view_(view)
{
    connect(&book, &MapBook::changed, this, &ExplainConductor::mapChanges);
    connect(&stacks, &StackConductor::loaded, this, &ExplainConductor::letGoOfOthersImages);
    connect(&stacks, &StackConductor::cleared, this, &ExplainConductor::letGoOfOthersImages);
    connect(box.area(), &ImgDispA::menuAsked, this, &ExplainConductor::openMenu);
}

ExplainConductor::~ExplainConductor()
{
    delete window_;
}

void ExplainConductor::bindCommands(CommandBook& book)
{
    book.action(ExCmdExplainPosition,
                [this](const CmdLine& c) { save(intArg(c, 0), intArg(c, 1), c.arg(2)); });
}

void ExplainConductor::mapChanges(const MapKey& key)
{
    if (const SharedSource source = book_.originOf(key).source.lock())
        sources_[key] = source;
    else
        sources_.erase(key);
}

void ExplainConductor::letGoOfOthersImages()
{
    const WalkSource now = reader_.source();
    for (auto at = sources_.begin(); at != sources_.end();) {
        const WalkSource& then = *at->second;
        // Without I0 a walk reads none.
        const bool same =
            sameImages(then.i1, now.i1) && (then.i0.isEmpty() || sameImages(then.i0, now.i0));
        at = same ? std::next(at) : sources_.erase(at);
    }
}

QString ExplainConductor::explanation(int x, int y, QString& why) const
{
    const std::optional<MapKey> key = view_.isMapChosen() ? view_.shownKey() : view_.chosenResult();
    if (!key) {
        why = QStringLiteral("no map is chosen");
        return {};
    }
    const auto source = sources_.find(*key);
    if (source != sources_.end())
        return explainPosition(*source->second, x, y, book_.originOf(*key).kernels);
    const Analyzed2DRes* const map = book_.find(*key);
    why = !map || !map->whyNotSaved(false).isEmpty()
              ? QStringLiteral("%1 holds no values")
              : QStringLiteral("%1 was not made by a walk over the images that are loaded");
    why = why.arg(book_.fullLabel(*key));
    return {};
}

void ExplainConductor::save(int x, int y, const QString& file) const
{
    QString why;
    const QString text = explanation(x, y, why);
    if (text.isEmpty())
        fault(notExplained(x, y, why));
    else
        writeFile(file, text.toUtf8());
}

void ExplainConductor::show(int x, int y)
{
    QString why;
    const QString text = explanation(x, y, why);
    if (text.isEmpty()) {
        fault(notExplained(x, y, why));
        return;
    }
    if (!window_)
        window_ = new TextWindow(QStringLiteral("Explanation"), &box_);
    window_->showText(tr("Position %1, %2").arg(x).arg(y), text);
}

/// The menu of the map at a pixel of it.
void ExplainConductor::openMenu(const QPoint& place, int x, int y)
{
    if (!view_.isMapFilled())
        return;
    auto* const menu = new QMenu(&box_);
    menu->setObjectName(QStringLiteral("MapMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Explain (%1, %2)...").arg(x).arg(y), this, [this, x, y] { show(x, y); });
    menu->popup(place);
}
