#pragma once

/// The longest text of a double: -2.2250738585072014e-308.
constexpr int shortestTextSize = 24;

/// Writes the shortest digits that read back the same number, and returns the end of the text, at
/// most shortestTextSize characters behind `out`. It is what QString::number() makes of 'g' and the
/// shortest precision, several times as fast; zero has no sign, nor has nan.
char* writeShortest(double v, char* out);
