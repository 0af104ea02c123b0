// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include <QDirIterator>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QResource>
#include <QTest>

#include <algorithm>
#include <cmath>

int qInitResources_vantix();
int qCleanupResources_vantix();

namespace {

const char previous[] = ":/icons/16x16/previous_small.png";

double luminance(const QColor &color)
{
    const auto linear = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

QColor blended(const QColor &color, const QColor &background)
{
    const auto mix = [&](float front, float back) {
        return front * color.alphaF() + back * (1 - color.alphaF());
    };
    return QColor::fromRgbF(mix(color.redF(), background.redF()),
                            mix(color.greenF(), background.greenF()),
                            mix(color.blueF(), background.blueF()));
}

//! How far the ink in the middle of a picture is above that at the sides.
double tipHeight(const QImage &image)
{
    double sums[2] = {};
    int counts[2] = {};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isMiddle = std::abs(2 * x + 1 - image.width()) <= image.width() / 4;
            counts[isMiddle] += qAlpha(image.pixel(x, y));
            sums[isMiddle] += y * qAlpha(image.pixel(x, y));
        }
    }
    return sums[false] / counts[false] - sums[true] / counts[true];
}

QStringList filesBelow(const QString &path)
{
    QStringList files;
    QDirIterator it(path, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

QStringList panelIcons()
{
    return filesBelow(":/icons/16x16") + filesBelow(":/icons/24x24") + filesBelow(":/icons/36x36");
}

} // namespace

class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void areThereFromTheStart();
    void arePictures_data();
    void arePictures();
    void standOut_data();
    void standOut();
    void differ();
    void areSharpOnDenseScreens();
    void areRegisteredAgain();
};

void TestIcons::areThereFromTheStart()
{
    QStringList expected;
    for (const char *directory : {"16x16", "24x24", "36x36"}) {
        for (const char *name : {"previous_small", "next_small", "filter", "close"}) {
            const QString path = QStringLiteral(":/icons/%1/%2").arg(directory, name);
            expected.append(path + ".png");
            if (qstrcmp(directory, "36x36") != 0)
                expected.append(path + "@2x.png");
        }
    }
    expected.sort();
    QCOMPARE(expected.size(), 20);
    QCOMPARE(panelIcons(), expected);
    QCOMPARE(filesBelow(":/icons/drovik"),
             QStringList(
                 {":/icons/drovik/16x16/editclear.png", ":/icons/drovik/16x16/editclear@2x.png"}));
    QCOMPARE(filesBelow(":/icons").size(), 22);
}

void TestIcons::arePictures_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &path : panelIcons() + filesBelow(":/icons/drovik"))
        QTest::newRow(qPrintable(path)) << path;
}

void TestIcons::arePictures()
{
    QFETCH(QString, path);
    const int pixels = path.section('/', -2, -2).section('x', 0, 0).toInt()
        * (path.contains(QLatin1String("@2x")) ? 2 : 1);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QImage image = QImage::fromData(file.readAll(), "PNG");
    QCOMPARE(image.size(), QSize(pixels, pixels));
    QCOMPARE(QResource(path).compressionAlgorithm(), QResource::NoCompression);
}

void TestIcons::standOut_data()
{
    arePictures_data();
}

void TestIcons::standOut()
{
    QFETCH(QString, path);
    const QImage image(path);
    for (const QColor background : {QColor(Qt::white), QColor(0x2b, 0x2b, 0x2b)}) {
        int seen = 0;
        int inked = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                inked += color.alpha() > 0;
                seen += contrast(blended(color, background), background) >= 3;
            }
        }
        QVERIFY(inked < image.width() * image.height()); // a symbol, not a slab
        QVERIFY2(seen * 16 >= image.width() * image.height(), qPrintable(QString::number(seen)));
        QVERIFY2(seen * 5 >= inked * 2, qPrintable(QStringLiteral("%1/%2").arg(seen).arg(inked)));
    }
}

void TestIcons::differ()
{
    for (const char *directory : {"16x16", "24x24", "36x36"}) {
        QList<QImage> images;
        for (const char *name : {"previous_small", "next_small", "filter", "close"}) {
            const QImage image(QStringLiteral(":/icons/%1/%2.png").arg(directory, name));
            QVERIFY(!images.contains(image));
            images.append(image);
        }
        QVERIFY(tipHeight(images.at(0)) > 0); // backwards is up
        QVERIFY(tipHeight(images.at(1)) < 0);
    }
}

void TestIcons::areSharpOnDenseScreens()
{
    QIcon icon;
    icon.addPixmap(QPixmap(previous));
    QPixmap dense(QStringLiteral(":/icons/16x16/previous_small@2x.png"));
    QCOMPARE(dense.devicePixelRatio(), 2.0); // by its name
    icon.addPixmap(dense);
    const QPixmap shown = icon.pixmap(QSize(16, 16), 2.0);
    QCOMPARE(shown.size(), QSize(32, 32));
    QCOMPARE(shown.toImage().convertToFormat(QImage::Format_ARGB32),
             dense.toImage().convertToFormat(QImage::Format_ARGB32));
}

void TestIcons::areRegisteredAgain()
{
    qInitResources_vantix();
    qInitResources_vantix();
    QCOMPARE(panelIcons().size(), 20);
    qCleanupResources_vantix();
    qCleanupResources_vantix();
    QVERIFY(!QFile::exists(previous));
    QVERIFY(QFile::exists(":/icons/drovik/16x16/editclear.png"));
    qInitResources_vantix();
    QCOMPARE(panelIcons().size(), 20);
}

QTEST_MAIN(TestIcons)
#include "tst_icons.moc"
