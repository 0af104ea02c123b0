// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datacell.h"

#include <QLocale>

namespace {

QString shownBytes(const QString &written)
{
    const qsizetype colon = written.indexOf(u':');
    const qint64 size = written.left(colon).toLongLong();
    const QString digits = written.mid(colon + 1).toLower();
    QString shown = size == 1 ? DataCell::tr("1 byte") : DataCell::tr("%L1 bytes").arg(size);
    if (digits.isEmpty())
        return shown;
    shown += u':';
    for (qsizetype i = 0; i < digits.size(); i += 2)
        shown += u' ' + digits.mid(i, 2);
    return size > DataCell::mostBytes ? shown + QStringLiteral(" …") : shown;
}

} // namespace

DataCell::DataCell(const QString &written)
    : m_text(written.mid(1))
{
    if (written.isNull())
        return;
    const QChar letter = written.isEmpty() ? QChar(u't') : written.at(0);
    m_kind = letter == u'n' ? Kind::Number : letter == u'b' ? Kind::Bytes : Kind::Text;
}

QString DataCell::written(const QVariant &value, bool isNumber)
{
    if (value.typeId() == QMetaType::QByteArray) {
        const QByteArray bytes = value.toByteArray();
        return u'b' + QString::number(bytes.size()) + u':'
            + QString::fromLatin1(bytes.left(mostBytes).toHex());
    }
    const QString text = plainText(value);
    return isNumber ? u'n' + text : u't' + text.left(mostText);
}

QString DataCell::plainText(const QVariant &value)
{
    return value.typeId() == QMetaType::Double
        ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
        : value.toString();
}

QString DataCell::shown() const
{
    switch (m_kind) {
    case Kind::Null:
        return QStringLiteral("NULL");
    case Kind::Bytes:
        return shownBytes(m_text);
    case Kind::Number:
        return m_text;
    case Kind::Text:
        break;
    }
    return m_text.size() >= mostText ? m_text + QChar(0x2026) : m_text;
}

QString DataCell::text() const
{
    return m_kind == Kind::Number || m_kind == Kind::Text ? m_text : QString();
}
