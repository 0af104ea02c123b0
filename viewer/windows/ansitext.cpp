// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "ansitext.h"

#include <algorithm>
#include <array>

namespace {

constexpr QChar s_escape = u'\x1b';
constexpr QChar s_bell = u'\a';

//! One of the eight colours, or of the bright ones, as terminals have them by default.
QColor namedColor(int number)
{
    static constexpr std::array<QRgb, 16> colors {
        0x000000, 0xcd0000, 0x00a000, 0xb08000, 0x0050d0, 0xb000b0, 0x0090a0, 0xc0c0c0,
        0x7f7f7f, 0xff3030, 0x30c030, 0xd0b000, 0x5080ff, 0xe050e0, 0x30c0d0, 0xffffff};
    return QColor(colors[std::size_t(number)]);
}

//! Of the 256: the named ones, a cube of 6 by 6 by 6, and greys.
QColor numberedColor(int number)
{
    if (number < 0 || number > 255)
        return {};
    if (number < 16)
        return namedColor(number);
    if (number >= 232) {
        const int grey = 8 + (number - 232) * 10;
        return QColor(grey, grey, grey);
    }
    const auto level = [](int step) { return step == 0 ? 0 : 55 + step * 40; };
    const int place = number - 16;
    return QColor(level(place / 36), level(place / 6 % 6), level(place % 6));
}

//! A number, or a colour whose parts are between colons. A missing number is a zero.
QList<int> partsOf(QStringView text)
{
    QList<int> parts;
    for (const QStringView part : text.split(u':'))
        parts.append(part.toInt());
    if (parts.first() != 38 && parts.first() != 48)
        return {parts.first()};
    if (parts.size() > 5)
        parts.removeAt(2); // names the space of the colours
    return parts;
}

bool isBetween(QChar character, char16_t first, char16_t last)
{
    return character >= first && character <= last;
}

//! Characters of \a rest, which begins behind "ESC ]", up to the end of that string; 0 without.
qsizetype stringLength(QStringView rest)
{
    for (qsizetype at = 0; at < rest.size(); ++at) {
        if (rest[at] == s_bell)
            return at + 1;
        if (rest[at] == s_escape)
            return at + 1 < rest.size() && rest[at + 1] == u'\\' ? at + 2 : 0;
    }
    return 0;
}

} // namespace

AnsiText::AnsiText(const QString &text)
{
    const QStringView all(text);
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype escape = text.indexOf(s_escape, at);
        const qsizetype end = escape < 0 ? text.size() : escape;
        m_plain += all.sliced(at, end - at);
        at = end;
        if (escape < 0)
            break;
        const qsizetype length = skip(all.sliced(escape + 1));
        if (length == 0)
            m_plain += s_escape;
        at = escape + 1 + length;
    }
    endRun();
}

//! Follows a sequence, \a rest of which is behind its ESC. Returns how much of that belongs to it;
//! 0 if there is none.
qsizetype AnsiText::skip(QStringView rest)
{
    if (rest.startsWith(u']')) {
        const qsizetype length = stringLength(rest.sliced(1));
        return length > 0 ? length + 1 : 0;
    }
    if (!rest.startsWith(u'['))
        return 0;
    qsizetype end = 1;
    while (end < rest.size() && isBetween(rest[end], u' ', u'?'))
        ++end;
    if (end == rest.size() || !isBetween(rest[end], u'@', u'~'))
        return 0;
    const QStringView parameters = rest.sliced(1, end - 1);
    const bool isPlain = std::all_of(parameters.begin(), parameters.end(),
                                     [](QChar c) { return isBetween(c, u'0', u';'); });
    if (rest[end] == u'm' && isPlain)
        setLook(parameters);
    return end + 1;
}

void AnsiText::endRun()
{
    if (m_begin < m_plain.size() && m_look != Look())
        m_runs.append({m_begin, m_plain.size(), m_look});
    m_begin = m_plain.size();
}

void AnsiText::setLook(QStringView parameters)
{
    endRun();
    QList<int> numbers;
    for (const QStringView number : parameters.split(u';'))
        numbers += partsOf(number);
    while (!numbers.isEmpty()) {
        const int number = numbers.takeFirst();
        switch (number) {
        case 0:
            m_look = {};
            break;
        case 1:
        case 22:
            m_look.isBold = number == 1;
            break;
        case 3:
        case 23:
            m_look.isItalic = number == 3;
            break;
        case 4:
        case 24:
            m_look.isUnderlined = number == 4;
            break;
        case 7:
        case 27:
            m_look.isInverse = number == 7;
            break;
        case 9:
        case 29:
            m_look.isStruckOut = number == 9;
            break;
        case 38:
            setColor(&m_look.text, &numbers);
            break;
        case 39:
            m_look.text = QColor();
            break;
        case 48:
            setColor(&m_look.background, &numbers);
            break;
        case 49:
            m_look.background = QColor();
            break;
        default:
            if (number >= 30 && number <= 37)
                m_look.text = namedColor(number - 30);
            else if (number >= 40 && number <= 47)
                m_look.background = namedColor(number - 40);
            else if (number >= 90 && number <= 97)
                m_look.text = namedColor(number - 90 + 8);
            else if (number >= 100 && number <= 107)
                m_look.background = namedColor(number - 100 + 8);
        }
    }
}

//! Takes what follows 38 or 48: a 5 and a number, or a 2 and red, green and blue.
void AnsiText::setColor(QColor *color, QList<int> *parameters)
{
    const int kind = parameters->isEmpty() ? 0 : parameters->takeFirst();
    if (kind == 5 && !parameters->isEmpty())
        *color = numberedColor(parameters->takeFirst());
    if (kind != 2 || parameters->size() < 3)
        return;
    const int red = parameters->takeFirst();
    const int green = parameters->takeFirst();
    const int blue = parameters->takeFirst();
    *color = QColor(qBound(0, red, 255), qBound(0, green, 255), qBound(0, blue, 255));
}
