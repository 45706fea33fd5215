// How a value of a map came to be.
#include "conduct/AnalysisConductor.h"

#include "analysis/Analyzer.h"
#include "common/Fault.h"
#include "common/SafeFile.h"
#include "conduct/SourceReader.h"
#include "maps/MapBook.h"
#include "maps/MapChoice.h"

/// Images that were loaded again, or cleared, must not stay in memory for their maps' sake.
void AnalysisConductor::letGoOfOthersImages()
{
    const WalkSource now = parts_.reader.source();
    for (Made& made : made_) {
        if (!made.source)
            continue;
        const bool same = !now.i1.isEmpty() && !made.source->i1.isEmpty() &&
                          now.i1.first()->jobNumber == made.source->i1.first()->jobNumber;
        if (!same)
            made = Made();
    }
}

QString AnalysisConductor::explanation(int x, int y, QString& why) const
{
    const std::optional<MapKey> key = chosenMap(parts_.panel.mapChoice(), parts_.book);
    if (!key) {
        why = QStringLiteral("no result map is chosen");
        return {};
    }
    for (const Made& made : made_) {
        if (made.source && made.keys.contains(*key))
            return explainPosition(*made.source, x, y, made.kernels);
    }
    why = QStringLiteral("the images that %1 was made of are not loaded any more")
              .arg(parts_.book.fullLabel(*key));
    return {};
}

void AnalysisConductor::explain(int x, int y, const QString& file) const
{
    QString why;
    const QString text = explanation(x, y, why);
    if (text.isEmpty())
        fault(QStringLiteral("Position %1, %2 not explained: %3").arg(x).arg(y).arg(why));
    else
        writeFile(file, text.toUtf8());
}
