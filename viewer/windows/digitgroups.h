// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DIGITGROUPS_H
#define DIGITGROUPS_H

#include <QLocale>
#include <QString>

/*!
 * \brief Numbers as a locale groups their digits: 1234567.5 as 1,234,567.5.
 *
 * A number has an optional sign, digits, and a fraction behind a point or a comma, which stays as
 * it is. All else is left alone: numbers that begin with a 0 and go on, as codes do, hexadecimal
 * digits, exponents, dates, times, versions and what has groups already. No digit changes.
 *
 * A point never separates groups: in files it is what fractions stand behind. Where the locale has
 * one, and where a number has its own fraction behind what the locale has, a narrow space stands
 * between groups.
 */
class DigitGroups
{
public:
    //! As \a locale groups digits; by three, if it tells nothing.
    explicit DigitGroups(const QLocale &locale);

    //! \a text with groups; the same if it is no number, or has too few digits.
    QString grouped(const QString &text) const;

    //! Where in grouped(\a text) the character \a place of \a text is, or its end.
    qsizetype placeOf(qsizetype place, const QString &text) const;

private:
    //! The digits before a fraction.
    struct Integer
    {
        qsizetype begin = 0; //!< characters
        qsizetype end = 0;   //!< the same; begin if there is nothing to group
        QChar mark;          //!< of the fraction; null without one
    };

    static Integer integerOf(const QString &text);
    bool isSeam(qsizetype digitsBehind) const;
    QString separatorFor(const Integer &integer) const;

    QString m_separator;
    int m_last = 3;  //!< digits of the last group
    int m_other = 3; //!< of those before
    int m_least = 4; //!< digits of the shortest number that is grouped
};

#endif // DIGITGROUPS_H
