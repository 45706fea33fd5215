#include "analysis/lcf/LcfFit.h"

#include <algorithm>

bool LcfReferenceData::hasPointIn(const ReadRange& range) const
{
    for (int i = 0; i < spectrum.size(); ++i) {
        const double E = spectrum.x(i);
        if (E >= range.from && E <= range.to)
            return true;
    }
    return false;
}

QVector<int> LcfRequest::fittedRows() const
{
    const ReadRange range{std::max(rangeStart, scan.from), std::min(rangeEnd, scan.to)};
    QVector<int> taken;
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).active && rows.at(i).hasPointIn(range))
            taken.append(i);
    }
    return taken;
}

QVector<int> LcfRequest::leftOutRows() const
{
    const QVector<int> taken = fittedRows();
    QVector<int> left;
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).active && !taken.contains(i))
            left.append(i);
    }
    return left;
}

ReadRange LcfRequest::commonRange() const
{
    ReadRange range{rangeStart, rangeEnd};
    for (const int i : fittedRows()) {
        const XafsSpectrum& s = rows.at(i).spectrum;
        range.from = std::max(range.from, s.x(0));
        range.to = std::min(range.to, s.x(s.size() - 1));
    }
    return range;
}
