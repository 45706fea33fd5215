#pragma once

#include "DemoFiles.h"
#include "PlainAnalysis.h"

/// The normalised references as they stand in an experiment's folder.
inline QVector<plain::Curve> savedReferences(const QString& folder)
{
    QVector<plain::Curve> references;
    for (int s = 0; s < speciesCount; ++s) {
        references.append(
            plain::normalised(plain::readReference(demoFiles::referenceFile(folder, s))));
    }
    return references;
}

/// The plain analysis of an experiment's files.
inline plain::Maps plainMaps(const QString& folder, const ExperimentConditions& conditions,
                             ImageFormat format)
{
    const ScanEnergies scan = scanEnergies(conditions.energies);
    return plain::analyse(folder, imageSuffix(format), scan.first, scan.step,
                          darkCornerOf(conditions.size), conditions.halfWidth,
                          savedReferences(folder));
}
