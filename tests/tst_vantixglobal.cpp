// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "deprecated/oldnames.h"

#include <vantixglobal.h>

#include <QTest>
#include <QVersionNumber>

#define TEXT_OF(...) TEXT_OF_EXPANDED(__VA_ARGS__)
#define TEXT_OF_EXPANDED(...) #__VA_ARGS__

//! What programs are told of versions and of what goes away.
class TestVantixGlobal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void versionIsThatOfTheProject();
    void versionsAreInOrder();
    void hidesWhatWasDeprecated_data();
    void hidesWhatWasDeprecated();
    void saysSinceWhenAndWhatInstead();
};

void TestVantixGlobal::versionIsThatOfTheProject()
{
    const auto version = QVersionNumber::fromString(QStringLiteral(PROJECT_VERSION));
    QCOMPARE(QStringLiteral(VANTIX_VERSION_STR), version.toString());
    QCOMPARE(VANTIX_VERSION,
             VANTIX_VERSION_CHECK(version.majorVersion(), version.minorVersion(),
                                  version.microVersion()));
}

void TestVantixGlobal::versionsAreInOrder()
{
    QCOMPARE(VANTIX_VERSION_CHECK(1, 2, 3), 0x010203);
    QVERIFY(VANTIX_VERSION_CHECK(0, 2, 255) < VANTIX_VERSION_CHECK(0, 3, 0));
    QVERIFY(VANTIX_VERSION_CHECK(0, 255, 0) < VANTIX_VERSION_CHECK(1, 0, 0));
}

void TestVantixGlobal::hidesWhatWasDeprecated_data()
{
    QTest::addColumn<OldNames>("seen");
    QTest::addColumn<OldNames>("expected");
    QTest::newRow("all, if a program says nothing") << oldNamesByDefault() << OldNames {true, true};
    QTest::newRow("those after 0.2.0") << oldNamesAfter020() << OldNames {false, true};
    QTest::newRow("those after 0.3.0") << oldNamesAfter030() << OldNames {false, false};
}

void TestVantixGlobal::hidesWhatWasDeprecated()
{
    QFETCH(const OldNames, seen);
    QFETCH(const OldNames, expected);
    QCOMPARE(seen.of02, expected.of02);
    QCOMPARE(seen.of03, expected.of03);
}

void TestVantixGlobal::saysSinceWhenAndWhatInstead()
{
    QByteArray attribute = TEXT_OF(VANTIX_DEPRECATED_SINCE(0, 3, "use newName()"));
    attribute.replace("\" \"", "").replace(" ", "");
    QCOMPARE(attribute, QByteArray("[[deprecated(\"sincevantix0.3:usenewName()\")]]"));
}

QTEST_APPLESS_MAIN(TestVantixGlobal)
#include "tst_vantixglobal.moc"
