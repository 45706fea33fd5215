#include "walk/ExplainPosition.h"

#include "common/Constants.h"
#include "common/FieldText.h"
#include "common/TwoPointLine.h"
#include "image/EnergyOrder.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Rows of cells, written with each column as wide as its longest cell.
class Columns
{
public:
    void append(const QStringList& row) { rows_.append(row); }

    /// Named values, one a line, the values below each other.
    QString namedText() const
    {
        const QVector<int> widths = cellWidths();
        QString text;
        for (const QStringList& row : rows_)
            text +=
                QStringLiteral("# %1 : %2\n").arg(row.at(0).leftJustified(widths.at(0)), row.at(1));
        return text;
    }

    /// A table, of which the first row heads the others.
    QString tableText() const
    {
        const QVector<int> widths = cellWidths();
        QString text;
        for (const QStringList& row : rows_) {
            text += text.isEmpty() ? QLatin1Char('#') : QLatin1Char(' ');
            for (int i = 0; i < row.size(); ++i)
                text += QStringLiteral("  ") + row.at(i).rightJustified(widths.at(i));
            text += QLatin1Char('\n');
        }
        return text;
    }

private:
    QVector<int> cellWidths() const
    {
        QVector<int> widths;
        for (const QStringList& row : rows_) {
            widths.resize(std::max(widths.size(), row.size()));
            for (int i = 0; i < row.size(); ++i)
                widths[i] = std::max(widths.at(i), row.at(i).size());
        }
        return widths;
    }

    QVector<QStringList> rows_;
};

QString rangeText(double from, double to)
{
    return QStringLiteral("%1 to %2 eV").arg(shortestText(from), shortestText(to));
}

QString rangeText(int centre, int half)
{
    const qint64 reach = std::abs(qint64(half));
    return QStringLiteral("%1 to %2").arg(centre - reach).arg(centre + reach);
}

QString heading(const QString& text)
{
    return QStringLiteral("#\n# ") + text + QLatin1Char('\n');
}

/// Counts of both stacks at a position, and what is taken off them before the absorption is formed.
class CountsAt
{
public:
    CountsAt(const WalkSource& source, int x, int y)
        : source_(source)
        , block_(source.block)
        , x_(x)
        , y_(y)
        , order_(energyOrder(source.i0))
    {
        if (block_.dark)
            darkPerMs_ = blockSum(*block_.dark) / block_.darkExposure;
    }

    double i1(int image) const { return blockSum(*source_.i1.at(image)); }
    double i1Dark(int image) const
    {
        const double level = block_.i1DarkAreaOn ? block_.i1DarkAvg.value(image, 0.0) : 0.0;
        return level * block_.blockPixels() + darkPerMs_ * block_.i1Exposure;
    }

    /// What stands for I0: total I0, the number of pixels, or counts at the I1 image's energy.
    double i0(int image) const
    {
        if (block_.totalI0Loaded)
            return block_.totalI0.y(image);
        if (!block_.useI0)
            return block_.blockPixels();
        return stackBlockSum(source_.i0, order_, source_.i1.at(image)->energy, x_, y_, block_.halfX,
                             block_.halfY);
    }
    double i0Dark(int image) const
    {
        if (!block_.readsI0())
            return 0.0;
        const double level = block_.i0DarkAreaOn ? i0Level(source_.i1.at(image)->energy) : 0.0;
        return level + darkPerMs_ * block_.i0Exposure;
    }

private:
    double blockSum(const TiffData& image) const
    {
        return image.blockSum(x_, y_, block_.halfX, block_.halfY);
    }

    /// Level of the dark area, interpolated as the counts are.
    double i0Level(double E) const
    {
        const auto level = [this](int image) {
            return block_.i0DarkAvg.value(image, 0.0) * block_.blockPixels();
        };
        const TiffStack& i0 = source_.i0;
        if (i0.size() < 2)
            return i0.isEmpty() ? 0.0 : level(0);
        const ImagePair pair = imagesAround(i0, order_, E);
        return twoPointLine(i0.at(pair.first)->energy, level(pair.first),
                            i0.at(pair.second)->energy, level(pair.second), E);
    }

    const WalkSource& source_;
    const BlockConditions& block_;
    const int x_;
    const int y_;
    const EnergyOrder order_;
    double darkPerMs_ = 0.0;
};

QString i0Words(const WalkSource& source)
{
    if (source.block.totalI0Loaded)
        return QStringLiteral("point by point of the total I0");
    if (!source.block.useI0)
        return QStringLiteral("not used: the pixels of the block stand in its place");
    if (source.i0.isEmpty())
        return QStringLiteral("no images: 1 stands in its place");
    return source.i0.size() == 1
               ? QStringLiteral("one image")
               : QStringLiteral("%1 images, interpolated in energy").arg(source.i0.size());
}

QString blockText(const WalkSource& source, int x, int y)
{
    const BlockConditions& block = source.block;
    Columns values;
    values.append({QStringLiteral("position x y [pixels]"), QStringLiteral("%1 %2").arg(x).arg(y)});
    values.append({QStringLiteral("image [pixels]"),
                   QStringLiteral("%1 x %2").arg(block.imageWidth).arg(block.imageHeight)});
    values.append({QStringLiteral("block columns"), rangeText(x, block.halfX)});
    values.append({QStringLiteral("block rows"), rangeText(y, block.halfY)});
    values.append({QStringLiteral("pixels of the block"), shortestText(block.blockPixels())});
    const CommonArea area = source.commonArea();
    if (area.isMoved())
        values.append({QStringLiteral("images are moved"),
                       area.isLeftBy(x, y, block.halfX, block.halfY)
                           ? QStringLiteral("and the block reaches out of some of them")
                           : QStringLiteral("and the block lies within each of them")});
    values.append({QStringLiteral("I0"), i0Words(source)});
    values.append(
        {QStringLiteral("mu"),
         block.fluorescence
             ? QStringLiteral("I1 / I0, dark taken off both")
             : QStringLiteral(
                   "ln(I0 / I1), dark taken off both; 1 unless their product is above 0")});
    values.append({QStringLiteral("energy offset [eV]"), shortestText(source.shifts.at(x, y))});
    return values.namedText();
}

/// The bend of a line, or that it has none.
QString bendText(const VictLine& line)
{
    if (!line.corrected)
        return QStringLiteral("none");
    QStringList numbers;
    if (line.corrMode == 2) {
        for (const QPointF& p : line.controlPoints)
            numbers << QStringLiteral("(%1, %2)").arg(shortestText(p.x()), shortestText(p.y()));
    } else {
        for (const double c : line.cubic)
            numbers << shortestText(c);
    }
    return QStringLiteral("%1 %2 eV, %3: %4")
        .arg(line.correctedAbove ? QStringLiteral("above") : QStringLiteral("below"),
             shortestText(line.correctedAbove ? line.endE : line.startE),
             line.corrMode == 2 ? QStringLiteral("Bezier points")
                                : QStringLiteral("a E^3 + b E^2 + c E + d, a to d"),
             numbers.join(QLatin1Char(' ')));
}

QString lineText(const QString& name, const VictLine& line)
{
    const bool isStraight = line.mode != VictLine::Victoreen;
    Columns values;
    values.append({QStringLiteral("range"), rangeText(line.startE, line.endE)});
    values.append({QStringLiteral("points"), QString::number(line.count)});
    values.append(
        {QStringLiteral("form"),
         isStraight
             ? QStringLiteral("c0 + slope E")
             : QStringLiteral("c0 + c1 L^3 + c2 L^4, L = %1 / E").arg(shortestText(hcEvAngstrom))});
    values.append({QStringLiteral("c0"), shortestText(line.c0)});
    if (isStraight) {
        values.append({QStringLiteral("slope"), shortestText(line.slope)});
    } else {
        values.append({QStringLiteral("c1"), shortestText(line.c1)});
        values.append({QStringLiteral("c2"), shortestText(line.c2)});
    }
    values.append({QStringLiteral("rms"), shortestText(line.rms)});
    values.append({QStringLiteral("bend"), bendText(line)});
    return heading(line.ok ? name : name + QStringLiteral(", which could not be fitted")) +
           values.namedText();
}

QString edgeText(const XafsSpectrum& s)
{
    const SuggestElm& elm = s.sElm;
    Columns values;
    values.append({QStringLiteral("sought"),
                   elm.use ? rangeText(elm.edgeE + elm.preEnd, elm.edgeE + elm.postStart)
                           : QStringLiteral("in the whole scan")});
    values.append({QStringLiteral("steepest rise [eV]"), shortestText(s.x(s.edgeIndex))});
    values.append({QStringLiteral("midx [eV]"), shortestText(s.midx)});
    values.append({QStringLiteral("midx less offset [eV]"), shortestText(s.midx - s.eOffset)});
    values.append({QStringLiteral("dMut"), shortestText(s.dMut)});
    values.append({QStringLiteral("outcome"), outcomeText(s.outcome)});
    return heading(QStringLiteral("Edge")) + values.namedText();
}

/// What a kernel makes of the position, worked out as far as that kernel needs it.
QString kernelText(const NamedKernel& named, const WalkSource& source, int x, int y)
{
    const std::unique_ptr<WalkKernel> kernel = named.second->forWorker();
    const XafsSpectrum spectrum = source.spectrum(x, y, kernel->stage());
    TileResult result(kernel->values(), 1);
    kernel->plain({source, x, y, spectrum}, 0, result);
    const QStringList names = kernel->valueNames();
    Columns values;
    values.append({QStringLiteral("outcome"),
                   outcomeText(result.outcomes.front()) +
                       (result.gapHeld.front() != 0 ? QStringLiteral(" (gap held)") : QString())});
    for (int i = 0; i < kernel->values(); ++i)
        values.append(
            {names.value(i, QStringLiteral("value %1").arg(i)), shortestText(result.value(i, 0))});
    return heading(named.first) + values.namedText();
}

QString tableText(const WalkSource& source, const XafsSpectrum& s, int x, int y)
{
    const CountsAt counts(source, x, y);
    const Spectrum& curve = s.doubleNormalizedPreBase;
    Columns table;
    table.append({QStringLiteral("image"), QStringLiteral("E[eV]"), QStringLiteral("E-offset[eV]"),
                  QStringLiteral("I1sum"), QStringLiteral("I1dark"), QStringLiteral("I0sum"),
                  QStringLiteral("I0dark"), QStringLiteral("mu"), QStringLiteral("pre"),
                  QStringLiteral("post"), QStringLiteral("(mu-pre)/(post-pre)")});
    for (int i = 0; i < s.size(); ++i) {
        const double E = s.x(i);
        QStringList row{QString::number(i)};
        for (const double v : {E, E - s.eOffset, counts.i1(i), counts.i1Dark(i), counts.i0(i),
                               counts.i0Dark(i), s.y(i), s.preAt(E), s.postAt(E)})
            row << shortestText(v);
        row << (i < curve.size() ? shortestText(curve.y(i)) : QStringLiteral("-"));
        table.append(row);
    }
    return QStringLiteral("#\n") + table.tableText();
}

} // namespace

QString explainPosition(const WalkSource& source, int x, int y,
                        const std::vector<NamedKernel>& kernels)
{
    QString text = blockText(source, x, y);
    const XafsSpectrum s = source.spectrum(x, y, Stage::Shown);
    if (s.isEmpty()) {
        const QString why =
            source.i1.isEmpty()
                ? QStringLiteral("There are no I1 images: no spectrum")
                : QStringLiteral("The position lies outside the image: no spectrum");
        return text + heading(why);
    }
    text += lineText(QStringLiteral("Pre-edge line"), s.pre);
    text += lineText(QStringLiteral("Post-edge line"), s.post);
    text += edgeText(s);
    for (const NamedKernel& kernel : kernels)
        text += kernelText(kernel, source, x, y);
    return text + tableText(source, s, x, y);
}
