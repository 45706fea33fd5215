#pragma once

#include "maps/MapArithmetic.h"
#include "maps/MapBook.h"

#include <QObject>

class ArithmeticSection;
class CalibConductor;
class CommandBook;
class History;
class SourceReader;
class ViewConductor;

/// Takes maps as operands of the map arithmetic, from the map that is chosen or from a file, and
/// processes them. An operand is a copy: nothing that becomes of its source later reaches it.
class ArithmeticConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        MapBook& book;
        const SourceReader& reader;
        ArithmeticSection& section;
    };
    ArithmeticConductor(const Parts& parts, ViewConductor& view, CalibConductor& calib,
                        QObject* parent = nullptr);

    void bindCommands(CommandBook& book);

public Q_SLOTS:
    /// Copies the chosen map into operand 1 or 2. Without one, and without a picture of it, that is
    /// a fault, and the operand stays.
    void capture(int operand);
    /// Reads an energy shift map's file into operand 1 or 2, which stays as it is when that fails.
    void load(int operand, const QString& file);
    /// Fills the processed map over the area and with the blocks that are chosen now, not those of
    /// the operands. A fault unless both hold a picture.
    void process(MapOperation operation);

private:
    void tellHistory(History& history) const;
    void take(int operand, const Analyzed2DRes& source, const MapOrigin& origin, bool whole);
    bool hasPicture(int operand) const;
    QString processFault(AnalyzeCond& walk) const;
    void processByNumber(const QString& number);
    void tellReadiness();

    const Parts parts_;
    ViewConductor& view_;
    CalibConductor& calib_;
};
