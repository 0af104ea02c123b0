// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "expressionliterals.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype s_mostTexts = 8;
constexpr int s_deepest = 50; // groups within each other

qsizetype shortest(const QStringList &texts)
{
    qsizetype length = 0;
    for (const QString &text : texts)
        length = length == 0 ? text.size() : qMin(length, text.size());
    return length;
}

//! The better ones of two: long ones are rare.
QStringList better(const QStringList &a, const QStringList &b)
{
    const qsizetype lengthOfA = shortest(a);
    const qsizetype lengthOfB = shortest(b);
    if (lengthOfA != lengthOfB)
        return lengthOfA > lengthOfB ? a : b;
    return a.size() <= b.size() ? a : b;
}

/*!
 * \brief Goes through an expression once.
 *
 * Every branch is a sequence of items. A run of characters that stand as they are is one text;
 * a group has the texts of its branches. The best of these are those of the sequence.
 */
class ExpressionReader
{
public:
    explicit ExpressionReader(const QString &expression)
        : m_expression(expression)
    {
    }

    QStringList read()
    {
        QStringList texts = readBranches(0);
        const bool isUnderstood = !m_isStrange && m_at == m_expression.size();
        return isUnderstood && texts.size() <= s_mostTexts ? texts : QStringList();
    }

private:
    //! What is read of one branch.
    struct Branch
    {
        QString run;      //!< characters one after the other, up to here
        QStringList best; //!< of what was before

        void endRun()
        {
            if (!run.isEmpty())
                best = better(best, {std::exchange(run, {})});
        }
    };

    bool isAtEnd() const { return m_isStrange || m_at >= m_expression.size(); }
    QChar peek() const { return isAtEnd() ? QChar() : m_expression.at(m_at); }
    void skip() { m_at += isAtEnd() ? 0 : 1; }
    bool take(QStringView text)
    {
        if (!QStringView(m_expression).sliced(m_at).startsWith(text))
            return false;
        m_at += text.size();
        return true;
    }
    QStringList giveUp()
    {
        m_isStrange = true;
        return {};
    }

    QStringList readBranches(int depth);
    QStringList readBranch(int depth);
    void readItem(Branch *branch, int depth);
    void readGroup(Branch *branch, int depth);
    void readEscape(Branch *branch);
    void readQuoted(Branch *branch);
    void readClass();
    void readName(QChar end);
    void addCharacter(Branch *branch, QChar character);
    int readRepetition();

    const QString m_expression;
    qsizetype m_at = 0;       //!< read up to here
    bool m_isStrange = false; //!< there is something that is not understood
};

QStringList ExpressionReader::readBranches(int depth)
{
    if (depth > s_deepest)
        return giveUp();
    QStringList texts;
    bool isKnown = true;
    do {
        const QStringList branch = readBranch(depth);
        isKnown = isKnown && !branch.isEmpty();
        texts += branch;
    } while (!isAtEnd() && take(u"|"));
    return isKnown ? texts : QStringList();
}

QStringList ExpressionReader::readBranch(int depth)
{
    Branch branch;
    while (!isAtEnd() && peek() != u'|' && peek() != u')')
        readItem(&branch, depth);
    branch.endRun();
    return branch.best;
}

void ExpressionReader::readItem(Branch *branch, int depth)
{
    const QChar next = peek();
    if (next == u'(')
        return readGroup(branch, depth);
    if (next == u'\\')
        return readEscape(branch);
    if (QStringView(u"*+?{").contains(next)) {
        giveUp();
        return;
    }
    if (!QStringView(u".^$[").contains(next)) {
        skip();
        return addCharacter(branch, next);
    }
    branch->endRun();
    if (next == u'[')
        readClass();
    else
        skip();
    readRepetition();
}

//! Takes \a character, which has been read, and how often it stands there.
void ExpressionReader::addCharacter(Branch *branch, QChar character)
{
    const bool isVisible = character.unicode() >= 0x20 && character.unicode() < 0x7f;
    if (!isVisible)
        branch->endRun();
    const int least = readRepetition();
    if (least != 0 && isVisible)
        branch->run += character;
    if (least >= 0)
        branch->endRun();
}

//! How often what was read has to be there at least; −1 if nothing is said about it.
int ExpressionReader::readRepetition()
{
    int least = -1;
    if (take(u"*") || take(u"?")) {
        least = 0;
    } else if (take(u"+")) {
        least = 1;
    } else if (take(u"{")) {
        const auto readNumber = [this] {
            const qsizetype begin = m_at;
            while (peek() >= u'0' && peek() <= u'9')
                skip();
            return m_expression.sliced(begin, m_at - begin);
        };
        const QString number = readNumber();
        if (take(u","))
            readNumber();
        if (number.isEmpty() || !take(u"}")) // not a repetition, or a new kind of them
            giveUp();
        least = number.toInt() > 0 ? 1 : 0;
    }
    if (least >= 0 && !take(u"?"))
        take(u"+"); // as few or as many as there can be
    return least;
}

void ExpressionReader::readGroup(Branch *branch, int depth)
{
    branch->endRun();
    take(u"(");
    bool looksAround = false;
    if (take(u"?=") || take(u"?!") || take(u"?<=") || take(u"?<!"))
        looksAround = true;
    else if (take(u"?<") || take(u"?P<"))
        readName(u'>');
    else if (take(u"?'"))
        readName(u'\'');
    else if (!take(u"?:") && !take(u"?>") && (peek() == u'?' || peek() == u'*'))
        giveUp();
    const QStringList texts = readBranches(depth + 1);
    if (!take(u")"))
        giveUp();
    if (readRepetition() != 0 && !looksAround)
        branch->best = better(branch->best, texts);
}

void ExpressionReader::readName(QChar end)
{
    while (!isAtEnd() && peek() != end)
        skip();
    if (isAtEnd())
        giveUp();
    skip();
}

void ExpressionReader::readEscape(Branch *branch)
{
    take(u"\\");
    const QChar escaped = peek();
    if (take(u"Q"))
        return readQuoted(branch);
    const bool isLetter =
        escaped.unicode() >= 0x80 || escaped.isLetterOrNumber() || escaped.isNull();
    // Other letters have something behind them that belongs to them, or are rare.
    if (isLetter && !QStringView(u"dDwWsShHvVNRXbBAzZGKtnrfea").contains(escaped)) {
        giveUp();
        return;
    }
    skip();
    if (!isLetter)
        return addCharacter(branch, escaped);
    branch->endRun();
    readRepetition();
}

//! What is between \Q and \E. Only the last character of it is repeated.
void ExpressionReader::readQuoted(Branch *branch)
{
    while (!isAtEnd() && !take(u"\\E")) {
        const QChar character = m_expression.at(m_at++);
        const bool isLast = QStringView(m_expression).sliced(m_at).startsWith(u"\\E");
        if (isLast) {
            take(u"\\E");
            return addCharacter(branch, character);
        }
        const bool isVisible = character.unicode() >= 0x20 && character.unicode() < 0x7f;
        if (isVisible)
            branch->run += character;
        else
            branch->endRun();
    }
}

//! A set of characters, in brackets.
void ExpressionReader::readClass()
{
    take(u"[");
    take(u"^");
    take(u"]"); // a character there
    while (!isAtEnd() && peek() != u']') {
        const bool isEscape = take(u"\\");
        // Named sets, and what would hide the end.
        if (isEscape ? QStringView(u"QEc").contains(peek()) : peek() == u'[')
            giveUp();
        skip();
    }
    if (!take(u"]"))
        giveUp();
}

} // namespace

QStringList literalsOf(const QString &expression)
{
    return ExpressionReader(expression).read();
}
