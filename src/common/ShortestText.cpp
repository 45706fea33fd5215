#include "common/ShortestText.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace {

/// A zero before the point, and as many behind it as the number is small.
char* layOutFraction(char* first, int digits, int zeros)
{
    const char lead = *first;
    char* const shifted = first + 2 + zeros;
    std::memmove(shifted + 1, first + 2, static_cast<std::size_t>(digits - 1));
    std::memset(first, '0', static_cast<std::size_t>(shifted - first));
    first[1] = '.';
    *shifted = lead;
    return shifted + digits;
}

/// No point, and zeros behind the digits.
char* layOutWhole(char* first, int digits, int places)
{
    std::memmove(first + 1, first + 2, static_cast<std::size_t>(digits - 1));
    std::memset(first + digits, '0', static_cast<std::size_t>(places - digits));
    return first + places;
}

/// Some digits before the point; those behind it stay where they are.
char* layOutMixed(char* first, int digits, int places)
{
    std::memmove(first + 1, first + 2, static_cast<std::size_t>(places - 1));
    first[places] = '.';
    return first + digits + 1;
}

/// Turns the form d.ddde+xx between `first` and `end` into the one without an exponent where that
/// is hardly longer.
char* layOut(char* first, char* end)
{
    const char* const mark = end - 4;
    if (*mark != 'e')
        return end; // three digits of exponent are never worth as many zeros
    const int exponent = (mark[2] - '0') * 10 + (mark[3] - '0');
    const int places = (mark[1] == '-' ? -exponent : exponent) + 1; // before the point
    const auto length = static_cast<int>(mark - first);
    const int digits = length > 1 ? length - 1 : 1;
    if (places <= -4 || places > digits + 5)
        return end;
    if (places <= 0)
        return layOutFraction(first, digits, -places);
    return places < digits ? layOutMixed(first, digits, places)
                           : layOutWhole(first, digits, places);
}

} // namespace

char* writeShortest(double v, char* out)
{
    // Neither keeps its sign.
    if (v == 0.0 || std::isnan(v))
        v = std::fabs(v);
    char* const end =
        std::to_chars(out, out + shortestTextSize, v, std::chars_format::scientific).ptr;
    return std::isfinite(v) ? layOut(v < 0.0 ? out + 1 : out, end) : end;
}
