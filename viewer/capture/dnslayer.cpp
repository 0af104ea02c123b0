// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"
#include "layers.h"

#include <QHash>

namespace {

constexpr qsizetype s_longestName = 255; // bytes, as the standard has it
constexpr int s_mostRecords = 64;        // told of a message
constexpr qsizetype s_mostText = 200;    // characters of a record

//! Types of records whose data is told.
struct RecordType
{
    enum : quint16 {
        A = 1,
        Ns = 2,
        Cname = 5,
        Ptr = 12,
        Mx = 15,
        Txt = 16,
        Aaaa = 28,
        Srv = 33
    };
};

QString typeName(quint16 type)
{
    static const QHash<quint16, QString> names {{RecordType::A, QStringLiteral("A")},
                                                {RecordType::Ns, QStringLiteral("NS")},
                                                {RecordType::Cname, QStringLiteral("CNAME")},
                                                {6, QStringLiteral("SOA")},
                                                {RecordType::Ptr, QStringLiteral("PTR")},
                                                {RecordType::Mx, QStringLiteral("MX")},
                                                {RecordType::Txt, QStringLiteral("TXT")},
                                                {RecordType::Aaaa, QStringLiteral("AAAA")},
                                                {RecordType::Srv, QStringLiteral("SRV")},
                                                {41, QStringLiteral("OPT")},
                                                {43, QStringLiteral("DS")},
                                                {46, QStringLiteral("RRSIG")},
                                                {47, QStringLiteral("NSEC")},
                                                {48, QStringLiteral("DNSKEY")},
                                                {64, QStringLiteral("SVCB")},
                                                {65, QStringLiteral("HTTPS")},
                                                {255, QStringLiteral("ANY")}};
    const auto known = names.constFind(type);
    return known != names.cend() ? *known : QStringLiteral("TYPE%1").arg(type);
}

//! What is not printable, and what would be taken for the end of a label, as \DDD or with a \.
QString labelText(QByteArrayView label)
{
    QString text;
    for (const char byte : label) {
        const auto code = quint8(byte);
        if (code <= 0x20 || code >= 0x7f)
            text += QStringLiteral("\\%1").arg(code, 3, 10, QLatin1Char('0'));
        else if (byte == '.' || byte == '\\')
            text += QString(QLatin1Char('\\')) + QLatin1Char(byte);
        else
            text += QLatin1Char(byte);
    }
    return text;
}

//! Reads names and records of one message.
class DnsMessage
{
public:
    explicit DnsMessage(QByteArrayView message)
        : m_message(message)
        , m_reader(message)
    {
    }

    ByteReader &reader() { return m_reader; }
    bool isBroken() const { return m_isBroken || m_reader.isShort(); }

    //! The name at the reader's place, behind which it is then.
    QString takeName() { return nameFrom(&m_reader); }

    //! One record, as "name TYPE data"; without the name if that is \a usual.
    QString takeRecord(const QString &usual);

private:
    QString nameFrom(ByteReader *reader);
    QString dataText(quint16 type, qsizetype place, QByteArrayView data);

    QByteArrayView m_message;
    ByteReader m_reader;
    bool m_isBroken = false; //!< a name leads nowhere
};

//! Pointers lead to what stands before them, so that there is no circle.
QString DnsMessage::nameFrom(ByteReader *reader)
{
    QString name;
    ByteReader inside(m_message);
    ByteReader *place = reader;
    qsizetype limit = reader->place();
    for (qsizetype taken = 0; taken <= s_longestName && !place->isShort();) {
        const quint8 size = place->u8();
        if (size == 0 && !place->isShort())
            return name.isEmpty() ? QStringLiteral(".") : name;
        if (size >= 0xc0) {
            const qsizetype target = (size & 0x3f) << 8 | place->u8();
            if (place->isShort() || target >= limit)
                break;
            limit = target;
            inside = ByteReader(m_message);
            inside.skip(target);
            place = &inside;
            continue;
        }
        if (size > 0x3f)
            break;
        name += (name.isEmpty() ? QString() : QStringLiteral(".")) + labelText(place->take(size));
        taken += size + 1;
    }
    m_isBroken = true;
    return name;
}

QString DnsMessage::dataText(quint16 type, qsizetype place, QByteArrayView data)
{
    ByteReader reader(m_message.first(place + data.size()));
    reader.skip(place);
    switch (type) {
    case RecordType::A:
        return ipv4Address(data);
    case RecordType::Aaaa:
        return ipv6Address(data);
    case RecordType::Ns:
    case RecordType::Cname:
    case RecordType::Ptr:
        return nameFrom(&reader);
    case RecordType::Mx: {
        const quint16 preference = reader.u16();
        return QStringLiteral("%1 %2").arg(preference).arg(nameFrom(&reader));
    }
    case RecordType::Srv: {
        reader.skip(4);
        const quint16 port = reader.u16();
        return QStringLiteral("%1 port %2").arg(nameFrom(&reader)).arg(port);
    }
    case RecordType::Txt:
        return QLatin1Char('"') + labelText(reader.take(reader.u8())).left(s_mostText)
            + QLatin1Char('"');
    default:
        return QStringLiteral("%1 bytes").arg(data.size());
    }
}

QString DnsMessage::takeRecord(const QString &usual)
{
    const QString name = takeName();
    const quint16 type = m_reader.u16();
    m_reader.skip(6);
    const quint16 size = m_reader.u16();
    const qsizetype place = m_reader.place();
    const QByteArrayView data = m_reader.take(size);
    if (isBroken())
        return {};
    const QString text = typeName(type) + QLatin1Char(' ') + dataText(type, place, data);
    return name == usual ? text : name + QLatin1Char(' ') + text;
}

QString failureText(int code)
{
    switch (code) {
    case 0:
        return {};
    case 1:
        return QStringLiteral("format error");
    case 2:
        return QStringLiteral("server failure");
    case 3:
        return QStringLiteral("no such name");
    case 5:
        return QStringLiteral("refused");
    default:
        return QStringLiteral("error %1").arg(code);
    }
}

//! What was asked, and the name that the last question was about.
QStringList takeQuestions(DnsMessage *message, int count, QString *name)
{
    QStringList questions;
    for (int i = 0; i < qMin(count, s_mostRecords) && !message->isBroken(); ++i) {
        *name = message->takeName();
        const quint16 type = message->reader().u16();
        message->reader().skip(2);
        if (!message->isBroken())
            questions.append(typeName(type) + QLatin1Char(' ') + *name);
    }
    return questions;
}

QStringList takeAnswers(DnsMessage *message, int count, const QString &asked)
{
    QStringList answers;
    for (int i = 0; i < qMin(count, s_mostRecords) && !message->isBroken(); ++i) {
        const QString record = message->takeRecord(asked);
        if (!record.isEmpty())
            answers.append(record);
    }
    return answers;
}

} // namespace

void dissectDns(Dissection *packet, const QString &protocol, QByteArrayView bytes)
{
    DnsMessage message(bytes);
    ByteReader &reader = message.reader();
    const quint16 id = reader.u16();
    const quint16 flags = reader.u16();
    const int questionCount = reader.u16();
    const int answerCount = reader.u16();
    reader.skip(4);
    if (reader.isShort()) {
        tellMalformed(packet, protocol);
        return;
    }
    QString asked;
    const QStringList questions = takeQuestions(&message, questionCount, &asked);
    QStringList answers = takeAnswers(&message, answerCount, asked);
    if (const QString failure = failureText(flags & 0xf); !failure.isEmpty())
        answers.append(failure);
    packet->protocol = protocol;
    packet->info = (flags & 0x8000 ? QStringLiteral("Response ") : QStringLiteral("Query "))
        + hexNumber(id, 4);
    if (!questions.isEmpty())
        packet->info += QLatin1Char(' ') + questions.join(QLatin1String(", "));
    if (!answers.isEmpty())
        packet->info += QLatin1String(": ") + answers.join(QLatin1String(", "));
    if (message.isBroken())
        packet->info += QStringLiteral(" (cut off or malformed)");
    packet->addLayer([&] { return protocol + QStringLiteral(": ") + packet->info; });
}
