// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterlineedit.h"

#include <QDir>
#include <QIcon>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

IconButton *clearButton(const FilterLineEdit &edit)
{
    return edit.findChildren<IconButton *>().at(FancyLineEdit::Right);
}

//! Writes a theme whose icons are plain squares of the colours given.
void writeTheme(const QString &path, const QHash<QString, QColor> &icons)
{
    QVERIFY(QDir().mkpath(path + "/test/16x16"));
    QFile index(path + "/test/index.theme");
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=test\nDirectories=16x16\n\n[16x16]\nSize=16\n");
    for (auto it = icons.begin(); it != icons.end(); ++it) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(it.value());
        QVERIFY(image.save(path + "/test/16x16/" + it.key() + ".png"));
    }
}

void useThemes(const QStringList &paths, const QString &name)
{
    QIcon::setThemeSearchPaths(paths);
    QIcon::setFallbackSearchPaths({});
    QIcon::setFallbackThemeName(name);
    QIcon::setThemeName(name);
}

} // namespace

class TestFilterLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsEmpty();
    void showsOwnPictureWithoutTheme();
    void takesPictureFromTheme_data();
    void takesPictureFromTheme();
    void announcesChangesOnce();
    void tellsCaseApart();
    void announcesTyping();
    void announcedTextStays();
    void clearsByClick();
    void mirrorsClearButton();
};

void TestFilterLineEdit::init()
{
    useThemes({}, QStringLiteral("none"));
}

void TestFilterLineEdit::startsEmpty()
{
    FilterLineEdit edit;
    QCOMPARE(edit.text(), QString());
    QCOMPARE(edit.placeholderText(), QStringLiteral("Find"));
    QVERIFY(edit.isButtonVisible(FancyLineEdit::Right));
    QVERIFY(!edit.isButtonVisible(FancyLineEdit::Left));
    QVERIFY(edit.hasAutoHideButton(FancyLineEdit::Right));
    QCOMPARE(clearButton(edit)->toolTip(), QStringLiteral("Clear"));
    QCOMPARE(clearButton(edit)->iconOpacity(), 0.0F);
    QCOMPARE(edit.textMargins(), QMargins(0, 0, 24, 0));
    QSignalSpy changed(&edit, SIGNAL(filterChanged(QString)));
    edit.clear();
    edit.setText(QString());
    QCOMPARE(changed.count(), 0);
}

void TestFilterLineEdit::showsOwnPictureWithoutTheme()
{
    const FilterLineEdit edit;
    const QImage own(QStringLiteral(":/icons/drovik/16x16/editclear.png"));
    QCOMPARE(own.size(), QSize(16, 16));
    QImage dense(QStringLiteral(":/icons/drovik/16x16/editclear@2x.png"));
    QCOMPARE(dense.size(), QSize(32, 32));
    const QImage shown = clearButton(edit)->pixmap().toImage();
    dense.setDevicePixelRatio(shown.devicePixelRatio());
    const QImage expected = shown.size() == dense.size() ? dense : own;
    QCOMPARE(shown, expected.convertToFormat(shown.format()));
    QVERIFY(edit.devicePixelRatioF() != 1 || shown.size() == own.size());
}

void TestFilterLineEdit::takesPictureFromTheme_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("expected");
    const QString rtl = QStringLiteral("edit-clear-locationbar-rtl");
    const QString ltr = QStringLiteral("edit-clear-locationbar-ltr");
    const QString plain = QStringLiteral("edit-clear");
    QTest::newRow("left to right") << QStringList {rtl, ltr, plain} << Qt::LeftToRight << rtl;
    QTest::newRow("right to left") << QStringList {rtl, ltr, plain} << Qt::RightToLeft << ltr;
    QTest::newRow("plain, left to right") << QStringList {plain} << Qt::LeftToRight << plain;
    QTest::newRow("plain, right to left") << QStringList {plain} << Qt::RightToLeft << plain;
    QTest::newRow("other one") << QStringList {ltr, plain} << Qt::LeftToRight << plain;
}

void TestFilterLineEdit::takesPictureFromTheme()
{
    QFETCH(QStringList, names);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, expected);
    const QHash<QString, QColor> colors {
        {QStringLiteral("edit-clear-locationbar-rtl"), Qt::red},
        {QStringLiteral("edit-clear-locationbar-ltr"), Qt::green},
        {QStringLiteral("edit-clear"), Qt::blue},
    };
    QHash<QString, QColor> icons;
    for (const QString &name : names)
        icons.insert(name, colors.value(name));
    const QTemporaryDir themes;
    writeTheme(themes.path(), icons);
    useThemes({themes.path()}, QStringLiteral("test"));

    QWidget parent;
    parent.setLayoutDirection(direction);
    const FilterLineEdit edit(&parent);
    const QImage shown = clearButton(edit)->pixmap().toImage();
    QCOMPARE(shown.size(), QSize(16, 16));
    QCOMPARE(shown.pixelColor(8, 8), colors.value(expected));
}

void TestFilterLineEdit::announcesChangesOnce()
{
    FilterLineEdit edit;
    QSignalSpy changed(&edit, SIGNAL(filterChanged(QString)));
    edit.setText(QStringLiteral("a"));
    edit.setText(QStringLiteral("a"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.takeFirst().at(0).toString(), QStringLiteral("a"));
    // The edit says that its text changed, but it is as it was announced.
    QVERIFY(QMetaObject::invokeMethod(&edit, "textChanged", Q_ARG(QString, QStringLiteral("b"))));
    QCOMPARE(changed.count(), 0);
    edit.clear();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.takeFirst().at(0).toString(), QString());
}

void TestFilterLineEdit::tellsCaseApart()
{
    FilterLineEdit edit;
    edit.setText(QStringLiteral("a"));
    QSignalSpy changed(&edit, SIGNAL(filterChanged(QString)));
    edit.setText(QStringLiteral("A"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toString(), QStringLiteral("A"));
}

void TestFilterLineEdit::announcesTyping()
{
    FilterLineEdit edit;
    edit.show();
    QVERIFY(QTest::qWaitForWindowActive(&edit));
    QSignalSpy changed(&edit, SIGNAL(filterChanged(QString)));
    QTest::keyClicks(&edit, QStringLiteral("ab"));
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QStringList texts;
    for (const QList<QVariant> &arguments : changed)
        texts.append(arguments.at(0).toString());
    QCOMPARE(texts, QStringList({"a", "ab", "a"}));
}

//! The text that a slot was given is the same until it returns.
void TestFilterLineEdit::announcedTextStays()
{
    FilterLineEdit edit;
    QStringList texts;
    connect(&edit, &FilterLineEdit::filterChanged, &edit, [&](const QString &text) {
        if (text == QStringLiteral("a"))
            edit.setText(QStringLiteral("b"));
        texts << text;
    });
    edit.setText(QStringLiteral("a"));
    QCOMPARE(texts, QStringList({"b", "a"}));
}

void TestFilterLineEdit::clearsByClick()
{
    FilterLineEdit edit;
    edit.resize(200, 30);
    edit.show();
    QVERIFY(QTest::qWaitForWindowActive(&edit));
    edit.setText(QStringLiteral("abc"));
    QTRY_COMPARE(clearButton(edit)->iconOpacity(), 1.0F);
    QStringList order;
    connect(&edit, &QLineEdit::textChanged, this, [&] { order.append("text"); });
    connect(&edit, &FilterLineEdit::filterChanged, this,
            [&](const QString &text) { order.append("filter:" + text); });
    QTest::mouseClick(edit.windowHandle(), Qt::LeftButton, {}, QPoint(188, 15));
    QCOMPARE(edit.text(), QString());
    order.sort(); // connected later than the field's own slot
    QCOMPARE(order, QStringList({"filter:", "text"}));
    QTRY_COMPARE(clearButton(edit)->iconOpacity(), 0.0F);
}

void TestFilterLineEdit::mirrorsClearButton()
{
    QWidget parent;
    parent.setLayoutDirection(Qt::RightToLeft);
    FilterLineEdit edit(&parent);
    edit.resize(200, 30);
    parent.show();
    QCOMPARE(edit.textMargins(), QMargins(24, 0, 0, 0));
    QCOMPARE(clearButton(edit)->geometry(), QRect(0, 0, 28, 30));
}

QTEST_MAIN(TestFilterLineEdit)
#include "tst_filterlineedit.moc"
