// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sharedsyntax.h"

#include <QString>

namespace {

constexpr int s_mostTimes = 1000; // that RE2 repeats something

bool isPrintable(QChar c)
{
    return c.unicode() >= 0x20 && c.unicode() < 0x7f;
}

//! Goes through an expression once.
class SyntaxReader
{
public:
    explicit SyntaxReader(QStringView expression)
        : m_text(expression)
    {
    }

    bool read()
    {
        while (m_at < m_text.size()) {
            if (!readItem() || !readCount())
                return false;
        }
        return true;
    }

private:
    QChar peek() const { return m_at < m_text.size() ? m_text.at(m_at) : QChar(); }
    bool take(QChar c)
    {
        const bool isThere = m_at < m_text.size() && m_text.at(m_at) == c;
        m_at += isThere;
        return isThere;
    }

    bool readItem();
    bool readEscape(QStringView letters);
    bool readSet();
    bool readMember(bool *isRange);
    bool readCount();
    bool readBraces();
    int readNumber();

    const QStringView m_text;
    qsizetype m_at = 0;         //!< read up to here
    bool m_isAssertion = false; //!< the last item takes no character
};

bool SyntaxReader::readItem()
{
    const QChar c = peek();
    if (!isPrintable(c) || c == u'{')
        return false;
    ++m_at;
    m_isAssertion = c == u'^' || c == u'$';
    if (c == u'\\') {
        m_isAssertion = peek() == u'b' || peek() == u'B';
        return readEscape(u"dDwWsSbB");
    }
    if (c == u'[')
        return readSet();
    if (c == u'(')
        return peek() != u'*' && (!take(u'?') || take(u':'));
    return true;
}

//! Behind the backslash: one of the \a letters, or a sign that stands for itself.
bool SyntaxReader::readEscape(QStringView letters)
{
    const QChar c = peek();
    ++m_at;
    return isPrintable(c) && (!c.isLetterOrNumber() || letters.contains(c));
}

//! Behind the opening bracket.
bool SyntaxReader::readSet()
{
    take(u'^');
    if (peek() == u']')
        return false;
    take(u'-');
    while (!take(u']')) {
        bool isRange = false;
        if (!readMember(&isRange))
            return false;
        // At the end of a set, a hyphen is one.
        if (take(u'-') && peek() != u']' && (isRange || !readMember(&isRange) || isRange))
            return false;
    }
    return true;
}

//! \a isRange: it stands for several characters, and cannot be the end of a range.
bool SyntaxReader::readMember(bool *isRange)
{
    const QChar c = peek();
    if (!isPrintable(c) || c == u'[' || c == u'-' || c == u']')
        return false;
    ++m_at;
    *isRange = c == u'\\' && peek().isLetter();
    return c != u'\\' || readEscape(u"dDwWsS");
}

bool SyntaxReader::readCount()
{
    const qsizetype begin = m_at;
    if (!take(u'*') && !take(u'+') && !take(u'?') && take(u'{') && !readBraces())
        return false;
    if (m_at == begin)
        return true;
    take(u'?');
    // What is never given back, or said twice.
    return !m_isAssertion && !QStringView(u"*+?{").contains(peek().isNull() ? QChar(u'x') : peek());
}

//! Behind the opening one.
bool SyntaxReader::readBraces()
{
    const int least = readNumber();
    int most = least;
    if (take(u','))
        most = peek() == u'}' ? s_mostTimes : readNumber();
    return least >= 0 && most >= least && most <= s_mostTimes && take(u'}');
}

//! −1 if there is none, or one that is too long.
int SyntaxReader::readNumber()
{
    const qsizetype begin = m_at;
    while (peek() >= u'0' && peek() <= u'9')
        ++m_at;
    const qsizetype digits = m_at - begin;
    return digits == 0 || digits > 4 ? -1 : m_text.sliced(begin, digits).toInt();
}

} // namespace

bool hasSharedSyntax(QStringView expression)
{
    return SyntaxReader(expression).read();
}
