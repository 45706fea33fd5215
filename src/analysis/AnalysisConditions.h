#pragma once

#include "maps/AnalyzeCond.h"
#include "walk/WalkSource.h"

/// What an analysis goes by besides the spectra, as a value.
struct SectionConditions
{
    QString analysis;
    QVector<double> numbers;
    QVector<QVector<QPointF>> curves;

    bool operator==(const SectionConditions& other) const
    {
        return analysis == other.analysis && numbers == other.numbers && curves == other.curves;
    }
};

/// All that the maps of a walk depend on, as a value: kept from the start of a walk, it tells later
/// whether another walk would make other maps. It holds no images, only what tells them apart.
/// Whatever plays no part, such as I0 images that are not used, is left out.
class AnalysisConditions
{
public:
    /// Those of no walk.
    AnalysisConditions() = default;
    AnalysisConditions(const WalkSource& source, const AnalyzeCond& area,
                       const QVector<SectionConditions>& analyses);

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
    static QVector<Image> imagesOf(const TiffStack& stack);
    void leaveOutIdleDark();
    bool hasSameSpectra(const AnalysisConditions& other) const;

    AnalyzeCond area_;
    QVector<Image> i1_;
    QVector<Image> i0_;
    BlockConditions block_;
    ShiftField shifts_;
    SuggestElm elm_;
    int background_ = 0;
    QVector<SectionConditions> analyses_;
};
