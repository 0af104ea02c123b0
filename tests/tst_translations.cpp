// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterlineedit.h"
#include "itemviewfindtoolbar.h"
#include "styleditemdelegate.h"
#include "translations.h"

#include <QApplication>
#include <QDate>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>
#include <QToolButton>
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

//! A month, and what \a edit shows.
QStringList shownTexts(const FilterLineEdit &edit)
{
    return {StyledItemDelegate::dateMonthToString(QDate(2024, 3, 1)), edit.placeholderText()};
}

const QStringList englishTexts {QStringLiteral("March"), QStringLiteral("Find")};
const QStringList russianTexts {QStringLiteral("март"), QStringLiteral("Найти")};

bool wasInstalledWithoutApplication = false;

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
    void choosesLanguage_data();
    void choosesLanguage();
    void defaultLocale();
    void replacesItself();
    void rankStays();
    void withoutApplication();

private:
    void uninstall();

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
    addRow(findBar, "Match case", "Match case", "Учитывать регистр");
    addRow(findBar, "Tell upper and lower case apart", "Tell upper and lower case apart",
           "Различать прописные и строчные буквы");
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

//! Takes away what vantixInstallTranslations() has installed.
void TestTranslations::uninstall()
{
    qDeleteAll(qApp->findChildren<QTranslator *>(Qt::FindDirectChildrenOnly));
}

void TestTranslations::choosesLanguage_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("C") << QLocale::c() << englishTexts;
    for (const char *name : {"fr", "fr_CA", "de", "en", "en_US", "en_GB", "ja_JP", "uk_UA"})
        QTest::newRow(name) << QLocale(QString::fromLatin1(name)) << englishTexts;
    for (const char *name : {"ru", "ru_RU", "ru_UA"})
        QTest::newRow(name) << QLocale(QString::fromLatin1(name)) << russianTexts;
}

void TestTranslations::choosesLanguage()
{
    QFETCH(QLocale, locale);
    QFETCH(QStringList, texts);

    const auto cleanup = qScopeGuard([this] { uninstall(); });
    QVERIFY(vantixInstallTranslations(locale));
    QCOMPARE(shownTexts(FilterLineEdit()), texts);
}

void TestTranslations::defaultLocale()
{
    const QLocale before;
    const auto cleanup = qScopeGuard([&] {
        QLocale::setDefault(before);
        uninstall();
    });
    QLocale::setDefault(QLocale(QLocale::Russian));
    QVERIFY(vantixInstallTranslations());
    QCOMPARE(shownTexts(FilterLineEdit()), russianTexts);
    QLocale::setDefault(QLocale(QLocale::French));
    QVERIFY(vantixInstallTranslations());
    QCOMPARE(shownTexts(FilterLineEdit()), englishTexts);
}

void TestTranslations::replacesItself()
{
    const auto cleanup = qScopeGuard([this] { uninstall(); });
    QVERIFY(vantixInstallTranslations(QLocale(QLocale::French)));
    ItemViewFindToolBar panel; // a window
    panel.show();
    panel.openFind();
    panel.findNext();
    const FilterLineEdit hidden;
    const auto *field = panel.findChild<FilterLineEdit *>();
    const auto *closeButton = panel.findChild<QToolButton *>(QStringLiteral("closeButton"));
    const auto *label = panel.findChild<QLabel *>();
    const auto texts = [&] {
        return QStringList {field->placeholderText(), closeButton->toolTip(), label->text(),
                            hidden.placeholderText()};
    };
    const QStringList english {"Find", "Close search panel", "Not found", "Find"};
    const QStringList russian {"Найти", "Закрыть панель поиска", "Не найдено", "Найти"};
    QCOMPARE(texts(), english);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(vantixInstallTranslations(QLocale(QLocale::Russian)));
        QTRY_COMPARE(texts(), russian);
        QVERIFY(vantixInstallTranslations(QLocale(QLocale::German)));
        QTRY_COMPARE(texts(), english);
    }
    QCOMPARE(qApp->findChildren<QTranslator *>().size(), 1);
}

//! A program that translates otherwise does so after a change of the language, too.
void TestTranslations::rankStays()
{
    class Own : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *, const char *source, const char *, int) const override
        {
            return source == QByteArray("Find") ? QStringLiteral("Seek") : QString();
        }
    };
    const auto cleanup = qScopeGuard([this] { uninstall(); });
    QVERIFY(vantixInstallTranslations(QLocale(QLocale::English)));
    Own own;
    QVERIFY(QCoreApplication::installTranslator(&own));
    QVERIFY(vantixInstallTranslations(QLocale(QLocale::Russian)));
    QCOMPARE(shownTexts(FilterLineEdit()),
             QStringList({russianTexts.first(), QStringLiteral("Seek")}));
}

void TestTranslations::withoutApplication()
{
    QVERIFY(!wasInstalledWithoutApplication);
}

int main(int argc, char **argv)
{
    wasInstalledWithoutApplication = vantixInstallTranslations(QLocale(QLocale::Russian));
    const QApplication application(argc, argv);
    TestTranslations test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_translations.moc"
