// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BCDIIVALUE_H
#define BCDIIVALUE_H

#include "bcdii.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#if __has_include(<QString>)
#include <QString>
#include <QStringView>
#endif

//! What BCDIIValue::parse() made of a text; true when that is a number of the type.
//! \since 0.2
template<typename Value> struct BCDIIParsed
{
    Value value = Value::nan(); //!< exact, or NaN
    //! The length of the text, or where it stops being a number of the type; see BCDIIParse().
    std::size_t position = 0;
    //! 0, 4, 2 for zero; 48 when the text is no number, 17 when it does not fit, 80 when it
    //! has fraction digits that the type has not.
    std::uint32_t status = 0x30;

    //! Whether the text was a number, and exactly one of the type.
    explicit operator bool() const noexcept { return (status & 0x30) == 0; }
};

//! A decimal number of \a Digits digits, \a Fraction of them after the point, that owns
//! its bytes. Only as large as they are, trivially copied, never on the heap.
//!
//! \code
//! using Money = BCDIIValue<15, 2>;
//! const Money price = Money::fromString("19.90");
//! const Money total = price * Money(3) + Money::fromString("4.50"); // 64.20
//! \endcode
//!
//! Results that do not fit become NaN, which every operation hands on and which is
//! neither equal to nor less than anything. Lost digits are rounded to nearest,
//! halves away from zero, unless a function takes a style. Functions with a
//! \a status parameter store the status word of bcdii.h there, if given.
//! \since 0.2
template<int Digits, int Fraction> class BCDIIValue
{
    static_assert(Digits >= 1 && Digits <= 63, "a value has 1 to 63 digits");
    static_assert(Fraction >= -62 && Fraction <= 62, "-62 to 62 digits stand after the point");

public:
    static constexpr int digits = Digits;           //!< in all
    static constexpr int fractionDigits = Fraction; //!< after the point; may be negative

    //! Zero.
    constexpr BCDIIValue() = default;

    //! NaN when the integer does not fit; digits that the type does not have are cut off.
    explicit BCDIIValue(std::int64_t integer, std::uint32_t *status = nullptr)
    {
        setScaled(integer, 0, status);
    }

    //! \a units of the last digit, exact: 1990 hundredths are 19.90. NaN when it does not fit.
    static BCDIIValue fromUnits(std::int64_t units, std::uint32_t *status = nullptr)
    {
        BCDIIValue value;
        value.setScaled(units, Fraction, status);
        return value;
    }

    //! The value nearest to \a real * 10^Fraction, taken in double; see BCDIIGetFromDouble().
    //! Infinities and numbers that do not fit give NaN, a NaN too.
    static BCDIIValue fromDouble(double real, std::uint32_t *status = nullptr)
    {
        BCDIIValue value = nan();
        if (real != real) {
            report(status, 176);
            return value;
        }
        report(status, BCDIIGetFromDouble(value.data(), real, type()));
        return value;
    }

    //! The number at the beginning of \a text (see BCDIIFromString()), rounded to this
    //! type; NaN when there is none or it does not fit. What follows it is ignored: "1e3" is
    //! 1 and "1,234.50" is 1.234. parse() is strict.
    static BCDIIValue fromString(const char *text, std::uint32_t *status = nullptr)
    {
        BCDIIType textType = 63U << 8;
        std::array<std::uint8_t, 32> bytes {};
        std::uint32_t result = BCDIIFromString(bytes.data(), textType, text);
        BCDIIValue value = nan();
        if ((result & 0x10) == 0)
            result = BCDIICopy(value.data(), type(), bytes.data(), textType, BCDII_ROUND_NEAREST);
        report(status, result);
        return value;
    }
    //! The same of a std::string, up to its first NUL.
    static BCDIIValue fromString(const std::string &text, std::uint32_t *status = nullptr)
    {
        return fromString(text.c_str(), status);
    }

    //! The number that \a text is from its first character to the last, exactly; see
    //! BCDIIParse(). \a points are the characters that may stand before the fraction.
    //!
    //! \code
    //! BCDIIValue<15, 2> total;
    //! if (const auto price = BCDIIValue<15, 2>::parse("1234.50", "."))
    //!     total += price.value;
    //! \endcode
    static BCDIIParsed<BCDIIValue> parse(std::string_view text, const char *points = ".,")
    {
        BCDIIParsed<BCDIIValue> parsed;
        parsed.status = BCDIIParse(parsed.value.data(), type(), text.data(), text.size(),
                                   &parsed.position, points);
        return parsed;
    }

    //! Not a number.
    static constexpr BCDIIValue nan()
    {
        BCDIIValue value;
        value.m_bytes[0] = 101;
        return value;
    }
    //! The largest value: all nines.
    static constexpr BCDIIValue highest()
    {
        BCDIIValue value;
        for (std::uint8_t &pair : value.m_bytes)
            pair = 99;
        if ((Digits - Fraction) % 2 != 0)
            value.m_bytes[0] = 9;
        if (Fraction % 2 != 0)
            value.m_bytes.back() = 90;
        return value;
    }
    //! The most negative value.
    static constexpr BCDIIValue lowest()
    {
        BCDIIValue value = highest();
        value.m_bytes[0] |= 0x80;
        return value;
    }
    //! One unit of the last digit, the step from any value to the next one.
    static constexpr BCDIIValue smallest()
    {
        BCDIIValue value;
        value.m_bytes.back() = Fraction % 2 != 0 ? 10 : 1;
        return value;
    }

    //! The type word of the functions of bcdii.h.
    static constexpr BCDIIType type()
    {
        return static_cast<BCDIIType>((Digits & 0xFF) << 8 | (Fraction & 0xFF));
    }
    //! The bytes, for those functions.
    //! @{
    std::uint8_t *data() { return m_bytes.data(); }
    const std::uint8_t *data() const { return m_bytes.data(); }
    //! @}
    //! How many of them there are.
    static constexpr std::size_t size() { return byteCount; }

    //! 0 positive, 4 negative, 2 zero, 160 NaN; 32 when data() was filled with what is
    //! not a value.
    std::uint32_t status() const { return BCDIICheck(data(), type()); }
    //! What the first bytes tell; nothing but isNan() of what is not a value.
    //! @{
    constexpr bool isNan() const { return (m_bytes[0] & 0x7F) > 99; }
    constexpr bool isNegative() const { return !isNan() && m_bytes[0] >= 0x80; }
    constexpr bool isZero() const { return m_bytes == std::array<std::uint8_t, byteCount> {}; }
    //! @}

    //! The value in another type, BCDIIValue<...>, rounded by \a style.
    template<typename Other>
    Other to(BCDIIroundstyle style = BCDII_ROUND_NEAREST, std::uint32_t *status = nullptr) const
    {
        Other value;
        report(status, BCDIICopy(value.data(), Other::type(), data(), type(), style));
        return value;
    }
    //! The nearest integer, or 0 when it does not fit or the value is NaN.
    std::int64_t toInt64(BCDIIroundstyle style = BCDII_ROUND_NEAREST,
                         std::uint32_t *status = nullptr) const
    {
        std::int64_t integer = 0;
        report(status, BCDII2Int64(&integer, data(), type(), 0, style));
        return integer;
    }
    //! Units of the last digit: 1990 for 19.90. 0 when it does not fit or the value is NaN.
    std::int64_t toUnits(std::uint32_t *status = nullptr) const
    {
        std::int64_t units = 0;
        report(status, BCDII2Int64(&units, data(), type(), Fraction, BCDII_ROUND_NEAREST));
        return units;
    }
    //! The value as a double; a quiet NaN for NaN.
    double toDouble() const
    {
        double real = std::numeric_limits<double>::quiet_NaN();
        BCDII2Double(&real, data(), type());
        return real;
    }
    //! "-12.50", "0.5", "0", or "NaN". Always Fraction digits after the point.
    std::string toString() const
    {
        if (isNan())
            return "NaN";
        std::string text = BCDII2StringSequence(data(), type());
        text.resize(text.find('\0'));
        const std::size_t first = isNegative() ? 1 : 0;
        if (text.size() == first || text[first] == '.')
            text.insert(first, 1, '0');
        return text;
    }

#if __has_include(<QString>)
    //! \sa fromString(), parse(), toString(). Positions count UTF-16 units; points are Latin-1.
    //! @{
    static BCDIIValue fromQString(const QString &text, std::uint32_t *status = nullptr)
    {
        return fromString(text.toLatin1().constData(), status);
    }
    static BCDIIParsed<BCDIIValue> parse(QStringView text, const char *points = ".,")
    {
        std::string latin1;
        latin1.reserve(static_cast<std::size_t>(text.size()));
        for (QChar c : text)
            latin1 += c.toLatin1(); // NUL for others
        return parse(std::string_view(latin1), points);
    }
    QString toQString() const
    {
        const std::string text = toString();
        return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    }
    //! @}
#endif

    //! a + b and a * b of any two types in this one, rounded by \a style.
    //! @{
    template<typename A, typename B>
    static BCDIIValue sum(const A &a, const B &b, BCDIIroundstyle style = BCDII_ROUND_NEAREST,
                          std::uint32_t *status = nullptr)
    {
        BCDIIValue value;
        report(status,
               BCDIIAdd(value.data(), type(), a.data(), A::type(), b.data(), B::type(), style));
        return value;
    }
    template<typename A, typename B>
    static BCDIIValue product(const A &a, const B &b, BCDIIroundstyle style = BCDII_ROUND_NEAREST,
                              std::uint32_t *status = nullptr)
    {
        BCDIIValue value;
        report(status,
               BCDIIMul(value.data(), type(), a.data(), A::type(), b.data(), B::type(), style));
        return value;
    }
    //! @}

    //! Sums and products of values of one type, rounded to the nearest of it; NaN if they do not
    //! fit, or an operand is NaN.
    //! @{
    BCDIIValue &operator+=(const BCDIIValue &other)
    {
        return *this = sum(*this, other);
    }
    BCDIIValue &operator-=(const BCDIIValue &other)
    {
        return *this = sum(*this, -other);
    }
    BCDIIValue &operator*=(const BCDIIValue &other)
    {
        return *this = product(*this, other);
    }
    friend BCDIIValue operator+(const BCDIIValue &a, const BCDIIValue &b)
    {
        return sum(a, b);
    }
    friend BCDIIValue operator-(const BCDIIValue &a, const BCDIIValue &b)
    {
        return sum(a, -b);
    }
    friend BCDIIValue operator*(const BCDIIValue &a, const BCDIIValue &b)
    {
        return product(a, b);
    }
    BCDIIValue operator-() const
    {
        BCDIIValue value = *this;
        BCDIINeg(value.data(), type());
        return value;
    }
    BCDIIValue operator+() const
    {
        return *this;
    }
    //! @}

    //! By value, also between types: 1.5 equals 1.50. NaN is unordered.
    //! @{
    template<int OtherDigits, int OtherFraction>
    std::partial_ordering operator<=>(const BCDIIValue<OtherDigits, OtherFraction> &other) const
    {
        if (isNan() || other.isNan())
            return std::partial_ordering::unordered;
        return BCDIICmp(data(), type(), other.data(), other.type()) <=> 0;
    }
    template<int OtherDigits, int OtherFraction>
    bool operator==(const BCDIIValue<OtherDigits, OtherFraction> &other) const
    {
        return (*this <=> other) == 0;
    }
    //! @}

private:
    static constexpr std::size_t byteCount = (Digits >> 1) + ((Digits | Fraction) & 1);

    static void report(std::uint32_t *status, std::uint32_t result)
    {
        if (status != nullptr)
            *status = result;
    }

    // integer / 10^places. A negative one that is cut to zero or does not fit comes with a
    // sign, which neither zero nor NaN has here.
    void setScaled(std::int64_t integer, int places, std::uint32_t *status)
    {
        const std::uint32_t result = BCDIIGetFromInt64(data(), type(), integer, places);
        if ((result & 0x02) != 0)
            m_bytes = {};
        else if ((result & 0x10) != 0)
            *this = nan();
        report(status, (result & 0x12) != 0 ? result & ~4U : result);
    }

    std::array<std::uint8_t, byteCount> m_bytes {}; //!< as described in bcdii.h
};

//! Hashes equal values equally, whatever their types: 1.5 as 1.50. All NaN hash equally
//! too, though none equals another.
template<int Digits, int Fraction> struct std::hash<BCDIIValue<Digits, Fraction>>
{
    //! O(digits).
    std::size_t operator()(const BCDIIValue<Digits, Fraction> &value) const noexcept
    {
        if (value.isNan())
            return 0;
        // Pairs stand at the same places before and after the point in all types: what
        // differs is how many zeros stand around them.
        const std::uint8_t *first = value.data();
        const std::uint8_t *last = first + value.size();
        int weight = (Digits - Fraction + 1) >> 1;
        for (; first != last && pairAt(first, value) == 0; ++first)
            --weight;
        while (last != first && pairAt(last - 1, value) == 0)
            --last;
        if (first == last)
            return static_cast<std::size_t>(seed);
        std::uint64_t h = mixed(mixed(seed, weight & 0xFF), value.isNegative() ? 1 : 0);
        for (; first != last; ++first)
            h = mixed(h, pairAt(first, value));
        return static_cast<std::size_t>(h);
    }

private:
    static constexpr std::uint64_t seed = 14695981039346656037U; // FNV-1a

    static constexpr std::uint64_t mixed(std::uint64_t h, int byte)
    {
        return (h ^ static_cast<std::uint64_t>(byte)) * 1099511628211U;
    }
    static int pairAt(const std::uint8_t *pair, const BCDIIValue<Digits, Fraction> &value)
    {
        return pair == value.data() ? *pair & 0x7F : *pair;
    }
};

//! min() is the smallest positive value, as with floating point; every value between
//! lowest() and max() that has the type's digits is exact.
template<int Digits, int Fraction> class std::numeric_limits<BCDIIValue<Digits, Fraction>>
{
    using Value = BCDIIValue<Digits, Fraction>;

public:
    //! As the standard has them.
    //! @{
    static constexpr bool is_specialized = true;
    static constexpr bool is_signed = true;
    static constexpr bool is_integer = Fraction <= 0;
    static constexpr bool is_exact = true;
    static constexpr bool has_infinity = false;
    static constexpr bool has_quiet_NaN = true;
    static constexpr bool has_signaling_NaN = false;
    static constexpr bool is_iec559 = false;
    static constexpr bool is_bounded = true;
    static constexpr bool is_modulo = false;
    static constexpr bool traps = false;
    static constexpr int radix = 10;
    static constexpr int digits = Digits;
    static constexpr int digits10 = Digits;
    static constexpr int max_digits10 = Digits;
    static constexpr int min_exponent = 0;
    static constexpr int min_exponent10 = 0;
    static constexpr int max_exponent = 0;
    static constexpr int max_exponent10 = 0;
    static constexpr bool tinyness_before = false;
    static constexpr float_round_style round_style = round_to_nearest;

    // In parentheses, as min and max are macros of windows.h.
    static constexpr Value(min)() { return Value::smallest(); }
    static constexpr Value(max)() { return Value::highest(); }
    static constexpr Value lowest() { return Value::lowest(); }
    static constexpr Value epsilon() { return Value::smallest(); }
    static constexpr Value quiet_NaN() { return Value::nan(); }
    //! @}
};

namespace BCDIILiterals {

//! What a literal's text has: its digits without leading zeros, those after the point.
struct Shape
{
    int digits = 0;    //!< without leading zeros
    int fraction = 0;  //!< of these behind the point
    bool plain = true; //!< digits and at most one point
};

template<char... Text> consteval Shape shapeOf()
{
    Shape shape;
    bool behindPoint = false;
    bool significant = false;
    for (char c : {Text...}) {
        if (c == '\'')
            continue;
        if (c == '.' && !behindPoint) {
            behindPoint = true;
            continue;
        }
        shape.plain = shape.plain && c >= '0' && c <= '9';
        significant = significant || c != '0';
        shape.digits += significant ? 1 : 0;
        shape.fraction += behindPoint ? 1 : 0;
    }
    shape.digits = (std::max)({shape.digits, shape.fraction, 1});
    return shape;
}

//! A decimal literal: 12.50_bcd is a BCDIIValue<4, 2>. Digits, ' and one point.
template<char... Text> auto operator""_bcd()
{
    constexpr Shape shape = shapeOf<Text...>();
    static_assert(shape.plain, "a decimal literal has digits and at most one point");
    constexpr char text[] = {Text..., '\0'};
    char digits[sizeof text] = {};
    std::remove_copy(text, text + sizeof text, digits, '\'');
    return BCDIIValue<shape.digits, shape.fraction>::fromString(digits);
}

} // namespace BCDIILiterals

#endif // BCDIIVALUE_H
