// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BYTEPATTERN_H
#define BYTEPATTERN_H

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <optional>

/*!
 * \brief Finds places in UTF-8 text that may show an ASCII text, in upper or lower case.
 *
 * Looking at bytes is some ten times as fast as decoding every line. Whoever finds a
 * place has to look at the text there.
 */
class BytePattern
{
public:
    //! Nothing for a text that is empty or has other than visible ASCII characters and
    //! blanks. Every byte \a mark is a place, too, unless it is 0.
    static std::optional<BytePattern> of(const QString &text, char mark = 0);

    qsizetype size() const { return m_lower.size(); }

    //! The first such place in \a bytes, −1 if there is none.
    qsizetype first(QByteArrayView bytes) const;
    //! The last such place in \a bytes, −1 if there is none.
    qsizetype last(QByteArrayView bytes) const;

private:
    using Skips = std::array<qsizetype, 256>;

    explicit BytePattern(const QByteArray &lower);
    bool isAt(const char *place) const;
    qsizetype firstEdges(const char *places) const;
    qsizetype firstExact(QByteArrayView bytes) const;
    qsizetype firstIn(QByteArrayView bytes) const;
    qsizetype lastIn(QByteArrayView bytes) const;
    qsizetype longest() const;

    QByteArray m_lower;             //!< in lower case
    Skips m_backward;               //!< by the byte below the first one
    QList<QByteArray> m_alternates; //!< what is a place as well
};

#endif // BYTEPATTERN_H
