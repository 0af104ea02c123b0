// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sortvalue.h"

#include <QByteArray>

#include <algorithm>

namespace {

constexpr int s_exactDigits = 15;       // of any decimal number a double knows as many
constexpr int s_mostNumberDigits = 300; // no double is as large as longer ones can be

bool isDecimalDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QString folded(const QString &text)
{
    if (isAscii(text))
        return text.toLower();
    QString plain = text.normalized(QString::NormalizationForm_D);
    plain.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return plain.toCaseFolded();
}

} // namespace

SortValue::SortValue(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.isEmpty()) {
        m_kind = Kind::Empty;
        return;
    }
    if (takeNumber(trimmed))
        return;
    m_text = folded(trimmed.toString());
    m_text.replace(QChar(u'\0'), QChar(u'\1'));
}

bool SortValue::takeNumber(QStringView text)
{
    const bool isNegative = text.front() == u'-';
    QStringView digits = text.sliced(isNegative || text.front() == u'+' ? 1 : 0);
    const auto *mark =
        std::find_if(digits.begin(), digits.end(), [](QChar c) { return c == u'.' || c == u','; });
    const QStringView integer(digits.begin(), mark);
    const QStringView fraction(mark == digits.end() ? mark : mark + 1, digits.end());
    const qsizetype count = integer.size() + fraction.size();
    if (count == 0 || count > s_mostNumberDigits
        || !std::all_of(integer.begin(), integer.end(), isDecimalDigit)
        || !std::all_of(fraction.begin(), fraction.end(), isDecimalDigit))
        return false;
    m_kind = Kind::Number;
    QByteArray plain = integer.toLatin1() + '.' + fraction.toLatin1();
    m_number = plain.toDouble();
    if (isNegative && m_number != 0)
        m_number = -m_number;
    takeDigits(integer, fraction, isNegative);
    return true;
}

//! Digits that compare as the number does: how many there are, then what they are; of negative
//! numbers all the other way round.
void SortValue::takeDigits(QStringView integer, QStringView fraction, bool isNegative)
{
    while (integer.startsWith(u'0'))
        integer = integer.sliced(1);
    while (fraction.endsWith(u'0'))
        fraction.chop(1);
    m_isExact = integer.size() + fraction.size() <= s_exactDigits;
    m_text = QChar(ushort(integer.size() + 1)) + integer.toString() + fraction.toString();
    if (!isNegative || m_text.size() == 1)
        return;
    for (QChar &character : m_text)
        character = QChar(ushort(0xfffe - character.unicode()));
    m_text.append(QChar(0xffff));
}

int SortValue::compare(const SortValue &other, Qt::SortOrder order) const
{
    if (m_kind != other.m_kind && (m_kind == Kind::Empty || other.m_kind == Kind::Empty))
        return m_kind == Kind::Empty ? 1 : -1;
    int result = 0;
    if (m_kind != other.m_kind)
        result = m_kind < other.m_kind ? -1 : 1;
    else if (m_number != other.m_number)
        result = m_number < other.m_number ? -1 : 1;
    else
        result = m_text.compare(other.m_text);
    return order == Qt::AscendingOrder ? result : -result;
}
