#include "spectrum/ElementList.h"

#include "spectrum/ElementTable.h"

#include <algorithm>

namespace {

/// Parts of a word such as "Pb-L3"; a dash in front parts nothing.
struct Word
{
    explicit Word(const QString& text)
    {
        const int dash = text.indexOf(QLatin1Char('-'));
        symbol = dash > 0 ? text.left(dash) : text;
        edge = dash > 0 ? text.mid(dash + 1).toUpper() : QString();
    }

    QString edgeOrK() const { return edge.isEmpty() ? QStringLiteral("K") : edge; }
    bool knowsEdge() const { return edgeNo(edge) > 0 || edgeOrK() == QLatin1String("K"); }

    QString symbol;
    QString edge;
};

ListedElement elementOf(const Word& word)
{
    ListedElement e;
    e.symbol = word.symbol;
    e.atomicNo = atomicNumber(word.symbol);
    e.edgeNo = edgeNo(word.edgeOrK());
    e.energy = edgeEnergy(e.atomicNo, e.edgeNo);
    e.name =
        e.symbol + QLatin1Char('-') + (word.knowsEdge() ? word.edgeOrK() : QStringLiteral("K"));
    return e;
}

/// Two rows of an edge, as for two regions of interest, must not write the same files.
QString uniqueName(const QString& name, const QVector<ListedElement>& others)
{
    const auto isTaken = [&others](const QString& wanted) {
        return std::any_of(others.begin(), others.end(),
                           [&](const ListedElement& e) { return e.name == wanted; });
    };
    QString unique = name;
    for (int i = 2; isTaken(unique); ++i)
        unique = QStringLiteral("%1_%2").arg(name).arg(i);
    return unique;
}

} // namespace

QVector<ListedElement> readElementList(const QString& text, QStringList& faults)
{
    QString blanks = text;
    blanks.replace(QLatin1Char(','), QLatin1Char(' '));
    QVector<ListedElement> listed;
    for (const QString& item : blanks.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const Word word(item);
        ListedElement element = elementOf(word);
        if (element.atomicNo < 1) {
            faults << QStringLiteral("Unknown element \"%1\" in the list of target elements")
                          .arg(item);
            continue;
        }
        if (!word.knowsEdge())
            faults << QStringLiteral("Unknown edge of target element \"%1\": the K edge is taken")
                          .arg(item);
        else if (element.energy <= 0.0)
            faults << QStringLiteral("No energy is known for the edge of target element \"%1\"")
                          .arg(item);
        element.name = uniqueName(element.name, listed);
        listed.append(element);
    }
    return listed;
}

void sortByAtomicNumber(QVector<ListedElement>& listed)
{
    std::stable_sort(
        listed.begin(), listed.end(),
        [](const ListedElement& a, const ListedElement& b) { return a.atomicNo < b.atomicNo; });
}

bool isCalled(const ListedElement& element, const QString& text)
{
    const Word word(text);
    if (element.name == text)
        return true;
    return element.symbol == word.symbol &&
           (word.edge.isEmpty() || (word.knowsEdge() && element.edgeNo == edgeNo(word.edge)));
}
