// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdiioracle.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Oracle {

const Integer &tenTo(int n)
{
    static const std::vector<Integer> powers = [] {
        std::vector<Integer> p {1};
        while (p.size() < 330)
            p.push_back(p.back() * 10);
        return p;
    }();
    return powers.at(static_cast<std::size_t>(n));
}

int digitCount(const Integer &x)
{
    if (x == 0)
        return 0;
    const double bits = double(msb(x)) * 0.30102999566398120;
    const int guess = int(bits);
    return x >= tenTo(guess + 1) ? guess + 2 : x >= tenTo(guess) ? guess + 1 : guess;
}

bool isOdd(int n)
{
    return n % 2 != 0;
}

Number read(const BYTE *bytes, Type t)
{
    Number v;
    v.negative = bytes[0] >= 0x80;
    for (int i = 0; i < t.size(); ++i)
        v.digits = v.digits * 100 + (i == 0 ? bytes[0] % 0x80 : bytes[i]);
    v.exponent = -t.nfrac - (isOdd(t.nfrac) ? 1 : 0);
    return v;
}

std::vector<BYTE> write(Integer units, bool negative, Type t)
{
    if (isOdd(t.nfrac))
        units *= 10;
    std::vector<BYTE> bytes(static_cast<std::size_t>(t.size()));
    for (auto it = bytes.rbegin(); it != bytes.rend(); ++it) {
        *it = BYTE(static_cast<unsigned>(Integer(units % 100)));
        units /= 100;
    }
    if (negative)
        bytes.at(0) = BYTE(bytes[0] + 0x80);
    return bytes;
}

Outcome nan(UINT32 status)
{
    return {status, true, {}};
}

bool goesAway(BCDIIroundstyle style, bool negative, int firstLostDigit)
{
    const int s = int(style);
    return s == 1 ? !negative
        : s == 2  ? negative
        : s == 3  ? true
        : s == 4  ? false
                  : firstLostDigit >= 5;
}

Outcome store(const Number &v, Type t, BCDIIroundstyle style)
{
    const int top = digitCount(v.digits) - 1 + v.exponent; // position of the first digit
    if (v.digits == 0 || top < -62)
        return {2, false, write(0, false, t)};
    if (top >= t.nint())
        return nan(17);
    const UINT32 sign = v.negative ? 4 : 0;
    const int surplus = -t.nfrac - v.exponent; // digits behind the last one stored
    if (surplus <= 0)
        return {sign, false, write(v.digits * tenTo(-surplus), v.negative, t)};

    Integer kept = 0;
    Integer lost = v.digits;
    int firstLost = 0;
    if (surplus < 320) {
        divide_qr(v.digits, tenTo(surplus), kept, lost);
        firstLost = static_cast<int>(Integer(lost / tenTo(surplus - 1)));
    }
    if (lost == 0)
        return {sign, false, write(kept, v.negative, t)};
    if (goesAway(style, v.negative, firstLost))
        ++kept;
    if (kept == tenTo(t.nall))
        return nan(81);
    if (kept == 0)
        return {66, false, write(0, false, t)};
    return {64 + sign, false, write(kept, v.negative, t)};
}

Integer aligned(const Number &v, int exponent)
{
    const Integer scaled = v.digits * tenTo(v.exponent - exponent);
    return v.negative ? Integer(-scaled) : scaled;
}

Outcome add(const Number &a, const Number &b, Type t, BCDIIroundstyle style)
{
    const int exponent = std::min(a.exponent, b.exponent);
    const Integer sum = aligned(a, exponent) + aligned(b, exponent);
    return store({sum < 0, abs(sum), exponent}, t, style);
}

Outcome multiply(const Number &a, const Number &b, Type t, BCDIIroundstyle style)
{
    return store({a.negative != b.negative, a.digits * b.digits, a.exponent + b.exponent}, t,
                 style);
}

int compare(const Number &a, const Number &b)
{
    const int exponent = std::min(a.exponent, b.exponent);
    return aligned(a, exponent).compare(aligned(b, exponent));
}

Outcome fromUInt64(UINT64 i, int fd, Type t)
{
    return store({false, i, -std::clamp(fd, -300, 300)}, t, BCDII_ROUND_TRUNC);
}

Outcome fromInt64(INT64 i, int fd, Type t)
{
    if (i >= 0)
        return fromUInt64(UINT64(i), fd, t);
    Outcome o = fromUInt64(UINT64(-(i + 1)) + 1, fd, t);
    if (o.nan)
        o.bytes = {101};
    o.bytes.at(0) |= 0x80;
    o.status |= 4;
    return o;
}

IntegerOutcome toInt64(const Number &v, int fd, BCDIIroundstyle style)
{
    const Type wide {19, std::clamp(fd, -300, 300)};
    const Outcome o = store(v, wide, style);
    if (o.nan)
        return {17, false, 0};
    const Integer magnitude = read(o.bytes.data(), wide).digits / (isOdd(wide.nfrac) ? 10 : 1);
    const Integer value = v.negative ? Integer(-magnitude) : magnitude;
    if (value > std::numeric_limits<INT64>::max() || value < std::numeric_limits<INT64>::min())
        return {17, false, 0};
    return {o.status, true, static_cast<INT64>(value)};
}

double stepwisePower(int n)
{
    double p = 1.0;
    for (; n > 0; --n)
        p *= 10.0;
    for (; n < 0; ++n)
        p /= 10.0;
    return p;
}

double toDouble(const BYTE *bytes, Type t)
{
    double chain = 0.0;
    for (int i = 0; i < t.size(); ++i)
        chain = chain * 100.0 + (i == 0 ? bytes[0] & 0x7F : bytes[i]);
    const int bytesBehindPoint = int(std::floor((t.nfrac + 1) / 2.0));
    chain /= stepwisePower(2 * bytesBehindPoint);
    return bytes[0] >= 0x80 ? -chain : chain;
}

Outcome fromDouble(double src, Type t)
{
    Outcome o;
    o.bytes.assign(static_cast<std::size_t>(t.size()), 0);
    if (std::isnan(src))
        return o;
    double x = std::fabs(src) * stepwisePower(t.nfrac) + 0.5;
    if (x < 4503599627370496.0)
        x = std::floor(x);
    if (x < 0.125)
        return {2, false, o.bytes};
    if (std::isinf(x)) {
        o.bytes.at(0) = 101;
        o.status = 17;
        return o;
    }
    const auto take = [&x](double base) {
        const double d = std::fmod(x, base);
        x = std::floor((x - d) / base + 0.125);
        return d;
    };
    auto byte = o.bytes.rbegin();
    int left = t.nall;
    if (isOdd(t.nfrac)) {
        *byte++ = BYTE(take(10.0) * 10.0 + 0.125);
        --left;
    }
    for (; left > 1 && x > 0.125; left -= 2)
        *byte++ = BYTE(take(100.0) + 0.125);
    if (left == 1 && x > 0.125)
        *byte++ = BYTE(take(10.0) + 0.125);
    if (x > 0.125) {
        o.bytes.at(0) = 101;
        o.status = 17;
        return o;
    }
    if (src < 0)
        o.bytes.at(0) |= 0x80;
    o.status = src < 0 ? 4 : 0;
    return o;
}

ParseOutcome parse(const std::string &text, Type t)
{
    const char *const digitSet = "0123456789";
    const auto cutAt = [&](std::size_t from) {
        const std::size_t end = text.find_first_not_of(digitSet, from);
        return text.substr(from, end == std::string::npos ? end : end - from);
    };
    std::size_t at = std::min(text.find_first_not_of("\t\n\r "), text.size());
    bool negative = false;
    if (at < text.size() && (text[at] == '-' || text[at] == '+'))
        negative = text[at++] == '-';
    const std::string before = cutAt(at);
    at += before.size();
    const bool separator = at < text.size() && (text[at] == '.' || text[at] == ',');
    const std::string behind = separator ? cutAt(at + 1) : std::string();
    if (before.empty() && behind.empty())
        return {nan(48), t};

    std::string all = before + behind;
    all.erase(0, all.find_first_not_of('0'));
    if (all.empty() || all[0] == '0')
        return {{2, false, write(0, false, t)}, t};
    const int nfrac = int(std::min<std::size_t>(behind.size(), 1000));
    const std::size_t integerDigits = all.size() - std::min(all.size(), behind.size());
    const std::size_t fractionDigits = std::min(all.size(), behind.size());
    if (nfrac > 127 || integerDigits > 126 || fractionDigits > 126)
        return {nan(48), t};
    const int nint = int(all.size()) - nfrac; // negative: zeros behind the point
    if (std::ceil(nint / 2.0) + std::ceil(nfrac / 2.0) > 63)
        return {nan(48), t};
    if (nint > t.nint())
        return {nan(17), t};
    Number v {negative, 0, -nfrac};
    for (char c : all)
        v.digits = v.digits * 10 + (c - '0');
    const Type result {t.nall, nfrac};
    return {store(v, result, BCDII_ROUND_NEAREST), result};
}

std::string format(const BYTE *bytes, Type t)
{
    const Number v = read(bytes, t);
    const Integer units = v.digits / (isOdd(t.nfrac) ? 10 : 1);
    std::string digits = units == 0 ? std::string() : units.str();
    if (t.nfrac <= 0)
        digits += units == 0 ? std::string() : std::string(std::size_t(-t.nfrac), '0');
    else
        digits.insert(0, std::string(std::size_t(std::max(0, t.nfrac - int(digits.size()))), '0'));
    if (t.nfrac > 0)
        digits.insert(digits.size() - std::size_t(t.nfrac), 1, '.');
    return (v.negative ? "-" : "") + digits;
}

} // namespace Oracle
