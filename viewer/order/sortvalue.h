// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SORTVALUE_H
#define SORTVALUE_H

#include <QString>

/*!
 * \brief What a cell is sorted by.
 *
 * Numbers come before other texts, and go by their value, exactly: an optional sign, digits, and a
 * fraction behind a point or a comma. Other texts go by their characters, whatever their case and
 * accents. Cells without text come last in either order.
 */
class SortValue
{
public:
    enum class Kind {
        Number,
        Text,
        Empty
    };

    //! Of a cell that shows \a text.
    explicit SortValue(const QString &text);

    Kind kind() const { return m_kind; }
    //! The number, rounded to a double; 0 for other kinds.
    double number() const { return m_number; }
    //! Numbers with equal number() are equal, if both tell this.
    bool isExact() const { return m_isExact; }
    //! Stands in the order of the values among those that are of the same kind, and have an equal
    //! number(). Has no null characters.
    const QString &text() const { return m_text; }

    //! Below 0 if this comes before \a other in \a order, above if it comes behind, else 0.
    int compare(const SortValue &other, Qt::SortOrder order) const;

private:
    bool takeNumber(QStringView text);
    void takeDigits(QStringView integer, QStringView fraction, bool isNegative);

    Kind m_kind = Kind::Text;
    bool m_isExact = true;
    double m_number = 0;
    QString m_text;
};

#endif // SORTVALUE_H
