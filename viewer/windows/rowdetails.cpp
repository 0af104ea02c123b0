// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowdetails.h"

#include "basics/hexdump.h"
#include "basics/roles.h"
#include "files/wholerow.h"
#include "indentedjson.h"

#include <algorithm>

namespace {

constexpr qsizetype s_widestName = 24; // characters; values behind longer ones are not aligned

// Tabs and ends of lines are text, and so are the escape sequences of terminals.
bool isStrange(QChar character)
{
    const char16_t code = character.unicode();
    const bool isControl = code < 0x20 || code == 0x7f || code == QChar::ReplacementCharacter;
    return isControl && character != u'\t' && character != u'\n' && character != u'\r'
        && character != u'\x1b';
}

bool isText(const QStringList &fields)
{
    qsizetype characters = 0;
    qsizetype strange = 0;
    for (const QString &field : fields) {
        if (field.contains(QChar(u'\0')))
            return false;
        characters += field.size();
        strange += std::count_if(field.begin(), field.end(), isStrange);
    }
    return strange * 10 <= characters;
}

QString valueText(const QString &value)
{
    const QString json = indentedJson(value, RowDetails::mostText);
    return json.isEmpty() ? value : json;
}

//! Texts of several lines stand below their name.
QString memberText(const QString &name, qsizetype width, const QString &value)
{
    const QString text = valueText(value);
    if (!text.contains(u'\n'))
        return (name + u':').leftJustified(width + 1) + u' ' + text;
    QString indented = text;
    return name + QLatin1String(":\n    ") + indented.replace(u'\n', QLatin1String("\n    "));
}

QString membersText(const QAbstractItemModel *model, const QStringList &fields)
{
    QStringList names;
    qsizetype width = 0;
    for (int column = 0; column < fields.size(); ++column) {
        names << model->headerData(column, Qt::Horizontal).toString();
        if (names.back().size() <= s_widestName)
            width = qMax(width, names.back().size());
    }
    QString text;
    for (qsizetype i = 0; i < fields.size() && text.size() <= RowDetails::mostText; ++i)
        text += (i == 0 ? QString() : QStringLiteral("\n"))
            + memberText(names.at(i), width, fields.at(i));
    return text;
}

} // namespace

RowDetails rowDetails(const QModelIndex &index)
{
    RowDetails details;
    details.text = index.data(int(RowRole::Details)).toString();
    if (!details.text.isEmpty()) {
        details.isDump = true;
        return details;
    }
    WholeRow row = wholeRow(index, RowDetails::mostBytes);
    if (row.isLine)
        row.fields.removeFirst(); // its number
    else if (!row.object.isEmpty())
        row.fields = QStringList {row.object}; // shown as a whole, indented
    bool isCut = row.isCut;
    if (!row.bytes.isEmpty() && !isText(row.fields)) {
        details.isDump = true;
        details.text = hexDump(
            QByteArrayView(row.bytes).first(qMin(row.bytes.size(), RowDetails::mostDumped)));
        if (isCut || row.bytes.size() > RowDetails::mostDumped)
            details.text += QLatin1Char('\n') + QChar(0x2026);
        return details;
    }
    details.text = row.fields.size() == 1 ? valueText(row.fields.front())
                                          : membersText(index.model(), row.fields);
    if (details.text.size() > RowDetails::mostText) {
        details.text.truncate(RowDetails::mostText);
        isCut = true;
    }
    if (isCut && !details.text.endsWith(QChar(0x2026)))
        details.text += QChar(0x2026);
    return details;
}
