// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HEXSTRING_H
#define HEXSTRING_H

#include <QStringBuilder>

#include <type_traits>

/*!
 * \brief An unsigned number in a string builder, as hexadecimal digits.
 *
 * The text always has 2 × sizeof(T) lowercase digits, the least significant one
 * first: the usual fixed-width spelling read backwards.
 * \code
 * const QString text = QStringLiteral("n=") % HexString<unsigned int> {0x1F}; // "n=f1000000"
 * \endcode
 *
 * \since 0.2
 */
template<typename T> struct HexString
{
    static_assert(std::is_unsigned_v<T>, "only unsigned numbers have such a spelling");

    T val; //!< the number
};

//! Makes HexString an operand of Qt's operator%.
template<typename T> struct QConcatenable<HexString<T>>
{
    using type = HexString<T>; //!< what it is about
    using ConvertTo = QString; //!< what it becomes
    enum {
        ExactSize = true
    };

    //! Number of characters, the same for every value.
    static constexpr qsizetype size(const HexString<T> & /*number*/)
    {
        return 2 * qsizetype(sizeof(T));
    }

    //! Writes the digits of \a number to \a out and moves it behind them.
    static void appendTo(const HexString<T> &number, QChar *&out)
    {
        constexpr char16_t digits[] = u"0123456789abcdef";
        T rest = number.val;
        for (qsizetype i = 0; i < size(number); ++i) {
            *out++ = QChar(digits[rest & 0xf]);
            rest = T(rest >> 4);
        }
    }
};

#endif // HEXSTRING_H
