// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "numbersums.h"

#include <algorithm>

namespace {

constexpr int s_mostDigits = 63;
constexpr int s_mostFraction = 62;
constexpr int s_moreInMean = 2; // fraction digits
constexpr std::uint32_t s_notANumber = 0x10;

BCDIIType typeOf(int digits, int fraction)
{
    return BCDIIType(digits) << 8 | BCDIIType(fraction);
}

//! The number of \a digits divided, rounded to nearest, halves up.
QByteArray divided(const QByteArray &digits, int divisor)
{
    QByteArray quotient;
    qint64 rest = 0;
    for (const char digit : digits) {
        rest = rest * 10 + (digit - '0');
        quotient += char('0' + rest / divisor);
        rest %= divisor;
    }
    if (rest * 2 < divisor)
        return quotient;
    qsizetype place = quotient.size();
    while (place > 0 && quotient[place - 1] == '9')
        quotient[--place] = '0';
    if (place == 0)
        return '1' + quotient;
    ++quotient[place - 1];
    return quotient;
}

} // namespace

void NumberSums::add(const QString &text)
{
    Number number;
    if (!parse(text.trimmed(), &number)) {
        ++m_others;
        return;
    }
    const auto compare = [](const Number &a, const Number &b) {
        return BCDIICmp(a.bytes.data(), a.type, b.bytes.data(), b.type);
    };
    if (m_count == 0 || compare(number, m_minimum) < 0)
        m_minimum = number;
    if (m_count == 0 || compare(number, m_maximum) > 0)
        m_maximum = number;
    addToSum(number);
    ++m_count;
}

bool NumberSums::parse(const QString &text, Number *number)
{
    const auto isMark = [](QChar character) { return character == u'.' || character == u','; };
    const auto mark = std::find_if(text.begin(), text.end(), isMark);
    const bool hasFraction = mark != text.end();
    if (hasFraction && m_mark != 0 && *mark != QLatin1Char(m_mark))
        return false;
    const qsizetype fraction = hasFraction ? text.end() - mark - 1 : 0;
    const auto isSignOrZero = [](QChar character) {
        return character == u'+' || character == u'-' || character == u'0';
    };
    const qsizetype integer = mark - std::find_if_not(text.begin(), mark, isSignOrZero);
    const qsizetype digits = qMax<qsizetype>(integer + fraction, 1);
    if (digits > s_mostDigits || fraction > s_mostFraction)
        return false;
    number->type = typeOf(int(digits), int(fraction));
    const QByteArray bytes = text.toLatin1();
    const std::uint32_t status =
        BCDIIParse(number->bytes.data(), number->type, bytes.data(), size_t(bytes.size()));
    if ((status & s_notANumber) != 0)
        return false;
    if (hasFraction)
        m_mark = mark->toLatin1();
    number->text = text;
    return true;
}

void NumberSums::addToSum(const Number &number)
{
    if (m_count == 0)
        m_sum.type = typeOf(s_mostDigits, 0);
    const int fraction = int(number.type & 0xff);
    std::uint8_t *sum = m_sum.bytes.data();
    if (m_sumFits && fraction > m_fraction) {
        const BCDIIType type = typeOf(s_mostDigits, fraction);
        const auto status = BCDIICopy(sum, type, sum, m_sum.type, BCDII_ROUND_NEAREST);
        m_sumFits = (status & s_notANumber) == 0;
        m_sum.type = type;
        m_fraction = fraction;
    }
    if (!m_sumFits)
        return;
    const auto status = BCDIIAdd(sum, m_sum.type, sum, m_sum.type, number.bytes.data(), number.type,
                                 BCDII_ROUND_NEAREST);
    m_sumFits = (status & s_notANumber) == 0;
}

//! Those of the sum, the fraction's behind the others, without a point.
QByteArray NumberSums::digits(bool *isNegative) const
{
    const std::string text = BCDII2StringSequence(m_sum.bytes.data(), m_sum.type);
    QByteArray digits(text.c_str());
    *isNegative = digits.startsWith('-');
    digits.replace("-", "").replace(".", "");
    return digits;
}

QString NumberSums::withFraction(QByteArray digits, qsizetype fraction, bool isNegative) const
{
    digits = digits.rightJustified(fraction + 1, '0');
    qsizetype zeros = 0;
    while (zeros < digits.size() - fraction - 1 && digits[zeros] == '0')
        ++zeros;
    digits.remove(0, zeros);
    const bool isZero = digits.count('0') == digits.size();
    if (fraction > 0)
        digits.insert(digits.size() - fraction, m_mark != 0 ? m_mark : '.');
    return QString::fromLatin1(isNegative && !isZero ? '-' + digits : digits);
}

QString NumberSums::sum() const
{
    if (m_count == 0 || !m_sumFits)
        return {};
    bool isNegative = false;
    const QByteArray all = digits(&isNegative);
    return withFraction(all, m_fraction, isNegative);
}

QString NumberSums::mean() const
{
    if (m_count == 0 || !m_sumFits)
        return {};
    bool isNegative = false;
    const QByteArray all = digits(&isNegative) + QByteArray(s_moreInMean, '0');
    return withFraction(divided(all, m_count), m_fraction + s_moreInMean, isNegative);
}
