#pragma once

#include "selection/EnergyOfFile.h"
#include "selection/FolderContents.h"

/// Guesses what each series is: by words in its name, or else in its folder's; where these tell
/// nothing, the two largest series of equal length are I1 and I0.
void guessUses(QVector<ImageSeries>& series);

/// The folder's name says that it holds reference spectra.
bool namesReferences(const QString& folder);

/// The rule by which the names of all stacks tell their energies: those of each stack rise, from
/// 100 to 200000 eV. A rule without a pattern when there is none.
EnergyRule energiesInNames(const QVector<QStringList>& stacks);

/// Energies [eV] that a rule gives the files of a stack.
QVector<double> energiesOf(const EnergyRule& rule, const QStringList& files);

/// What speaks against loading two series together.
struct PairDoubt
{
    Q_DECLARE_TR_FUNCTIONS(PairDoubt)
public:
    QString text; ///< empty when nothing does
    bool prevents = false;
};

PairDoubt doubtOf(const ImageSeries& i1, const ImageSeries& i0);
