#pragma once

#include "common/InstructionSet.h"
#include "maps/Analyzed2DRes.h"
#include "support/RandomStack.h"
#include "walk/WalkEngine.h"

#include <cmath>
#include <functional>

/// What a sample absorbs at an energy [eV] and a pixel.
using PlantedMu = std::function<double(double E, int x, int y)>;

/// Images of a sample before an even beam, without a noise of their own.
inline std::shared_ptr<WalkSource> plantedSource(QSize size, const QVector<double>& energies,
                                                 const PlantedMu& mu)
{
    auto source = std::make_shared<WalkSource>();
    const auto add = [&](TiffStack& stack, double E, const auto& counts) {
        addImage(stack, makeImage(size.width(), size.height(), TiffData::Floats, counts), E);
    };
    for (const double E : energies) {
        add(source->i1, E, [&](int x, int y) { return 40000.0 * std::exp(-mu(E, x, y)); });
        add(source->i0, E, [](int, int) { return 40000.0; });
    }
    source->block.imageWidth = size.width();
    source->block.imageHeight = size.height();
    source->block.useI0 = true;
    return source;
}

/// An analysis over a part of the images, into its maps.
struct PlantedWalk
{
    SharedSource source;
    QRectF part;
    std::shared_ptr<const WalkKernel> kernel;
    std::function<std::unique_ptr<WalkSink>()> sink;
    QVector<Analyzed2DRes*> maps;

    AnalyzeCond prepared() const
    {
        const BlockConditions& block = source->block;
        const AnalyzeCond area(block.imageWidth, block.imageHeight, block.halfX, block.halfY, part,
                               -1, -1);
        for (Analyzed2DRes* map : maps)
            map->prepare(area);
        return area;
    }

    WalkShares run(int lanes = tileLanes) const
    {
        WalkOrder order{source, prepared(), {}};
        order.jobs.push_back({kernel->forWorker(), sink()});
        return runWalk(std::move(order), 2, lanes);
    }

    /// Position by position, by plain forms alone.
    void runPlainly() const
    {
        WalkRuns runs(prepared());
        const auto own = kernel->forWorker();
        const auto taker = sink();
        while (!runs.atEnd()) {
            const WalkRun run = runs.take(1);
            const int x = run.first.cx;
            const int y = run.first.cy;
            TileResult result(own->values(), 1);
            own->plain({*source, x, y, source->spectrum(x, y, own->stage())}, 0, result);
            taker->take(run, result);
        }
    }

    QByteArray bytes() const
    {
        QByteArray all;
        for (const Analyzed2DRes* map : maps) {
            const int pixels = source->block.imageWidth * source->block.imageHeight;
            all.append(reinterpret_cast<const char*>(map->data()), pixels * int(sizeof(double)));
            all.append(QByteArray::number(map->min, 'g', 17) +
                       QByteArray::number(map->max, 'g', 17));
        }
        return all;
    }

    /// How a walk by lanes differs from the plain one; empty when its bytes are the same and most
    /// positions went by lanes.
    QString differenceOfLanes(int mostPlainPercent = 10) const
    {
        runPlainly();
        const QByteArray plain = bytes();
        for (const InstructionSet set : instructionSets()) {
            useInstructionSet(set);
            for (const int lanes : {1, 5, tileLanes}) {
                const WalkShares shares = run(lanes);
                if (bytes() != plain ||
                    100 * shares.plainPositions > mostPlainPercent * shares.positions)
                    return QStringLiteral("%1, %2 lanes, %3 of %4 plain")
                        .arg(nameOf(set))
                        .arg(lanes)
                        .arg(shares.plainPositions)
                        .arg(shares.positions);
            }
        }
        return {};
    }
};
