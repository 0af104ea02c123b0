// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "exactsum.h"

#include <cstdlib>

namespace {

constexpr int s_farthestExponent = 60;

} // namespace

QString withoutExponent(const QString &number)
{
    const qsizetype mark = number.indexOf(u'e', 0, Qt::CaseInsensitive);
    bool isNumber = false;
    const int exponent = number.mid(mark + 1).toInt(&isNumber);
    if (mark < 1 || !isNumber || std::abs(exponent) > s_farthestExponent)
        return number;
    QString digits = number.left(mark);
    const bool isNegative = digits.startsWith(u'-');
    digits.remove(u'-').remove(u'+');
    const qsizetype point = digits.indexOf(u'.') < 0 ? digits.size() : digits.indexOf(u'.');
    digits.remove(u'.');
    qsizetype place = point + exponent;
    if (place <= 0) {
        digits.prepend(QString(1 - place, u'0'));
        place = 1;
    }
    digits = digits.leftJustified(place, u'0');
    if (place < digits.size())
        digits.insert(place, u'.');
    return isNegative ? u'-' + digits : digits;
}

void ExactSum::add(const QString &number, qint64 times)
{
    const auto parsed = Value::parse(withoutExponent(number), ".");
    const auto factor = Value::parse(QString::number(times), ".");
    if (!parsed || !factor) {
        m_isExact = false;
        return;
    }
    m_sum += parsed.value * factor.value;
    m_isExact = m_isExact && !m_sum.isNan();
}

QString ExactSum::text() const
{
    if (m_sum.isNan())
        return {};
    QString text = m_sum.toQString();
    if (!text.contains(u'.'))
        return text;
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text;
}
