#pragma once

#include "analysis/lcf/LcfFit.h"
#include "maps/AnalyzeCond.h"
#include "walk/WalkSource.h"

/// All that the maps of a walk depend on, as a value: kept from the start of a walk, it tells later
/// whether another walk would make other maps. It holds no images, only what tells them apart.
/// Whatever plays no part, such as I0 images that are not used, is left out.
class AnalysisConditions
{
public:
    /// Those of no walk.
    AnalysisConditions() = default;
    AnalysisConditions(const WalkSource& source, const AnalyzeCond& area, const LcfRequest& fit);

    bool operator==(const AnalysisConditions& other) const;
    bool operator!=(const AnalysisConditions& other) const { return !(*this == other); }

private:
    /// What tells an image from another.
    struct Image
    {
        QString file;
        int job; ///< that loaded it
        double energy;
        QPoint shift;

        bool operator==(const Image& other) const;
    };
    /// What a fit reads of a reference.
    struct Reference
    {
        int row;
        double shift; ///< dE [eV]
        QVector<QPointF> points;
        QVector<QPointF> curve; ///< normalised

        bool operator==(const Reference& other) const;
    };

    static QVector<Image> imagesOf(const TiffStack& stack);
    void leaveOutIdleDark();
    bool hasSameSpectra(const AnalysisConditions& other) const;
    bool hasSameFit(const AnalysisConditions& other) const;

    AnalyzeCond area_;
    QVector<Image> i1_;
    QVector<Image> i0_;
    BlockConditions block_;
    ShiftField shifts_;
    SuggestElm elm_;
    int background_ = 0;
    QVector<Reference> references_;
    ReadRange range_;
    bool holdGap_ = false;
    bool ownWeights_ = false;
};
