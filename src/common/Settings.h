#pragma once

#include <QPair>
#include <QString>
#include <QVector>

class Cfg;

// What the command line and the configuration file decide for the whole program. All of it is
// written before the event loop starts and only read afterwards, so any thread may read it.

extern QString DataRoot;         ///< start folder of all file dialogs for data
extern QString BatchRoot;        ///< start folder for batch files
extern bool ShowAnalyzer2Button; ///< the button that opens the Analyzer2 panel is shown
extern int WalkThreads;          ///< threads of walks over maps; 0 for the machine's
extern bool VerboseMode;         ///< each batch command logs its time
/// Batch variables of the command line, such as ("scan", "a 1"), in their order.
extern QVector<QPair<QString, QString>> BatchVariables;
extern bool DebugMode; ///< kept for diagnostics; changes nothing at present

/// The one key table of the program.
Cfg& theCfg();

/// Gives the globals their defaults.
void initSettings();

/// Path of the configuration file: "config.cfg" in the program's folder (empty when there is
/// none), or the value of "-c", or that of "-config", which wins. Logs the path.
QString configPath(Cfg& cfg, const QString& applicationDir);

/// Reads that file into the table. A missing "config.cfg" costs a log line, one that the command
/// line names and that can't be read is a fault.
void readConfiguration(Cfg& cfg, const QString& applicationDir);

/// Takes data root, batch root, the Analyzer2 button and the threads of walks from the keys of the
/// table, then from the options "-d", "-br", "-showA2B" and "-threads", which win; logs the keys.
/// An option without a value counts as given: it empties a root and hides the button. Threads that
/// are no number above 0 cost a log line, and are the machine's. Also "-v", and the batch variables
/// of all "-let name=value"; one without a name or "=" is a fault.
void applySettings(Cfg& cfg);

/// What the command line asks for beyond the settings.
struct StartOptions
{
    bool english = false;   ///< no translation
    QString batchFile;      ///< handed to the batch window unless empty
    bool execBatch = false; ///< the batch window's text is started
    double timeout = 0.0;   ///< longest time without progress of a batch command [s]; 0 for any
    bool debug = false;
};

/// Looks up the start options, and sets DebugMode. A timeout that is no number of seconds above 0
/// is a fault.
StartOptions readStartOptions(Cfg& cfg);

/// The batch lines of the configuration as one text, which runs in front of any other.
QString configuredBatch(Cfg& cfg);
