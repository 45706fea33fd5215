#include "maps/MapWords.h"

#include <QCoreApplication>

#include <iterator>

namespace {

constexpr char context[] = "MapWords";

struct Words
{
    MapKind kind;
    const char* title; ///< %1 is the row
    const char* axis;
};

// clang-format off
constexpr Words table[] = {
    {MapKind::ShiftMap, QT_TRANSLATE_NOOP("MapWords", "Energy shift map"), QT_TRANSLATE_NOOP("MapWords", "Shift [eV]")},
    {MapKind::LcfJump, QT_TRANSLATE_NOOP("MapWords", "dMut of %1"), QT_TRANSLATE_NOOP("MapWords", "dMut")},
    {MapKind::LcfWeight, QT_TRANSLATE_NOOP("MapWords", "Ratio of %1"), QT_TRANSLATE_NOOP("MapWords", "Ratio")},
    {MapKind::Zansa, QT_TRANSLATE_NOOP("MapWords", "Residual"), QT_TRANSLATE_NOOP("MapWords", "Residual")},
    {MapKind::DEdge, QT_TRANSLATE_NOOP("MapWords", "Shift of the edge"), QT_TRANSLATE_NOOP("MapWords", "Shift of the edge [eV]")},
    {MapKind::Outcomes, QT_TRANSLATE_NOOP("MapWords", "Outcomes"), QT_TRANSLATE_NOOP("MapWords", "Outcome")},
    {MapKind::ResidualJump, QT_TRANSLATE_NOOP("MapWords", "dMut of the lines"), QT_TRANSLATE_NOOP("MapWords", "dMut")},
    {MapKind::ResidualRest, QT_TRANSLATE_NOOP("MapWords", "Residual absorption"), QT_TRANSLATE_NOOP("MapWords", "mu t")},
    {MapKind::ResidualRatio, QT_TRANSLATE_NOOP("MapWords", "Share of the residual absorption"), QT_TRANSLATE_NOOP("MapWords", "Ratio")},
    {MapKind::ElemJump, QT_TRANSLATE_NOOP("MapWords", "dMut of %1"), QT_TRANSLATE_NOOP("MapWords", "dMut")},
    {MapKind::ElemJumpRatio, QT_TRANSLATE_NOOP("MapWords", "N. dMut of %1"), QT_TRANSLATE_NOOP("MapWords", "Ratio")},
    {MapKind::ElemMutPlus, QT_TRANSLATE_NOOP("MapWords", "Mut+ of %1"), QT_TRANSLATE_NOOP("MapWords", "mu t")},
    {MapKind::ElemMutMinus, QT_TRANSLATE_NOOP("MapWords", "Mut- of %1"), QT_TRANSLATE_NOOP("MapWords", "mu t")},
    {MapKind::ElemDE, QT_TRANSLATE_NOOP("MapWords", "dE of %1"), QT_TRANSLATE_NOOP("MapWords", "dE [eV]")},
    {MapKind::ElemRoi, QT_TRANSLATE_NOOP("MapWords", "ROI of %1"), QT_TRANSLATE_NOOP("MapWords", "mu t")},
    {MapKind::ElemRoiRatio, QT_TRANSLATE_NOOP("MapWords", "N.ROI of %1"), QT_TRANSLATE_NOOP("MapWords", "Ratio")},
    {MapKind::ElemsCor, QT_TRANSLATE_NOOP("MapWords", "Correlation"), QT_TRANSLATE_NOOP("MapWords", "Correlation")},
    {MapKind::ElemsCorTh, QT_TRANSLATE_NOOP("MapWords", "Cor. Th"), QT_TRANSLATE_NOOP("MapWords", "Correlation")},
    {MapKind::SumUp, QT_TRANSLATE_NOOP("MapWords", "Sum of images"), QT_TRANSLATE_NOOP("MapWords", "Counts per pixel")},
    {MapKind::Processed, QT_TRANSLATE_NOOP("MapWords", "Processed map"), QT_TRANSLATE_NOOP("MapWords", "Value")},
    {MapKind::Operand1, QT_TRANSLATE_NOOP("MapWords", "Map1"), QT_TRANSLATE_NOOP("MapWords", "Value")},
    {MapKind::Operand2, QT_TRANSLATE_NOOP("MapWords", "Map2"), QT_TRANSLATE_NOOP("MapWords", "Value")},
};
// clang-format on
static_assert(std::size(table) == std::size_t(mapKinds));

constexpr bool standsInOrder()
{
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (std::size_t(table[i].kind) != i)
            return false;
    }
    return true;
}
static_assert(standsInOrder(), "a kind's words are found by its number");

} // namespace

QString mapTitle(MapKind kind, const QString& row)
{
    const Words& words = table[std::size_t(kind)];
    const QString title = QCoreApplication::translate(context, words.title);
    return title.contains(QLatin1String("%1")) ? title.arg(row) : title;
}

QString mapAxis(MapKind kind)
{
    return QCoreApplication::translate(context, table[std::size_t(kind)].axis);
}
