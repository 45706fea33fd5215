#include "app/Body.h"

#include "common/FieldText.h"
#include "image/EnergyOrder.h"
#include "selection/SelectDataFiles.h"

#include <QDebug>
#include <QFileInfo>

namespace {

/// "9010 eV in name": an image in the words of log and tool tip.
QString imageText(const TiffData& image, const QString& name)
{
    return QStringLiteral("%1 eV in ").arg(energyText(image.energy)) + name;
}

} // namespace

/// The stack's name in log lines.
QString Body::stackName(const Stack& stack) const
{
    return &stack == &i1_ ? QStringLiteral("I1") : QStringLiteral("I0");
}

/// Gives the images of the stack their energies by its setup as it now stands.
void Body::applyEnergies(Stack& stack)
{
    const int shown = stack.data->images.indexOf(shownImage_);
    stack.data->setEnergies(stack.row->applyEnergies());
    if (shown >= 0)
        shownImage_ = stack.data->images.at(shown);
    tellEnergyDoubts(stack);
    refreshCursor();
}

/// Tells what is wrong with the stack's energies: a line each, and the marks of its row.
void Body::tellEnergyDoubts(Stack& stack)
{
    const QString complaint = stack.row->takeNameComplaint();
    if (!complaint.isEmpty())
        qDebug().noquote() << stackName(stack) << "energies by name:" << complaint;
    QStringList marks;
    const auto tell = [&](const ImagePair& pair, const char* line, const QString& mark) {
        if (pair.first < 0)
            return;
        const TiffData& first = *stack.data->images.at(pair.first);
        const TiffData& second = *stack.data->images.at(pair.second);
        qDebug().noquote() << stackName(stack) << line << imageText(first, first.fileName) << "and"
                           << imageText(second, second.fileName);
        marks.append(mark.arg(energyText(first.energy), QFileInfo(first.fileName).fileName(),
                              energyText(second.energy), QFileInfo(second.fileName).fileName()));
    };
    tell(fallingPair(stack.data->images), "energies do not rise from file to file:",
         tr("Energies do not rise: %1 eV (%2), then %3 eV (%4)"));
    tell(equalPair(stack.data->images), "has two images of one energy:",
         tr("Two images of one energy: %1 eV (%2) and %3 eV (%4)"));
    stack.row->setMark(marks.join(QLatin1Char('\n')));
}
