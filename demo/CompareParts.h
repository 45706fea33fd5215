#pragma once

#include "Compare.h"
#include "MapFiles.h"
#include "Truth.h"

#include <QFile>
#include <QTextStream>

#include <cmath>

/// What the comparisons of both experiments are made of.

/// Opens a text file and hands it to a reader `bool(QTextStream&, QString* error)`; a failure is
/// told with the file's name.
template<typename Reader>
bool readText(const QString& fname, QTextStream& out, const Reader& reader)
{
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        out << "Can't open " << fname << '\n';
        return false;
    }
    QTextStream in(&file);
    QString error;
    if (!reader(in, &error)) {
        out << fname << ": " << error << '\n';
        return false;
    }
    return true;
}

/// The blocks that the batch analysed, in walking order.
struct Blocks
{
    int halfWidth = 0;
    int columns = 0;
    QVector<QPoint> centres;
    QVector<BlockTruth> planted;
    QVector<bool> hasEdge; ///< counts as a block with an edge in this experiment
};

/// Reads the planted fields of a folder; a failure is told.
bool readTruthOf(const QString& folder, Truth* truth, QTextStream& out);

/// The blocks of a half width, a negative one being that of the experiment. False, with a line, for
/// a half width that the image has no room for.
bool makeBlocks(const Truth& truth, int halfWidth, Blocks* blocks, QTextStream& out);

/// Reads the text form of a species' map of a kind; a failure is told.
bool readMap(const QString& folder, const QString& kind, int species, const Blocks& blocks,
             SavedMap* map, QTextStream& out);

/// Differences from the planted values.
struct Deviation
{
    int blocks = 0;
    double sum = 0.0;
    double squares = 0.0;
    double largest = 0.0;

    void add(double difference);
    double bias() const { return blocks > 0 ? sum / blocks : 0.0; }
    double rms() const { return blocks > 0 ? std::sqrt(squares / blocks) : 0.0; }

    /// False also for nan, and without blocks.
    bool isWithin(double mostBias, double mostRms) const
    {
        return blocks > 0 && std::fabs(bias()) <= mostBias && rms() <= mostRms;
    }
};

/// Head of the table of deviations, and a row of it; `verdict` is what the row ends with.
constexpr char tableHead[] = "species  map           blocks      bias      rms  largest\n";
void printRow(const QString& name, const char* title, const Deviation& d, const char* verdict,
              QTextStream& out);

const char* verdictOf(bool within);

/// Saves planted and fitted fraction of a species over blocks with an edge as a picture, and names
/// it. False, with a line, when it can't be written.
bool savePicture(const QString& folder, int species, const Blocks& blocks, const SavedMap& map,
                 QTextStream& out);
