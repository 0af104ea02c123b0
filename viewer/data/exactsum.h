// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef EXACTSUM_H
#define EXACTSUM_H

#include "bcdiivalue.h"

#include <QString>

/*!
 * \brief A sum of decimal numbers that loses no digit, or says that it did.
 *
 * Of up to 43 digits before the point and 20 behind it.
 */
class ExactSum
{
public:
    //! Adds \a number, which may have an exponent, \a times times. What is no number, or does not
    //! fit, leaves isExact() false.
    void add(const QString &number, qint64 times = 1);
    //! All that was added is in text(), to the digit.
    bool isExact() const { return m_isExact; }
    //! The sum, without zeros at the end of its fraction; empty where it did not fit.
    QString text() const;

private:
    using Value = BCDIIValue<63, 20>;

    Value m_sum;
    bool m_isExact = true;
};

//! \a number without its exponent, as digits and a point; as it is if it has none, or one beyond
//! ±60.
QString withoutExponent(const QString &number);

#endif // EXACTSUM_H
