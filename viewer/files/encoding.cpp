// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "encoding.h"

#include <QHash>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

using Flag = QStringConverter::Flag;

constexpr int s_asciiCount = 128;

// Qt knows this encoding only if it was built with ICU, and files without any mark shall
// look the same everywhere. Its other 96 upper characters are those of Latin-1.
constexpr std::array<char16_t, 32> s_windows1252 {
    0x20ac, 0xfffd, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xfffd, 0x017d, 0xfffd, 0xfffd, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0xfffd, 0x017e, 0x0178};

struct Mark
{
    const char *bytes;
    qsizetype length;
    QStringConverter::Encoding encoding;
    const char *name;
};

// The mark of UTF-32 begins like that of UTF-16.
constexpr Mark s_marks[] {
    {"\xef\xbb\xbf", 3, QStringConverter::Utf8, "UTF-8"},
    {"\xff\xfe\0\0", 4, QStringConverter::Utf32LE, "UTF-32LE"},
    {"\0\0\xfe\xff", 4, QStringConverter::Utf32BE, "UTF-32BE"},
    {"\xff\xfe", 2, QStringConverter::Utf16LE, "UTF-16LE"},
    {"\xfe\xff", 2, QStringConverter::Utf16BE, "UTF-16BE"},
};

bool isAt(QByteArrayView bytes, const Mark &mark)
{
    return bytes.startsWith(QByteArrayView(mark.bytes, mark.length));
}

bool isAscii(QByteArrayView bytes)
{
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char byte) { return quint8(byte) >= s_asciiCount; });
}

QByteArrayView withoutPartialUtf8(QByteArrayView bytes)
{
    qsizetype continuations = 0;
    while (continuations < 3 && continuations < bytes.size()
           && (quint8(bytes[bytes.size() - 1 - continuations]) & 0xc0) == 0x80)
        ++continuations;
    const qsizetype lead = bytes.size() - 1 - continuations;
    if (lead >= 0 && quint8(bytes[lead]) >= 0xc0)
        bytes.truncate(lead);
    return bytes;
}

// Qt takes what is no character in UTF-32 for one, and makes stray surrogates of it.
QString decodeUtf32(QByteArrayView bytes, bool isBigEndian)
{
    QString text;
    for (qsizetype i = 0; i < bytes.size(); i += 4) {
        const char *const unit = bytes.data() + i;
        char32_t code = QChar::ReplacementCharacter;
        if (bytes.size() - i >= 4)
            code = isBigEndian ? qFromBigEndian<quint32>(unit) : qFromLittleEndian<quint32>(unit);
        const bool isCharacter = code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
        if (i > 0 || code != QChar::ByteOrderMark)
            text += QChar::fromUcs4(isCharacter ? code : char32_t(QChar::ReplacementCharacter));
    }
    return text;
}

} // namespace

Encoding::Encoding()
    : Encoding(QStringConverter::Utf8, QStringLiteral("UTF-8"))
{
}

Encoding::Encoding(Kind kind, const QString &name)
    : m_kind(kind)
    , m_name(name)
{
}

Encoding::Encoding(const QString &upper, const QString &name)
    : m_kind(QStringConverter::Latin1)
    , m_upper(upper)
    , m_name(name)
{
}

Encoding Encoding::windows1252()
{
    QString upper(s_asciiCount, Qt::Uninitialized);
    for (int i = 0; i < s_asciiCount; ++i) {
        const bool isLatin1 = i >= int(s_windows1252.size());
        upper[i] = isLatin1 ? QChar(s_asciiCount + i) : QChar(s_windows1252[size_t(i)]);
    }
    return {upper, QStringLiteral("Windows-1252")};
}

//! Asks Qt for the character of each byte: there is no other way to learn whether one
//! byte always is one character.
std::optional<Encoding> Encoding::ofSingleBytes(const QString &name)
{
    const QByteArray wanted = name.toLatin1();
    if (!isAscii(wanted) || wanted.contains('\0'))
        return {};
    QString upper;
    QString shownName;
    for (int i = 0; i < 2 * s_asciiCount; ++i) {
        QStringDecoder decoder(wanted.constData());
        if (!decoder.isValid())
            return {};
        const char byte = char(i);
        const QString character = decoder.decode(QByteArrayView(&byte, 1));
        const bool isOfItsKind = i >= s_asciiCount || character == QChar(i);
        if (character.size() != 1 || !isOfItsKind)
            return {};
        if (i >= s_asciiCount)
            upper += character;
        shownName = QString::fromLatin1(decoder.name());
    }
    return Encoding(upper, shownName);
}

std::optional<Encoding> Encoding::named(const QString &name)
{
    const QString plain = QString(name).remove(u'-').remove(u'_').toLower();
    for (const Mark &mark : s_marks) {
        if (plain == QString::fromLatin1(mark.name).remove(u'-').toLower())
            return Encoding(mark.encoding, QString::fromLatin1(mark.name));
    }
    if (plain == QLatin1String("cp1252") || plain == QLatin1String("windows1252"))
        return windows1252();
    if (plain == QLatin1String("latin1"))
        return ofSingleBytes(QStringLiteral("ISO-8859-1"));
    return ofSingleBytes(name);
}

Encoding Encoding::of(QByteArrayView bytes)
{
    for (const Mark &mark : s_marks) {
        if (isAt(bytes, mark))
            return {mark.encoding, QString::fromLatin1(mark.name)};
    }
    if (isAscii(bytes))
        return {QStringConverter::Utf8, QStringLiteral("ASCII")};
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? windows1252() : Encoding();
}

TextUnits Encoding::units() const
{
    switch (m_kind) {
    case QStringConverter::Utf16LE:
        return {2, false};
    case QStringConverter::Utf16BE:
        return {2, true};
    case QStringConverter::Utf32LE:
        return {4, false};
    case QStringConverter::Utf32BE:
        return {4, true};
    default:
        return {};
    }
}

bool Encoding::isAsciiSearchable() const
{
    return units().bytes == 1 && std::none_of(m_upper.begin(), m_upper.end(), [](QChar character) {
               return character.toCaseFolded().unicode() < s_asciiCount;
           });
}

qsizetype Encoding::markLength(QByteArrayView bytes) const
{
    const auto *const mark = std::find_if(std::begin(s_marks), std::end(s_marks),
                                          [&](const Mark &m) { return m.encoding == m_kind; });
    return mark != std::end(s_marks) && isAt(bytes, *mark) ? mark->length : 0;
}

QString Encoding::decode(QByteArrayView bytes) const
{
    if (m_kind == QStringConverter::Utf8)
        return QString::fromUtf8(bytes);
    if (units().bytes == 4)
        return decodeUtf32(bytes, units().isBigEndian);
    if (m_upper.isEmpty()) {
        QStringDecoder decoder(m_kind, Flag::Stateless);
        return decoder.decode(bytes);
    }
    QString text = QString::fromLatin1(bytes);
    for (QChar &character : text) {
        if (character.unicode() >= s_asciiCount)
            character = m_upper.at(character.unicode() - s_asciiCount);
    }
    return text;
}

QByteArray Encoding::encode(QChar character) const
{
    if (m_upper.isEmpty()) {
        QStringEncoder encoder(m_kind, Flag::Stateless);
        return encoder.encode(QStringView(&character, 1));
    }
    if (character.unicode() < s_asciiCount)
        return {1, char(character.unicode())};
    const qsizetype place = m_upper.indexOf(character);
    return place < 0 ? QByteArray() : QByteArray(1, char(s_asciiCount + place));
}

QByteArrayView Encoding::withoutPartialCharacter(QByteArrayView bytes) const
{
    if (m_kind == QStringConverter::Utf8)
        return withoutPartialUtf8(bytes);
    const TextUnits units = this->units();
    bytes.chop(bytes.size() % units.bytes);
    if (units.bytes != 2 || bytes.isEmpty())
        return bytes;
    const auto high = quint8(bytes[bytes.size() - (units.isBigEndian ? 2 : 1)]);
    if (high >= 0xd8 && high < 0xdc)
        bytes.chop(2);
    return bytes;
}
