#include "common/GeneralText.h"

#include <QByteArray>

#include <array>
#include <cmath>
#include <cstring>

namespace {

constexpr int digits = 6;
constexpr long scaledEnd = 1000000; // 10^digits
constexpr long scaledStart = scaledEnd / 10;

/// Powers of ten that the type holds without rounding.
constexpr int exactPowers = 28;
constexpr std::array<long double, exactPowers> powersOfTen = [] {
    std::array<long double, exactPowers> powers{};
    long double p = 1.0L;
    for (long double& power : powers) {
        power = p;
        p *= 10.0L;
    }
    return powers;
}();

/// Six digits and the exponent of the first; no digits where this way can't tell them.
struct Decimal
{
    long scaled;
    int exponent;
};

long double scaledBy(double v, int exponent)
{
    const int power = digits - 1 - exponent;
    return power >= 0 ? v * powersOfTen[std::size_t(power)] : v / powersOfTen[std::size_t(-power)];
}

/// Of a number whose powers are exact, so that one rounding stands between it and the scaled one.
Decimal decimalOf(double v)
{
    constexpr double log10Of2 = 0.30102999566398120;
    // Nearer to a tie than the error of the scaled number could reach.
    constexpr long double nearTie = 1e-8L;
    int exponent = int(std::floor((std::ilogb(v) + 0.5) * log10Of2));
    if (exponent > exactPowers || exponent < digits + 1 - exactPowers)
        return {0, 0};
    long double scaled = scaledBy(v, exponent);
    if (scaled >= scaledEnd)
        scaled = scaledBy(v, ++exponent);
    else if (scaled < scaledStart)
        scaled = scaledBy(v, --exponent);
    long whole = long(scaled);
    const long double rest = scaled - whole;
    if (std::fabs(rest - 0.5L) < nearTie)
        return {0, 0};
    whole += rest > 0.5L ? 1 : 0;
    if (whole == scaledEnd)
        return {scaledStart, exponent + 1};
    return {whole, exponent};
}

/// Its digits without zeros at the end; their number.
int writeDigits(long scaled, char* out)
{
    for (int i = digits - 1; i >= 0; --i, scaled /= 10)
        out[i] = char('0' + scaled % 10);
    int count = digits;
    while (count > 1 && out[count - 1] == '0')
        --count;
    return count;
}

char* writeExponent(int exponent, char* out)
{
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    *out++ = char('0' + size / 10);
    *out++ = char('0' + size % 10);
    return out;
}

/// "d.ddde+xx"
char* layOutScientific(const char* text, int count, int exponent, char* out)
{
    *out++ = text[0];
    if (count > 1) {
        *out++ = '.';
        std::memcpy(out, text + 1, std::size_t(count - 1));
        out += count - 1;
    }
    return writeExponent(exponent, out);
}

char* layOut(const char* text, int count, int exponent, char* out)
{
    if (exponent < -4 || exponent >= digits)
        return layOutScientific(text, count, exponent, out);
    if (exponent < 0) {
        std::memcpy(out, "0.000", std::size_t(1 - exponent));
        out += 1 - exponent;
        std::memcpy(out, text, std::size_t(count));
        return out + count;
    }
    const int before = exponent + 1;
    if (count <= before) {
        std::memcpy(out, text, std::size_t(count));
        std::memset(out + count, '0', std::size_t(before - count));
        return out + before;
    }
    std::memcpy(out, text, std::size_t(before));
    out[before] = '.';
    std::memcpy(out + before + 1, text + before, std::size_t(count - before));
    return out + count + 1;
}

} // namespace

char* writeGeneral(double v, char* out)
{
    if (v == 0.0) {
        *out++ = '0';
        return out;
    }
    if (!std::isfinite(v)) {
        const char* const word = std::isnan(v) ? "nan" : v < 0.0 ? "-inf" : "inf";
        const std::size_t size = std::strlen(word);
        std::memcpy(out, word, size);
        return out + size;
    }
    const Decimal decimal = decimalOf(std::fabs(v));
    if (decimal.scaled == 0) {
        // What the stream does, by the stream's own means: it rounds a tie up.
        const QByteArray text = QByteArray::number(v, 'g', digits);
        std::memcpy(out, text.constData(), std::size_t(text.size()));
        return out + text.size();
    }
    if (v < 0.0)
        *out++ = '-';
    char text[digits];
    const int count = writeDigits(decimal.scaled, text);
    return layOut(text, count, decimal.exponent, out);
}
