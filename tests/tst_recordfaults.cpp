// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/recordfaults.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

constexpr RecordFaults s_none;

//! Character by character, as one reads it.
RecordFaults plainFaults(const QString &record, QChar delimiter, qsizetype wanted)
{
    enum class State {
        Begin,
        Plain,
        Quoted,
        Closed
    };
    if (record.isEmpty())
        return {};
    State state = State::Begin;
    qsizetype fields = 1;
    RecordFaults faults;
    for (qsizetype i = 0; i < record.size(); ++i) {
        const QChar character = record.at(i);
        if (state == State::Quoted) {
            if (character != u'"')
                continue;
            if (record.mid(i + 1, 1) == "\"")
                ++i;
            else
                state = State::Closed;
        } else if (character == delimiter) {
            ++fields;
            state = State::Begin;
        } else if (state == State::Closed) {
            faults |= RecordFault::TextAfterQuote;
        } else {
            state = state == State::Begin && character == u'"' ? State::Quoted : State::Plain;
        }
    }
    if (state == State::Quoted)
        return faults | RecordFault::OpenQuote;
    if (wanted > 0 && fields != wanted)
        faults |= fields < wanted ? RecordFault::TooFewFields : RecordFault::TooManyFields;
    return faults;
}

} // namespace

class tst_RecordFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_data();
    void tells();
    void isRightForAnyText();
};

void tst_RecordFaults::tells_data()
{
    QTest::addColumn<QString>("record");
    QTest::addColumn<RecordFaults>("faults");
    const auto add = [](const char *record, RecordFaults faults) {
        QTest::newRow(record) << QString(record) << faults;
    };
    const RecordFaults open = RecordFault::OpenQuote;
    const RecordFaults text = RecordFault::TextAfterQuote;
    const RecordFaults few = RecordFault::TooFewFields;
    const RecordFaults many = RecordFault::TooManyFields;
    add("", s_none);
    add("a,b,c", s_none);
    add(",,", s_none);
    add("\"a\",\"b\",\"c\"", s_none);
    add("\"a,\nb\",\"\"\"\",\"\"", s_none);
    add("a\"b\",c\",\"d\"", s_none);
    add("a", few);
    add("a,b", few);
    add("\"a,b\",c", few);
    add("a,b,c,", many);
    add("a,b,\"c\",d", many);
    add("a,\"b,c", open);
    add("a,b,\"", open);
    add("\"a\"\"", open);
    add("a,b,c,d,\"e", open);
    add("\"a\"b,c,d", text);
    add("a,\"b\" ,c", text);
    add("a,b,\"c\"d\"e", text);
    add("\"a\"b,c", text | few);
    add("\"a\"b,c,d,e", text | many);
    add("\"a\"b,\"c", text | open);
}

void tst_RecordFaults::tells()
{
    QFETCH(QString, record);
    QFETCH(RecordFaults, faults);
    QCOMPARE(faultsOf(record, u',', 3), faults);
    QCOMPARE(faultsOf(record.toLatin1(), ',', 3), faults);
    QCOMPARE(plainFaults(record, u',', 3), faults);
    const RecordFaults ofNumber = RecordFault::TooFewFields | RecordFault::TooManyFields;
    QCOMPARE(faultsOf(record, u',', 0), faults & ~ofNumber);
}

void tst_RecordFaults::isRightForAnyText()
{
    QRandomGenerator random(3);
    const QString characters = "a\",;\n ";
    for (int i = 0; i < 50000; ++i) {
        QString record;
        for (int length = random.bounded(14); length > 0; --length)
            record += characters[random.bounded(int(characters.size()))];
        const int wanted = random.bounded(5);
        for (const QChar delimiter : {u',', u';'}) {
            const RecordFaults faults = plainFaults(record, delimiter, wanted);
            QCOMPARE(faultsOf(record, delimiter, wanted), faults);
            QCOMPARE(faultsOf(record.toLatin1(), delimiter.toLatin1(), wanted), faults);
        }
    }
}

QTEST_APPLESS_MAIN(tst_RecordFaults)

#include "tst_recordfaults.moc"
