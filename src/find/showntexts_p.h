// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SHOWNTEXTS_P_H
#define SHOWNTEXTS_P_H

#include "needle_p.h"
#include "numberwriter_p.h"

#include <QLocale>
#include <QPointer>
#include <QString>

#include <optional>
#include <vector>

class QAbstractItemView;
class QStyledItemDelegate;
class QVariant;

namespace FindTexts {

/*!
 * \brief Tells whether cells show a text.
 *
 * Delegates, locale and separator are asked for once, since they cost more than
 * comparing.
 */
class ShownTexts
{
public:
    ShownTexts(const QAbstractItemView *view, Qt::CaseSensitivity sensitivity);

    bool accept(const QVariant &data, const QString &text, int number);

private:
    struct Column
    {
        QPointer<const QStyledItemDelegate> delegate; //!< null for plain strings
        bool isKnown = false;                         //!< was asked for
        bool isPlain = false;                         //!< texts are shown as they are
        bool hasPlainNumbers = false;                 //!< NumberWriter writes the same
    };

    QString trimmed(QString text);
    Column &column(int number);
    Column askedColumn(int number);
    bool writesPlainly(const QStyledItemDelegate &delegate);
    const Needles &needles(const QString &text);
    bool acceptNumber(const QVariant &data, const Needles &searched, const Column &shown);
    QString displayed(const QVariant &data, const Column &shown) const;

    QPointer<const QAbstractItemView> m_view;
    QLocale m_locale;
    Qt::CaseSensitivity m_sensitivity;
    QString m_separator; //!< of groups of digits
    NumberWriter m_numbers;
    std::optional<Needles> m_needles; //!< for the last text
    std::vector<Column> m_columns;
    Column m_farColumn; //!< the last that is too far right for m_columns
};

} // namespace FindTexts

#endif // SHOWNTEXTS_P_H
