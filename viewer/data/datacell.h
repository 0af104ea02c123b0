// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATACELL_H
#define DATACELL_H

#include <QCoreApplication>
#include <QString>
#include <QVariant>

/*!
 * \brief What a cell of a table has, as queries write it: a letter for its kind, and a text.
 *
 * n and a number to the digit that the engine gives, t and a text, b and the size of some bytes, a
 * colon, and their beginning as hexadecimal digits. NULL is a null string.
 */
class DataCell
{
    Q_DECLARE_TR_FUNCTIONS(DataCell)

public:
    //! What there may be.
    enum class Kind {
        Null,
        Number,
        Text,
        Bytes
    };

    //! Reads \a written; a text without a letter is an empty text.
    explicit DataCell(const QString &written);

    //! What queries write of \a value, which is not NULL, where the engine does not.
    static QString written(const QVariant &value, bool isNumber);
    //! \a value as a text; of a binary number as few digits as tell it from all others.
    static QString plainText(const QVariant &value);

    Kind kind() const { return m_kind; }
    //! For the user: "NULL", a number, a text, or "1,024 bytes: 89 50 4e 47 …". Long texts end
    //! with an ellipsis, as queries cut them.
    QString shown() const;
    //! A number or a text as it is; else nothing.
    QString text() const;

    static constexpr int mostText = 65536; //!< characters that are read of a text
    static constexpr int mostBytes = 32;   //!< bytes that are read of a value

private:
    Kind m_kind = Kind::Null;
    QString m_text; //!< behind the letter
};

#endif // DATACELL_H
