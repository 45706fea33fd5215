#pragma once

class QLineEdit;

/// Gives a field the width of this many digits in its font, no more and no less, so that columns of
/// numbers stay narrow and none is cut off.
void fitDigits(QLineEdit* field, int digits);

/// Lets a field shrink to this many digits and take what more there is.
void fitDigitsAtLeast(QLineEdit* field, int digits);
