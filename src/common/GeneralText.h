#pragma once

/// The longest text of writeGeneral(): -1.23457e-308.
constexpr int generalTextSize = 13;

/// Writes a number with six significant digits, as a text stream does by itself ('g'), and returns
/// the end of the text, at most generalTextSize characters behind `out`. The digits are those of
/// the exact value, rounded, several times as fast; zero has no sign, nor has nan.
char* writeGeneral(double v, char* out);
