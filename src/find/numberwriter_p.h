// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NUMBERWRITER_P_H
#define NUMBERWRITER_P_H

#include <QLocale>
#include <QString>
#include <QStringView>

#include <array>
#include <string>
#include <string_view>

class QVariant;

namespace FindTexts {

/*!
 * \brief Writes numbers as a delegate of Qt's does, but without group separators.
 *
 * Making that text by the locale and taking the separators out costs several times more.
 */
class NumberWriter
{
public:
    explicit NumberWriter(const QLocale &locale);

    //! The text of \a value, valid until the next call. Empty if only the locale knows
    //! how to write it.
    QStringView text(const QVariant &value);

    //! The same with the signs of the C locale: '-' and '.'.
    std::string_view plain(const QVariant &value);
    //! What in plain() stands where \a text stands in text(). Empty if it cannot be there.
    std::string asPlain(const QString &text) const;

    //! Whether \a text has no characters but those of plain numbers.
    bool mayWrite(const QString &text) const;
    //! Whether a number, which is an integer or double, is written with digits, a minus and a
    //! point only, by whomever.
    static bool isPlain(const QVariant &number);

private:
    const char *write(const QVariant &value);

    QString m_minus;
    QString m_point;
    std::array<char, 32> m_ascii;
    std::array<char16_t, 32> m_text;
};

} // namespace FindTexts

#endif // NUMBERWRITER_P_H
