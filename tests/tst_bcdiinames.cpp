// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdiinames/names.h"

#include "bcdiivalue.h"

#include <QTest>

#include <type_traits>

// Without anything else there are all the names, as types of these sizes.
static_assert(std::is_same_v<BYTE, std::uint8_t> && std::is_same_v<BOOL, int>);
static_assert(std::is_same_v<UINT16, std::uint16_t> && std::is_same_v<UINT32, std::uint32_t>);
static_assert(std::is_same_v<UINT64, std::uint64_t> && std::is_same_v<INT64, std::int64_t>);
static_assert(std::is_same_v<::BYTE, BYTE> && std::is_same_v<::BOOL, BOOL>);

// Programs may declare them too.
typedef unsigned char BYTE;
typedef int BOOL;

// The functions have the types that the names stand for.
static_assert(std::is_same_v<decltype(&BCDIICheckType), BOOL (*)(BCDIIType)>);
static_assert(
    std::is_same_v<decltype(static_cast<UINT32 (*)(INT64 *, const void *, int)>(&BCDII2Int64)),
                   UINT32 (*)(INT64 *, const void *, int)>);

class tst_BcdiiNames : public QObject
{
    Q_OBJECT

private slots:
    void beside_data();
    void beside();
};

void tst_BcdiiNames::beside_data()
{
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("X11 before") << x11Before();
    QTest::newRow("X11 after") << x11After();
    QTest::newRow("X11 after, switched off") << x11Switched();
    QTest::newRow("Windows before") << windowsBefore();
    QTest::newRow("Windows after") << windowsAfter();
    QTest::newRow("macros before") << macrosBefore();
    QTest::newRow("Objective-C") << objectiveC();
    QTest::newRow("own types, switched off") << switchedOff();
}

void tst_BcdiiNames::beside()
{
    QFETCH(const Outcome, outcome);
    if (outcome == Outcome::HeaderMissing)
        QSKIP("no X11/Xmd.h here");
    QVERIFY(outcome == Outcome::Works);
}

QTEST_GUILESS_MAIN(tst_BcdiiNames)

#include "tst_bcdiinames.moc"
