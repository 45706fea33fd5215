#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// An element of a user's list with its edge.
struct ListedElement
{
    QString symbol;
    QString name; ///< "Fe-K", with the edge as it was written; no two of a list alike
    int atomicNo = 0;
    int edgeNo = 0;      ///< as edgeEnergy() counts
    double energy = 0.0; ///< of the edge [eV]; 0 for one that the tables don't have
};

/// The elements of a list such as "Fe, Cu-K Pb-L3", which blanks and commas part; without an edge
/// the K edge is meant. What names no element is left out. Each fault of the list is a text for the
/// log, with the word that it is about.
QVector<ListedElement> readElementList(const QString& text, QStringList& faults);

/// Puts them in the order of their atomic numbers; those of one element keep their order.
void sortByAtomicNumber(QVector<ListedElement>& listed);

/// The word means the element: its name, or its symbol, with or without the edge.
bool isCalled(const ListedElement& element, const QString& word);
