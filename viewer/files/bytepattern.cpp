// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bytepattern.h"

#include <algorithm>
#include <cstring>

namespace {

// The Kelvin sign is a K, and the long s an s, when case does not matter.
constexpr char s_kelvinSign[] = "\xe2\x84\xaa";
constexpr char s_longS[] = "\xc5\xbf";

constexpr int s_caseBit = 'a' ^ 'A';
constexpr qsizetype s_span = 32; // places looked at in one go
constexpr qsizetype s_window = 1024;
constexpr qsizetype s_largestWindow = 65536;

char toLower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

char toUpper(char c)
{
    return c >= 'a' && c <= 'z' ? char(c - ('a' - 'A')) : c;
}

// The nearer to the edge of the pattern in question, the later: it overwrites.
void setSkip(std::array<qsizetype, 256> *skips, char c, qsizetype skip)
{
    (*skips)[quint8(toLower(c))] = skip;
    (*skips)[quint8(toUpper(c))] = skip;
}

// Where \a character is first from \a from on, −1 if it is nowhere. Its first byte is
// rare in most texts.
qsizetype indexOf(QByteArrayView bytes, const QByteArray &character, qsizetype from)
{
    const char *const end = bytes.data() + bytes.size();
    const char *place = bytes.data() + from;
    while (end - place >= character.size()) {
        place =
            static_cast<const char *>(std::memchr(place, character.front(), size_t(end - place)));
        if (!place || end - place < character.size())
            break;
        if (std::equal(character.begin(), character.end(), place))
            return place - bytes.data();
        ++place;
    }
    return -1;
}

// Some of what is looked for may be everywhere, and the rest nowhere: one is not looked for
// far behind the other.
qsizetype nextWindow(qsizetype places)
{
    return qMin(2 * places, s_largestWindow);
}

} // namespace

BytePattern::BytePattern(const QByteArray &lower)
    : m_lower(lower)
{
    m_backward.fill(size());
    for (qsizetype i = 0; i < size(); ++i) {
        setSkip(&m_backward, m_lower.at(size() - 1 - i), size() - 1 - i);
    }
    if (m_lower.contains('k'))
        m_alternates << s_kelvinSign;
    if (m_lower.contains('s'))
        m_alternates << s_longS;
}

std::optional<BytePattern> BytePattern::of(const QString &text, char mark)
{
    const bool isVisible = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() >= 0x20 && c.unicode() < 0x7f;
    });
    if (text.isEmpty() || !isVisible)
        return {};
    BytePattern pattern(text.toLatin1().toLower());
    if (mark != 0)
        pattern.m_alternates << QByteArray(1, mark);
    return pattern;
}

bool BytePattern::isAt(const char *place) const
{
    return std::equal(m_lower.begin(), m_lower.end(), place,
                      [](char wanted, char c) { return wanted == toLower(c); });
}

// Where the pattern may begin, from the first of s_span places on: both of its edges are there
// in some case, or what differs from them in the same bit. The compiler looks at all of the
// places at once.
qsizetype BytePattern::firstEdges(const char *places) const
{
    std::array<quint8, s_span> isEdge;
    const char *const ends = places + size() - 1;
    const int front = m_lower.front() | s_caseBit;
    const int back = m_lower.back() | s_caseBit;
    for (std::size_t i = 0; i < s_span; ++i) {
        isEdge[i] = quint8(quint8((places[i] | s_caseBit) == front)
                           & quint8((ends[i] | s_caseBit) == back));
    }
    std::array<quint64, s_span / sizeof(quint64)> words;
    std::memcpy(words.data(), isEdge.data(), s_span);
    if (std::all_of(words.begin(), words.end(), [](quint64 word) { return word == 0; }))
        return s_span;
    return std::find(isEdge.begin(), isEdge.end(), 1) - isEdge.begin();
}

qsizetype BytePattern::firstExact(QByteArrayView bytes) const
{
    const qsizetype end = bytes.size() - size() + 1;
    qsizetype place = 0;
    while (place + s_span <= end) {
        const qsizetype step = firstEdges(bytes.data() + place);
        place += step;
        if (step == s_span)
            continue;
        if (isAt(bytes.data() + place))
            return place;
        ++place;
    }
    for (; place < end; ++place) {
        if (isAt(bytes.data() + place))
            return place;
    }
    return -1;
}

qsizetype BytePattern::first(QByteArrayView bytes) const
{
    if (m_alternates.isEmpty())
        return firstExact(bytes);
    qsizetype begin = 0;
    for (qsizetype places = s_window; begin < bytes.size(); places = nextWindow(places)) {
        const qsizetype room = qMin(places + longest() - 1, bytes.size() - begin);
        const qsizetype found = firstIn(bytes.sliced(begin, room));
        if (found >= 0 && found < places)
            return begin + found;
        begin += places;
    }
    return -1;
}

qsizetype BytePattern::last(QByteArrayView bytes) const
{
    if (m_alternates.isEmpty())
        return lastIn(bytes);
    qsizetype end = bytes.size();
    for (qsizetype places = s_window; end > 0; places = nextWindow(places)) {
        const qsizetype begin = qMax<qsizetype>(end - places, 0);
        const qsizetype room = qMin(end - begin + longest() - 1, bytes.size() - begin);
        const qsizetype found = lastIn(bytes.sliced(begin, room));
        if (found >= 0)
            return begin + found;
        end = begin;
    }
    return -1;
}

qsizetype BytePattern::longest() const
{
    qsizetype longest = size();
    for (const QByteArray &alternate : m_alternates)
        longest = qMax(longest, alternate.size());
    return longest;
}

qsizetype BytePattern::firstIn(QByteArrayView bytes) const
{
    qsizetype found = firstExact(bytes);
    for (const QByteArray &alternate : m_alternates) {
        const QByteArrayView before = bytes.first(found < 0 ? bytes.size() : found);
        const qsizetype place = indexOf(before, alternate, 0);
        found = place < 0 ? found : place;
    }
    return found;
}

// Each step looks at the byte where the pattern would begin: that byte tells how far away
// the next place is at least.
qsizetype BytePattern::lastIn(QByteArrayView bytes) const
{
    qsizetype found = -1;
    for (qsizetype i = bytes.size() - size(); i >= 0;) {
        const qsizetype skip = m_backward[quint8(bytes[i])];
        if (skip == 0 && isAt(bytes.data() + i)) {
            found = i;
            break;
        }
        i -= qMax<qsizetype>(skip, 1);
    }
    for (const QByteArray &alternate : m_alternates) {
        qsizetype place = indexOf(bytes, alternate, qMax<qsizetype>(found, 0));
        for (; place >= 0; place = indexOf(bytes, alternate, place + 1))
            found = qMax(found, place);
    }
    return found;
}
