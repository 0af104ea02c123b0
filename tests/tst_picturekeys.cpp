// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What is left of pictures that QPixmapCache has no room for any more.

#include "cells/picturekeys_p.h"

#include <QPixmap>
#include <QPixmapCache>
#include <QTest>

#include <algorithm>

class TestPictureKeys : public QObject
{
    Q_OBJECT

private slots:
    void init() { QPixmapCache::clear(); }
    void forgetsKeysWithoutPicture();
    void keepsPictures();
    void keepsThePictureThatIsUsed();
    void takesAKeyAgain();
    void keepsAKeyOnce();
    void dropsTheOldestFirst();
    void cleanup() { QPixmapCache::clear(); }

private:
    static QPixmap picture()
    {
        QPixmap pixmap(64, 16); // 4 kilobytes
        pixmap.fill(Qt::red);
        return pixmap;
    }
    //! A key that nobody else has a share of.
    static QString key(int number) { return QStringLiteral("tst:%1").arg(number); }
    static bool isKept(const QString &key)
    {
        QPixmap found;
        return QPixmapCache::find(key, &found);
    }
};

void TestPictureKeys::forgetsKeysWithoutPicture()
{
    PictureKeys keys;
    QList<QString> inserted;
    for (int i = 0; i < 20000; ++i) {
        inserted.append(key(i));
        keys.insert(inserted.last(), picture());
    }
    const auto shared = std::count_if(inserted.cbegin(), inserted.cend(),
                                      [](const QString &each) { return !each.isDetached(); });
    const auto kept = std::count_if(inserted.cbegin(), inserted.cend(), isKept);
    QVERIFY(kept < 10240 / 4 + 1);
    QVERIFY(kept > 1000);
    QVERIFY2(shared <= 2 * kept + 1024, qPrintable(QString::number(shared)));
}

void TestPictureKeys::keepsPictures()
{
    PictureKeys keys;
    for (int i = 0; i < 2048; ++i)
        keys.insert(key(i), picture());
    for (int i = 0; i < 2048; ++i)
        QVERIFY(isKept(key(i)));
}

void TestPictureKeys::keepsThePictureThatIsUsed()
{
    PictureKeys keys;
    keys.insert(key(-1), picture());
    for (int i = 0; i < 20000; ++i) {
        keys.insert(key(i), picture());
        QVERIFY(isKept(key(-1)));
    }
}

void TestPictureKeys::takesAKeyAgain()
{
    PictureKeys keys;
    for (int i = 0; i < 100000; ++i)
        keys.insert(key(i % 5000), picture()); // gone when it comes again
    QVERIFY(isKept(key(4999)));
    QVERIFY(!isKept(key(0)));
    keys.insert(key(0), picture());
    QVERIFY(isKept(key(0)));
}

void TestPictureKeys::keepsAKeyOnce()
{
    PictureKeys keys;
    const QString same = key(0);
    QList<QString> inserted;
    for (int i = 0; i < 20000; ++i) {
        inserted.append(QString(same.constData(), same.size())); // in memory of its own
        keys.insert(inserted.last(), picture());
    }
    const auto shared = std::count_if(inserted.cbegin(), inserted.cend(),
                                      [](const QString &each) { return !each.isDetached(); });
    QVERIFY2(shared <= 1100, qPrintable(QString::number(shared)));
}

//! Also when the keys have been swept before.
void TestPictureKeys::dropsTheOldestFirst()
{
    PictureKeys keys;
    for (int i = 0; i < 3000; ++i)
        keys.insert(key(i), picture());
    QVERIFY(!isKept(key(0)));
    for (int i = 1000; i < 3000; ++i)
        QVERIFY(isKept(key(i)));
}

QTEST_MAIN(TestPictureKeys)
#include "tst_picturekeys.moc"
