// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "asciiexpression.h"

#include <algorithm>
#include <bitset>

namespace {

constexpr int s_bits = 64;

using Set = std::bitset<128>;

Set rangeOf(QChar first, QChar last)
{
    Set set;
    for (char16_t c = first.unicode(); c <= last.unicode(); ++c)
        set.set(c);
    return set;
}

//! The set that \a letter stands for behind a backslash; empty if none is known.
Set setNamed(QChar letter)
{
    const Set digits = rangeOf(u'0', u'9');
    const Set words = digits | rangeOf(u'a', u'z') | rangeOf(u'A', u'Z') | rangeOf(u'_', u'_');
    const Set blanks = rangeOf(u'\t', u'\r') | rangeOf(u' ', u' ');
    switch (letter.unicode()) {
    case u'd':
        return digits;
    case u'D':
        return ~digits;
    case u'w':
        return words;
    case u'W':
        return ~words;
    case u's':
        return blanks;
    case u'S':
        return ~blanks;
    default:
        return {};
    }
}

Set inBothCases(const Set &set)
{
    Set both = set;
    for (std::size_t c = 'a'; c <= 'z'; ++c) {
        const std::size_t upper = c - 'a' + 'A';
        both[c] = both[upper] = set[c] || set[upper];
    }
    return both;
}

bool isPlain(QChar c)
{
    return c.unicode() >= 0x20 && c.unicode() < 0x7f;
}

} // namespace

//! Goes through an expression once; what is not simple ends it.
class AsciiExpressionReader
{
public:
    AsciiExpressionReader(const QString &expression, bool matchesCase)
        : m_text(expression)
        , m_matchesCase(matchesCase)
    {
    }

    std::optional<AsciiExpression> read()
    {
        do {
            if (!readSequence())
                return {};
        } while (take(u'|'));
        return m_at == m_text.size() ? std::optional(m_made) : std::nullopt;
    }

private:
    //! How often something is there.
    struct Count
    {
        int least = 1;
        int most = 1; //!< −1 without end
    };

    QChar peek() const { return m_at < m_text.size() ? m_text.at(m_at) : QChar(); }
    bool take(QChar c)
    {
        const bool isThere = m_at < m_text.size() && m_text.at(m_at) == c;
        m_at += isThere;
        return isThere;
    }

    bool readSequence();
    bool readItem();
    std::optional<Set> readSet();
    std::optional<Set> readBrackets();
    std::optional<Set> readEscape();
    std::optional<Count> readCount();
    std::optional<Count> readBraces();
    std::optional<int> readNumber();
    bool add(const Set &set, Count count);
    bool addPlace(const Set &set, bool repeats, bool isOptional);

    const QString m_text;
    const bool m_matchesCase;
    qsizetype m_at = 0;     //!< read up to here
    int m_bit = 0;          //!< the next place
    AsciiExpression m_made; //!< up to here
};

bool AsciiExpressionReader::readSequence()
{
    if (m_bit >= s_bits)
        return false;
    (take(u'^') ? m_made.m_startsAtBegin : m_made.m_starts) |= quint64(1) << m_bit;
    while (m_at < m_text.size() && peek() != u'|' && peek() != u'$') {
        if (!readItem())
            return false;
    }
    if (m_bit >= s_bits)
        return false;
    (take(u'$') ? m_made.m_endsAtEnd : m_made.m_ends) |= quint64(1) << m_bit++;
    return true;
}

bool AsciiExpressionReader::readItem()
{
    const std::optional<Set> set = readSet();
    const std::optional<Count> count = set ? readCount() : std::nullopt;
    return count && add(*set, *count);
}

std::optional<Set> AsciiExpressionReader::readSet()
{
    const QChar c = peek();
    if (!isPlain(c) || QStringView(u"()*+?{^").contains(c))
        return {};
    ++m_at;
    if (c == u'.')
        return Set().set();
    if (c == u'[')
        return readBrackets();
    const std::optional<Set> set = c == u'\\' ? readEscape() : Set().set(c.unicode());
    if (set && !m_matchesCase)
        return inBothCases(*set);
    return set;
}

//! Behind the backslash.
std::optional<Set> AsciiExpressionReader::readEscape()
{
    const QChar c = peek();
    if (!isPlain(c))
        return {};
    ++m_at;
    if (!c.isLetterOrNumber())
        return Set().set(c.unicode());
    const Set set = setNamed(c);
    return set.any() ? std::optional(set) : std::nullopt;
}

//! Behind the opening one.
std::optional<Set> AsciiExpressionReader::readBrackets()
{
    const bool isOthers = take(u'^');
    Set set;
    // A bracket or a hyphen that stands for itself there is rare.
    while (!take(u']')) {
        const QChar c = peek();
        if (!isPlain(c) || c == u'[' || c == u'-' || c == u']')
            return {};
        ++m_at;
        if (c == u'\\') {
            const std::optional<Set> escaped = readEscape();
            if (!escaped || peek() == u'-')
                return {};
            set |= *escaped;
        } else if (take(u'-')) {
            const QChar last = peek();
            if (!isPlain(last) || QStringView(u"[]\\").contains(last) || last < c)
                return {};
            ++m_at;
            set |= rangeOf(c, last);
        } else {
            set.set(c.unicode());
        }
        if (peek() == u']' && set.none())
            return {};
    }
    if (set.none())
        return {};
    if (!m_matchesCase)
        set = inBothCases(set);
    return isOthers ? ~set : set;
}

std::optional<AsciiExpressionReader::Count> AsciiExpressionReader::readCount()
{
    std::optional<Count> count = Count();
    bool isGiven = true;
    if (take(u'*'))
        count = {0, -1};
    else if (take(u'+'))
        count = {1, -1};
    else if (take(u'?'))
        count = {0, 1};
    else if (take(u'{'))
        count = readBraces();
    else
        isGiven = false;
    // As few as there can be are as good; that none are given back is not simple.
    if (isGiven && !take(u'?') && peek() == u'+')
        return {};
    return count;
}

std::optional<AsciiExpressionReader::Count> AsciiExpressionReader::readBraces()
{
    const std::optional<int> least = readNumber();
    if (!least)
        return {};
    Count count {*least, *least};
    if (take(u',')) {
        const std::optional<int> most = readNumber();
        if (!most && peek() != u'}')
            return {};
        count.most = most.value_or(-1);
    }
    const bool isInOrder = count.most < 0 || count.most >= count.least;
    return take(u'}') && isInOrder ? std::optional(count) : std::nullopt;
}

//! Up to 99.
std::optional<int> AsciiExpressionReader::readNumber()
{
    const qsizetype begin = m_at;
    while (peek() >= u'0' && peek() <= u'9')
        ++m_at;
    const qsizetype digits = m_at - begin;
    if (digits == 0 || digits > 2)
        return {};
    return m_text.sliced(begin, digits).toInt();
}

bool AsciiExpressionReader::add(const Set &set, Count count)
{
    const int places = std::max({count.least, count.most, count.most < 0 ? 1 : 0});
    for (int place = 0; place < places; ++place) {
        const bool isLast = place == places - 1;
        if (!addPlace(set, count.most < 0 && isLast, place >= count.least))
            return false;
    }
    return true;
}

bool AsciiExpressionReader::addPlace(const Set &set, bool repeats, bool isOptional)
{
    if (m_bit >= s_bits)
        return false;
    const quint64 bit = quint64(1) << m_bit++;
    for (std::size_t c = 0; c < set.size(); ++c)
        m_made.m_takes[c] |= set[c] ? bit : 0;
    m_made.m_repeats |= repeats ? bit : 0;
    m_made.m_optional |= isOptional ? bit : 0;
    return true;
}

std::optional<AsciiExpression> AsciiExpression::of(const QString &expression, bool matchesCase)
{
    return AsciiExpressionReader(expression, matchesCase).read();
}

//! \a places and those that can be reached from them without a character.
quint64 AsciiExpression::withSkipped(quint64 places) const
{
    for (quint64 more = places & m_optional; more != 0; more &= m_optional) {
        more = (more << 1) & ~places;
        places |= more;
    }
    return places;
}

bool AsciiExpression::isIn(QByteArrayView text) const
{
    quint64 next = withSkipped(m_starts | m_startsAtBegin);
    const quint64 always = withSkipped(m_starts);
    for (const char character : text) {
        if (next & m_ends)
            return true;
        const quint64 taken = next & m_takes[quint8(character) & 0x7f];
        next = always;
        if (taken != 0)
            next |= withSkipped((taken << 1) | (taken & m_repeats));
    }
    return (next & (m_ends | m_endsAtEnd)) != 0;
}
