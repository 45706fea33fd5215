#include "batch/CmdLine.h"

#include "common/TextItems.h"

CmdLine::CmdLine(const QString& text)
    : line(text)
    , simplified(text.simplified())
{
    simplified = simplified.left(simplified.indexOf(QLatin1Char('#')));
    if (simplified.isEmpty())
        return;
    const QString rest = nextItem(line, word);
    if (word.isEmpty())
        return;
    valid = true;
    isKeyword = word.startsWith(QLatin1Char(':'));
    args = splitItems(rest);
}
