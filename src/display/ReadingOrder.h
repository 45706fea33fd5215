#pragma once

class QWidget;

/// Lets Tab visit the fields and buttons of a form as people read it: by its layouts, line by line
/// and from the left. Creation order, which Qt takes, is that of nobody. Forms within it are put in
/// order too.
void tabInReadingOrder(QWidget* form);
