#pragma once

#include "image/TiffData.h"

#include <QPoint>
#include <QSize>
#include <QVector>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

/// What a dark check goes by.
struct DarkCheckSettings
{
    double threshold = 20000.0;    ///< counts at or below which a pixel is dark
    double histogramMax = 60000.0; ///< upper end of the histogram, which begins at 0 [counts]
    int bins = 100;                ///< of the histogram, and one more for what reaches its end

    /// Why there can be no check, naming the field, for a log line; empty when there can.
    QString fault() const;
};

/// What a dark check found of a stack.
struct DarkCheckResult
{
    std::vector<quint64> counts; ///< pixels of all images by bin, bins + 1 of them
    QSize size;                  ///< of the first image
    /// Pixels that are dark in every image, row by row, in the coordinates of the detector: those
    /// of the first image and its place there.
    QVector<QPoint> points;
    QVector<qint64> lengths; ///< pixels that were dark up to and with each image
};

/// Looks through all pixels of all images, each with its shift: what a shift leaves free counts as
/// 0. A pixel that is no number is dark, and is in no bin; one below 0 is in the first. The images
/// may differ in size.
///
/// Works on so many threads, and returns when they are through. `done` is told the share that is
/// done [%], by any of them and one at a time. None once `stop` is set; it is heard within a few
/// rows of an image. There is at least one image, and the settings have no fault.
std::optional<DarkCheckResult> checkDark(const TiffStack& images, const DarkCheckSettings& settings,
                                         int threads, const std::atomic<bool>& stop,
                                         const std::function<void(double percent)>& done);
