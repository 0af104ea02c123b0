// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NUMBERSUMS_H
#define NUMBERSUMS_H

#include "bcdii.h"

#include <QString>

#include <array>

/*!
 * \brief Adds up decimal numbers of up to 63 digits, exactly.
 *
 * A number has an optional sign, digits, and a fraction behind a point or a comma. Which of
 * the two it is the first fraction tells; with the other one a text is no number. Digits
 * are not grouped: a text with two points or commas is no number, and one with a single
 * comma has a fraction. Nor are there exponents or percent signs.
 */
class NumberSums
{
public:
    //! Counts \a text, white space around it left out, among the numbers or among the others.
    void add(const QString &text);

    int count() const { return m_count; }
    //! Texts that are no numbers, or numbers of more than 63 digits.
    int others() const { return m_others; }

    //! With as many fraction digits as any of the numbers has; empty without numbers, or if
    //! the sum and these have more than 63 digits together.
    QString sum() const;
    //! With two fraction digits more, rounded to nearest, halves away from zero; empty if
    //! sum() is.
    QString mean() const;
    //! As they stand in their text; empty without numbers.
    //! @{
    QString minimum() const { return m_minimum.text; }
    QString maximum() const { return m_maximum.text; }
    //! @}

private:
    struct Number
    {
        BCDIIType type = 0;
        std::array<quint8, 33> bytes {}; //!< as described in bcdii.h
        QString text;                    //!< as it was given
    };

    bool parse(const QString &text, Number *number);
    void addToSum(const Number &number);
    QByteArray digits(bool *isNegative) const;
    QString withFraction(QByteArray digits, qsizetype fraction, bool isNegative) const;

    Number m_sum;          //!< of all; NaN if it does not fit
    Number m_minimum;      //!< the first of the smallest
    Number m_maximum;      //!< the first of the largest
    int m_fraction = 0;    //!< fraction digits of m_sum
    char m_mark = 0;       //!< before fractions; 0 until there is one
    int m_count = 0;       //!< numbers
    int m_others = 0;      //!< see others()
    bool m_sumFits = true; //!< m_sum is a number
};

#endif // NUMBERSUMS_H
