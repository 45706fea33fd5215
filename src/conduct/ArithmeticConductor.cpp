#include "conduct/ArithmeticConductor.h"

#include "analysis/arithmetic/ArithmeticSection.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "calibration/ShiftMapFile.h"
#include "common/Fault.h"
#include "conduct/CalibConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/ViewConductor.h"

namespace {

constexpr MapKey processedKey{MapKind::Processed, 0};

constexpr MapKey operandKey(int operand)
{
    return {operand == 1 ? MapKind::Operand1 : MapKind::Operand2, 0};
}

} // namespace

ArithmeticConductor::ArithmeticConductor(const Parts& parts, ViewConductor& view,
                                         CalibConductor& calib, QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , view_(view)
    , calib_(calib)
{
    const ArithmeticSection* const section = &parts_.section;
    connect(section, &ArithmeticSection::captureAsked, this, &ArithmeticConductor::capture);
    connect(section, &ArithmeticSection::fileChosen, this, &ArithmeticConductor::load);
    connect(section, &ArithmeticSection::processAsked, this, &ArithmeticConductor::process);
    connect(&parts_.book, &MapBook::changed, this, [this](const MapKey& key) {
        if (key == operandKey(1) || key == operandKey(2))
            tellReadiness();
    });
    tellReadiness();
}

void ArithmeticConductor::bindCommands(CommandBook& book)
{
    book.action(ExCmdAnalyzerMap1Capture, [this](const CmdLine&) { capture(1); });
    book.action(ExCmdAnalyzerMap2Capture, [this](const CmdLine&) { capture(2); });
    book.action(ExCmdAnalyzerMap1Load, [this](const CmdLine& c) { load(1, c.arg(0)); });
    book.action(ExCmdAnalyzerMap2Load, [this](const CmdLine& c) { load(2, c.arg(0)); });
    book.action(ExCmdAnalyzerProcess, [this](const CmdLine& c) { processByNumber(c.arg(0)); });
    tellHistory(book.history());
}

/// What the section asks for, once it is done.
void ArithmeticConductor::tellHistory(History& history) const
{
    const ArithmeticSection* const section = &parts_.section;
    connect(section, &ArithmeticSection::captureAsked, &history, [&history](int operand) {
        history.add(operand == 1 ? ExCmdAnalyzerMap1Capture : ExCmdAnalyzerMap2Capture);
    });
    connect(section, &ArithmeticSection::fileChosen, &history,
            [&history](int operand, const QString& file) {
                history.add(operand == 1 ? ExCmdAnalyzerMap1Load : ExCmdAnalyzerMap2Load, {file});
            });
    connect(section, &ArithmeticSection::processAsked, &history,
            [&history](MapOperation operation) {
                history.add(ExCmdAnalyzerProcess, {QString::number(int(operation))});
            });
}

void ArithmeticConductor::capture(int operand)
{
    const std::optional<MapKey> key = view_.chosenResult();
    const Analyzed2DRes* const source = key ? parts_.book.find(*key) : nullptr;
    if (!source) {
        fault(QStringLiteral("Map %1 is not captured: no map is chosen").arg(operand));
        return;
    }
    if (!source->imgValid) {
        fault(QStringLiteral("Map %1 is not captured: %2 has no picture")
                  .arg(operand)
                  .arg(source->name));
        return;
    }
    // The operand itself may be the map that is chosen.
    if (!(*key == operandKey(operand)))
        take(operand, *source, parts_.book.originOf(*key), parts_.book.isComplete(*key));
    parts_.section.setOperandName(operand, source->name);
}

void ArithmeticConductor::load(int operand, const QString& file)
{
    // Apart from the operand, which a file that can not be read must not cost.
    Analyzed2DRes read(QLatin1String(traitsOf(operandKey(operand).kind).name));
    EMPHeader header;
    calib_.loadMap(file, read, header);
    if (!header.isValid)
        return;
    MapOrigin origin;
    origin.analysis = QStringLiteral("energy shift map file");
    take(operand, read, origin, true);
    parts_.section.setOperandName(operand, file);
}

void ArithmeticConductor::take(int operand, const Analyzed2DRes& source, const MapOrigin& origin,
                               bool whole)
{
    const MapKey key = operandKey(operand);
    parts_.book.begin(key, source.stepper, origin);
    Analyzed2DRes& map = parts_.book.at(key);
    map.copyFrom(&source);
    map.setDisplay(parts_.book.displayOf(key.kind));
    parts_.book.end(key, whole, origin.outcomes);
    view_.paintShownResult();
}

bool ArithmeticConductor::hasPicture(int operand) const
{
    const Analyzed2DRes* const map = parts_.book.find(operandKey(operand));
    return map && map->imgValid;
}

void ArithmeticConductor::tellReadiness()
{
    parts_.section.setReadiness(
        hasPicture(1) && hasPicture(2) ? QString() : tr("Both maps must hold a picture"));
}

/// Why there is nothing to process; empty, with the walk filled in, when there is.
QString ArithmeticConductor::processFault(AnalyzeCond& walk) const
{
    for (const int operand : {1, 2}) {
        if (!hasPicture(operand))
            return QStringLiteral("map %1 holds no picture").arg(operand);
    }
    return parts_.reader.areaFault(walk);
}

void ArithmeticConductor::processByNumber(const QString& number)
{
    bool isNumber = false;
    const int n = number.toInt(&isNumber);
    if (!isNumber || n < int(MapOperation::Sub) || n > int(MapOperation::Mask)) {
        fault(QStringLiteral("No operation on maps has the number ") + number);
        return;
    }
    parts_.section.setOperation(MapOperation(n));
    process(MapOperation(n));
}

void ArithmeticConductor::process(MapOperation operation)
{
    AnalyzeCond walk;
    const QString why = processFault(walk);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Maps are not processed: ") + why);
        return;
    }
    const Analyzed2DRes& map1 = parts_.book.at(operandKey(1));
    const Analyzed2DRes& map2 = parts_.book.at(operandKey(2));
    MapOrigin origin;
    origin.analysis = QStringLiteral("arithmetic");
    parts_.book.begin(processedKey, walk, origin);
    Analyzed2DRes& processed = parts_.book.at(processedKey);
    processMaps(operation, map1, map2, processed);
    processed.genImg();
    parts_.book.end(processedKey, true, {});
    parts_.section.showProcessed();
    view_.selectedNewRef();
}
