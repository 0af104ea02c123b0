// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterlineedit.h"
#include "styleditemdelegate.h"

#include <QDate>
#include <QFile>
#include <QTest>
#include <QTranslator>

namespace {

constexpr char findBar[] = "AbstractFindToolBar";
constexpr char delegate[] = "StyledItemDelegate";
constexpr char itemDelegate[] = "Vantix::ItemDelegate";

void addRow(const char *context, const char *source, const char *english, const char *russian)
{
    QTest::addRow("%s: %s", context, source)
        << QByteArray(context) << QByteArray(source) << QString::fromUtf8(english)
        << QString::fromUtf8(russian);
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void translates_data();
    void translates();
    void speaksRussian();
    void speaksEnglish();

private:
    QTranslator m_english;
    QTranslator m_russian;
};

void TestTranslations::initTestCase()
{
    QVERIFY(m_english.load(QStringLiteral(":/translations/vantix_en.qm")));
    QVERIFY(m_russian.load(QLocale(QLocale::Russian), QStringLiteral("vantix"), QStringLiteral("_"),
                           QStringLiteral(":/translations")));
    QCOMPARE(m_russian.language(), QStringLiteral("ru"));
}

void TestTranslations::translates_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("russian");
    addRow("FilterLineEdit", "Find", "Find", "Найти");
    addRow("FilterLineEdit", "Clear", "Clear", "Очистить");
    addRow(findBar, "Not found", "Not found", "Не найдено");
    addRow(findBar, "Find", "Find", "Найти");
    addRow(findBar, "Find previous", "Find previous", "Найти предыдущее");
    addRow(findBar, "Find next", "Find next", "Найти следующее");
    addRow(findBar, "Filter", "Filter", "Фильтровать");
    addRow(findBar, "Filter strings by value", "Filter strings by value",
           "Отфильтровать строки по значению");
    addRow(findBar, "Done", "Done", "Готово");
    addRow(findBar, "Close search panel", "Close search panel", "Закрыть панель поиска");
    for (const char *week : {"%1st week", "%1nd week", "%1rd week", "%1th week"})
        addRow("QObject", week, week, "%1-я неделя");
    addRow(itemDelegate, "Невозможно завершить редактирование.", "The edit cannot be completed.",
           "Невозможно завершить редактирование.");
    addRow(delegate, "нулябрь", "nullember", "нулябрь");
    addRow(delegate, "январь", "January", "январь");
    addRow(delegate, "февраль", "February", "февраль");
    addRow(delegate, "март", "March", "март");
    addRow(delegate, "апрель", "April", "апрель");
    addRow(delegate, "май", "May", "май");
    addRow(delegate, "июнь", "June", "июнь");
    addRow(delegate, "июль", "July", "июль");
    addRow(delegate, "август", "August", "август");
    addRow(delegate, "сентябрь", "September", "сентябрь");
    addRow(delegate, "октябрь", "October", "октябрь");
    addRow(delegate, "ноябрь", "November", "ноябрь");
    addRow(delegate, "декабрь", "December", "декабрь");
}

void TestTranslations::translates()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QTEST(m_english.translate(context, source), "english");
    QTEST(m_russian.translate(context, source), "russian");
}

void TestTranslations::speaksRussian()
{
    QCoreApplication::installTranslator(&m_russian);
    const FilterLineEdit edit;
    const QString week = StyledItemDelegate::expWeekToString(QDate(2024, 1, 10));
    QCoreApplication::removeTranslator(&m_russian);
    QCOMPARE(edit.placeholderText(), QStringLiteral("Найти"));
    QCOMPARE(edit.findChildren<IconButton *>().at(FancyLineEdit::Right)->toolTip(),
             QStringLiteral("Очистить"));
    QCOMPARE(week, QStringLiteral("2-я неделя"));
}

void TestTranslations::speaksEnglish()
{
    QCoreApplication::installTranslator(&m_english);
    const QString month = StyledItemDelegate::dateMonthToString(QDate(2024, 3, 1));
    QCoreApplication::removeTranslator(&m_english);
    QCOMPARE(month, QStringLiteral("March"));
}

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
