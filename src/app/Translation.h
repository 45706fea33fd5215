#pragma once

class QTranslator;

/// Loads the Japanese texts of the interface and installs the translator, which must outlive its
/// use by the application. False when they can't be loaded: the interface stays in English then.
bool installTranslation(QTranslator& translator);
