// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "showntexts_p.h"

#include "abstractitemviewfind.h"
#include "itemdelegate.h"
#include "styleditemdelegate.h"

#include <QAbstractItemView>
#include <QStyledItemDelegate>
#include <QVariant>

#include <algorithm>
#include <array>
#include <typeinfo>

namespace FindTexts {

constexpr QChar s_lineSeparator(0x2028);
constexpr int s_mostColumns = 1024; // whose delegates are remembered

static bool isNumber(int type)
{
    return type == QMetaType::Int || type == QMetaType::UInt || type == QMetaType::LongLong
        || type == QMetaType::ULongLong || type == QMetaType::Double;
}

//! Whether displayText() is that of one of these classes and no other.
static bool isWellKnown(const QStyledItemDelegate &delegate)
{
    const std::type_info &type = typeid(delegate);
    return type == typeid(QStyledItemDelegate) || type == typeid(StyledItemDelegate)
        || type == typeid(Vantix::ItemDelegate);
}

//! What the engine shares with classes derived from it.
struct Trimming : AbstractItemViewFind
{
    using AbstractItemViewFind::trim;
};

ShownTexts::ShownTexts(const QAbstractItemView *view, Qt::CaseSensitivity sensitivity)
    : m_view(view)
    , m_locale(view->locale())
    , m_sensitivity(sensitivity)
    , m_separator(m_locale.groupSeparator())
    , m_numbers(m_locale)
{
}

bool ShownTexts::accept(const QVariant &data, const QString &text, int number)
{
    const Needles &searched = needles(text);
    const Column &shown = column(number);
    const int type = data.typeId();
    if (isNumber(type))
        return acceptNumber(data, searched, shown);
    // The text that a delegate shows differs from the value in its line breaks only.
    if (type == QMetaType::QString && shown.isPlain && !searched.hasBreak)
        return searched.text.isIn(*static_cast<const QString *>(data.constData()));
    return searched.text.isIn(displayed(data, shown));
}

bool ShownTexts::acceptNumber(const QVariant &data, const Needles &searched, const Column &shown)
{
    if (shown.hasPlainNumbers) {
        if (!searched.mayBeInNumber && NumberWriter::isPlain(data))
            return false;
        const std::string_view text = m_numbers.plain(data);
        if (!text.empty() && !searched.plainNumber.empty())
            return text.find(searched.plainNumber) != text.npos;
    }
    return searched.number.isIn(trimmed(displayed(data, shown)));
}

QString ShownTexts::displayed(const QVariant &data, const Column &shown) const
{
    return shown.delegate ? shown.delegate->displayText(data, m_locale) : data.toString();
}

QString ShownTexts::trimmed(QString text)
{
    Trimming::trim(text, m_separator);
    return text;
}

const Needles &ShownTexts::needles(const QString &text)
{
    if (!m_needles || m_needles->text.text() != text) {
        const bool hasBreak = text.contains(u'\n') || text.contains(s_lineSeparator);
        const QString number = trimmed(text);
        m_needles = {Needle(text, m_sensitivity), Needle(number, m_sensitivity), hasBreak,
                     m_numbers.asPlain(number), m_numbers.mayWrite(number)};
    }
    return *m_needles;
}

ShownTexts::Column &ShownTexts::column(int number)
{
    if (number < 0 || number >= s_mostColumns) {
        m_farColumn = askedColumn(number);
        return m_farColumn;
    }
    if (size_t(number) >= m_columns.size())
        m_columns.resize(size_t(number) + 1);
    Column &known = m_columns[size_t(number)];
    if (!known.isKnown)
        known = askedColumn(number);
    return known;
}

ShownTexts::Column ShownTexts::askedColumn(int number)
{
    Column asked;
    asked.isKnown = true;
    if (!m_view)
        return asked;
    const auto *own = qobject_cast<QStyledItemDelegate *>(m_view->itemDelegateForColumn(number));
    asked.delegate = own ? own : qobject_cast<QStyledItemDelegate *>(m_view->itemDelegate());
    asked.isPlain = asked.delegate && isWellKnown(*asked.delegate);
    asked.hasPlainNumbers = asked.isPlain && writesPlainly(*asked.delegate);
    return asked;
}

//! Which digits, signs and precision a delegate uses is told by samples.
bool ShownTexts::writesPlainly(const QStyledItemDelegate &delegate)
{
    static const std::array<QVariant, 3> samples {-1234567890, -9876.54321, 0.000125};
    return std::all_of(samples.begin(), samples.end(), [&](const QVariant &sample) {
        return m_numbers.text(sample) == trimmed(delegate.displayText(sample, m_locale));
    });
}

} // namespace FindTexts
