#pragma once

class QTranslator;

/// Loads the Japanese texts of the interface and installs the translator, which must outlive its
/// use by the application. False when they can't be loaded: the interface stays in English then.
/// Those of Qt's own dialogs and buttons come along, as a child of the translator; without them
/// these stay in English, with one log line.
bool installTranslation(QTranslator& translator);
