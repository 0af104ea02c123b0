// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "scalablefont.h"
#include "styleditemdelegate.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <QPixmap>
#include <QScopeGuard>
#include <QSet>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimeZone>

namespace {

const QDateTime evening(QDate(2024, 5, 7), QTime(21, 43, 5));

//! Its own forms of date-times, which may change.
class FormDelegate : public StyledItemDelegate
{
public:
    using StyledItemDelegate::StyledItemDelegate;

    QString dateTimeToShortText(const QDateTime &) const override { return m_short; }
    QString dateTimeToWideText(const QDateTime &) const override
    {
        ++m_asked;
        return m_wide;
    }

    QString m_short = QStringLiteral("s");
    QString m_wide = QStringLiteral("wide");
    mutable int m_asked = 0;
};

//! Renames every value.
class ShoutingDelegate : public StyledItemDelegate
{
public:
    using StyledItemDelegate::StyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &) const override
    {
        return value.toString().toUpper();
    }
};

QStandardItemModel *oneCell(QObject *parent, const QHash<int, QVariant> &roles = {})
{
    auto *model = new QStandardItemModel(1, 1, parent);
    for (auto it = roles.begin(); it != roles.end(); ++it)
        model->setData(model->index(0, 0), it.value(), it.key());
    return model;
}

int wideWidth(const QFontMetrics &metrics)
{
    const QDateTime reference(QDate(2013, 12, 30), QTime(23, 50, 50, 105));
    return metrics.horizontalAdvance(QLocale().toString(reference, QLocale::ShortFormat));
}

QList<QPalette::ColorGroup> groups()
{
    return {QPalette::Active, QPalette::Inactive, QPalette::Disabled};
}

} // namespace

class TestStyledItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void isChildOfTheView();
    void hintsTheHeightForWidthMinusOne();
    void measuresAnotherFontAnew();
    void leavesOtherWidthsToQt_data();
    void leavesOtherWidthsToQt();

    void showsValues_data();
    void showsValues();
    void ignoresTheLocaleForDateTimes();
    void writesShortAndWideForms();
    void writesManyDateTimes();
    void writesEverySecond();
    void writesNothingForAnHourThatIsLeftOut();

    void switchesToTheTimeByTheReferenceWidth();
    void measuresTheOverriddenWideText();
    void followsTheDefaultLocale();
    void elides_data();
    void elides();
    void elidesTheOverriddenText();

    void keepsTheCallersBackground();
    void takesTheModelsBackground_data();
    void takesTheModelsBackground();
    void takesTheModelsForeground_data();
    void takesTheModelsForeground();
    void leavesThePaletteAlone();
    void givesTheSamePaletteAgain();
    void givesOtherPalettesForOtherBrushes();
    void keepsTheColorGroup();

    void namesMonths_data();
    void namesMonths();
    void countsWeeks_data();
    void countsWeeks();
};

void TestStyledItemDelegate::isChildOfTheView()
{
    QTableView view;
    const StyledItemDelegate *delegate = new StyledItemDelegate(&view);
    QCOMPARE(delegate->parent(), &view);
    QCOMPARE(StyledItemDelegate(nullptr).parent(), nullptr);
}

void TestStyledItemDelegate::hintsTheHeightForWidthMinusOne()
{
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, -1, 10);
    const QSize expected(20, QFontMetrics(option.font).height());
    QCOMPARE(delegate.sizeHint(option, {}), expected);
    QCOMPARE(delegate.sizeHint(option, {}), expected);
    option.rect = QRect(7, 3, -1, 99);
    QCOMPARE(delegate.sizeHint(option, {}), expected);
}

void TestStyledItemDelegate::measuresAnotherFontAnew()
{
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, -1, 10);
    option.font = scalableFont(12);
    const int small = delegate.sizeHint(option, {}).height();
    const QFont big = scalableFont(60);
    option.font = big;
    QCOMPARE(delegate.sizeHint(option, {}).height(), QFontMetrics(big).height());
    QVERIFY(delegate.sizeHint(option, {}).height() > small);
    option.font = scalableFont(12);
    QCOMPARE(delegate.sizeHint(option, {}).height(), small);
}

void TestStyledItemDelegate::leavesOtherWidthsToQt_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::newRow("null") << QRect();
    QTest::newRow("minus two") << QRect(0, 0, -2, 10);
    QTest::newRow("usual") << QRect(0, 0, 100, 10);
    QTest::newRow("height minus one") << QRect(0, 0, 100, -1);
}

void TestStyledItemDelegate::leavesOtherWidthsToQt()
{
    QFETCH(QRect, rect);
    const QScopedPointer<QStandardItemModel> model(
        oneCell(nullptr, {{Qt::DisplayRole, QStringLiteral("a text of some length")}}));
    const StyledItemDelegate delegate(nullptr);
    const QStyledItemDelegate plain;
    QStyleOptionViewItem option;
    option.rect = rect;
    const QSize expected = plain.sizeHint(option, model->index(0, 0));
    QVERIFY(expected.width() > 20);
    QCOMPARE(delegate.sizeHint(option, model->index(0, 0)), expected);
}

void TestStyledItemDelegate::showsValues_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    const QLocale german(QLocale::German);
    const QStyledItemDelegate plain;
    const QList<std::pair<const char *, QVariant>> others {
        {"text", QStringLiteral("text")}, {"number", 1234567.25},     {"integer", 1234567},
        {"date", QDate(2024, 5, 7)},      {"time", QTime(21, 43, 5)}, {"invalid", QVariant()},
    };
    for (const auto &[name, value] : others)
        QTest::newRow(name) << value << plain.displayText(value, german);
    QTest::newRow("date-time") << QVariant(evening)
                               << QLocale().toString(evening, QLocale::ShortFormat);
    QTest::newRow("invalid date-time") << QVariant(QDateTime()) << QString();
}

void TestStyledItemDelegate::showsValues()
{
    QFETCH(QVariant, value);
    const StyledItemDelegate delegate(nullptr);
    QTEST(delegate.displayText(value, QLocale(QLocale::German)), "expected");
}

void TestStyledItemDelegate::ignoresTheLocaleForDateTimes()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const StyledItemDelegate delegate(nullptr);
    const QString english = QLocale().toString(evening, QLocale::ShortFormat);
    const QLocale german(QLocale::German);
    QVERIFY(english != german.toString(evening, QLocale::ShortFormat));
    QCOMPARE(delegate.displayText(evening, german), english);
}

void TestStyledItemDelegate::writesShortAndWideForms()
{
    const StyledItemDelegate delegate(nullptr);
    QCOMPARE(delegate.dateTimeToShortText(evening), QStringLiteral("21:43:05"));
    QCOMPARE(delegate.dateTimeToWideText(evening),
             QLocale().toString(evening, QLocale::ShortFormat));
    QCOMPARE(delegate.dateTimeToShortText(QDateTime()), QString());
    QCOMPARE(delegate.dateTimeToWideText(QDateTime()), QString());
}

void TestStyledItemDelegate::writesManyDateTimes()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    const StyledItemDelegate delegate(nullptr);
    for (const QLocale::Language language : {QLocale::C, QLocale::French, QLocale::C}) {
        QLocale::setDefault(QLocale(language));
        for (int i = 0; i < 5000; ++i) {
            const qint64 msecs = i * 7654321LL * 97;
            const QDateTime dt = i % 3 ? QDateTime::fromMSecsSinceEpoch(msecs)
                                       : QDateTime::fromMSecsSinceEpoch(msecs, QTimeZone::utc());
            QCOMPARE(delegate.displayText(dt, QLocale()),
                     QLocale().toString(dt, QLocale::ShortFormat));
            QCOMPARE(delegate.dateTimeToWideText(dt), QLocale().toString(dt, QLocale::ShortFormat));
        }
    }
}

//! Seconds that follow each other may share a text only where none shows them.
void TestStyledItemDelegate::writesEverySecond()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    const StyledItemDelegate delegate(nullptr);
    bool somethingShowsSeconds = false;
    for (const QLocale &locale : QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                          QLocale::AnyTerritory)) {
        QLocale::setDefault(locale);
        QDateTime dt = evening.addMSecs(-70250);
        QSet<QString> texts;
        for (int i = 0; i < 140; ++i, dt = dt.addMSecs(500)) {
            const QString expected = locale.toString(dt, QLocale::ShortFormat);
            QCOMPARE(delegate.displayText(dt, locale), expected);
            texts << expected;
        }
        somethingShowsSeconds = somethingShowsSeconds || texts.size() > 3;
    }
    QVERIFY(somethingShowsSeconds);
}

//! Clocks are put on: what is no time in one zone is one in another.
void TestStyledItemDelegate::writesNothingForAnHourThatIsLeftOut()
{
    const StyledItemDelegate delegate(nullptr);
    const QDate day(2024, 3, 31);
    const QTime time(2, 30);
    for (const QTimeZone &zone : {QTimeZone::utc(), QTimeZone("Europe/Berlin")}) {
        const QDateTime dt(day, time, zone);
        QCOMPARE(delegate.displayText(dt, QLocale()), QLocale().toString(dt, QLocale::ShortFormat));
    }
}

void TestStyledItemDelegate::switchesToTheTimeByTheReferenceWidth()
{
    const StyledItemDelegate delegate(nullptr);
    const QFontMetrics metrics {QFont()};
    const int limit = wideWidth(metrics);
    // Shorter than the reference in every locale that does not pad.
    const QDateTime brief(QDate(2001, 1, 1), QTime(1, 1, 1));
    for (const QDateTime &dt : {evening, brief}) {
        const QString wide = QLocale().toString(dt, QLocale::ShortFormat);
        const QString time = dt.time().toString(Qt::TextDate);
        const auto shown = [&](int width) {
            return delegate.displayElidedText(dt, QLocale(), metrics, Qt::ElideRight, width);
        };
        QCOMPARE(shown(limit), metrics.elidedText(wide, Qt::ElideRight, limit));
        QCOMPARE(shown(limit + 500), wide);
        QCOMPARE(shown(limit - 1), metrics.elidedText(time, Qt::ElideRight, limit - 1));
        QCOMPARE(shown(5), metrics.elidedText(time, Qt::ElideRight, 5));
    }
}

void TestStyledItemDelegate::measuresTheOverriddenWideText()
{
    FormDelegate delegate(nullptr);
    const QFontMetrics metrics {QFont()};
    const auto shown = [&](int width) {
        return delegate.displayElidedText(evening, QLocale(), metrics, Qt::ElideNone, width);
    };
    const int limit = metrics.horizontalAdvance(delegate.m_wide);
    QCOMPARE(shown(limit), delegate.m_wide);
    QCOMPARE(shown(limit - 1), delegate.m_short);
    QVERIFY(delegate.m_asked > 0);

    delegate.m_wide = QStringLiteral("wider than it was before");
    QCOMPARE(shown(limit), delegate.m_short);
    QCOMPARE(shown(metrics.horizontalAdvance(delegate.m_wide)), delegate.m_wide);
}

void TestStyledItemDelegate::followsTheDefaultLocale()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    const StyledItemDelegate delegate(nullptr);
    const QFontMetrics metrics {QFont()};
    QList<int> limits;
    for (const QLocale::Language language :
         {QLocale::English, QLocale::German, QLocale::Russian, QLocale::Japanese}) {
        QLocale::setDefault(QLocale(language));
        const int limit = wideWidth(metrics);
        const QString time = delegate.dateTimeToShortText(evening);
        const auto shown = [&](int width) {
            return delegate.displayElidedText(evening, QLocale::c(), metrics, Qt::ElideNone, width);
        };
        QCOMPARE(shown(limit), QLocale().toString(evening, QLocale::ShortFormat));
        QCOMPARE(shown(limit - 1), time);
        limits.append(limit);
    }
    QVERIFY(limits.first() != limits.at(1)); // or nothing was tested
}

void TestStyledItemDelegate::elides_data()
{
    QTest::addColumn<Qt::TextElideMode>("mode");
    QTest::newRow("left") << Qt::ElideLeft;
    QTest::newRow("middle") << Qt::ElideMiddle;
    QTest::newRow("right") << Qt::ElideRight;
    QTest::newRow("none") << Qt::ElideNone;
}

void TestStyledItemDelegate::elides()
{
    QFETCH(Qt::TextElideMode, mode);
    const StyledItemDelegate delegate(nullptr);
    const QFontMetrics metrics {QFont()};
    const QString text = QStringLiteral("a text that has to be made shorter");
    const int full = metrics.horizontalAdvance(text);
    for (int width = -3; width <= full + 3; ++width) {
        const QString shown = delegate.displayElidedText(text, QLocale(), metrics, mode, width);
        QCOMPARE(shown, metrics.elidedText(text, mode, width));
        if (width > full + 1 || mode == Qt::ElideNone)
            QCOMPARE(shown, text);
        if (width < full - 1 && mode != Qt::ElideNone)
            QVERIFY(shown != text);
    }
}

void TestStyledItemDelegate::elidesTheOverriddenText()
{
    const ShoutingDelegate delegate(nullptr);
    const QFontMetrics metrics {QFont()};
    const QString shown =
        delegate.displayElidedText(QStringLiteral("abc"), QLocale(), metrics, Qt::ElideRight, 900);
    QCOMPARE(shown, QStringLiteral("ABC"));
}

void TestStyledItemDelegate::keepsTheCallersBackground()
{
    const QScopedPointer<QStandardItemModel> model(oneCell(nullptr));
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.backgroundBrush = QBrush(Qt::cyan, Qt::Dense3Pattern);
    delegate.initStyleOption(&option, model->index(0, 0));
    QCOMPARE(option.backgroundBrush, QBrush(Qt::cyan, Qt::Dense3Pattern));
}

void TestStyledItemDelegate::takesTheModelsBackground_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QBrush>("expected");
    const QBrush brush(Qt::green, Qt::Dense5Pattern);
    QTest::newRow("brush") << QVariant(brush) << brush;
    QTest::newRow("colour") << QVariant(QColor(Qt::blue)) << QBrush(Qt::blue);
    QTest::newRow("no brush at all") << QVariant(QStringLiteral("red")) << QBrush();
    QTest::newRow("default brush") << QVariant(QBrush()) << QBrush();
}

void TestStyledItemDelegate::takesTheModelsBackground()
{
    QFETCH(QVariant, value);
    const QScopedPointer<QStandardItemModel> model(oneCell(nullptr, {{Qt::BackgroundRole, value}}));
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.backgroundBrush = QBrush(Qt::cyan);
    delegate.initStyleOption(&option, model->index(0, 0));
    QTEST(option.backgroundBrush, "expected");
}

void TestStyledItemDelegate::takesTheModelsForeground_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QBrush>("expected");
    QTest::newRow("brush") << QVariant(QBrush(Qt::red)) << QBrush(Qt::red);
    QTest::newRow("colour") << QVariant(QColor(1, 2, 3)) << QBrush(QColor(1, 2, 3));
    QTest::newRow("no brush at all") << QVariant(QStringLiteral("red")) << QBrush();
    QTest::newRow("number") << QVariant(17) << QBrush();
}

void TestStyledItemDelegate::takesTheModelsForeground()
{
    QFETCH(QVariant, value);
    QFETCH(QBrush, expected);
    const QScopedPointer<QStandardItemModel> model(oneCell(nullptr, {{Qt::ForegroundRole, value}}));
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.palette.setColor(QPalette::Text, Qt::magenta);
    option.palette.setColor(QPalette::Base, Qt::yellow);
    delegate.initStyleOption(&option, model->index(0, 0));
    for (QPalette::ColorGroup group : groups()) {
        QCOMPARE(option.palette.brush(group, QPalette::Text), expected);
        QCOMPARE(option.palette.brush(group, QPalette::HighlightedText), expected);
        QCOMPARE(option.palette.color(group, QPalette::Base), QColor(Qt::yellow));
    }
}

void TestStyledItemDelegate::leavesThePaletteAlone()
{
    const QScopedPointer<QStandardItemModel> model(
        oneCell(nullptr, {{Qt::DisplayRole, QStringLiteral("x")}}));
    const StyledItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    const qint64 key = option.palette.cacheKey();
    delegate.initStyleOption(&option, model->index(0, 0));
    QCOMPARE(option.palette.cacheKey(), key);
}

void TestStyledItemDelegate::givesTheSamePaletteAgain()
{
    const QPalette base(Qt::lightGray);
    QLinearGradient gradient(0, 0, 1, 1);
    gradient.setColorAt(0.3, Qt::red);
    for (const QBrush &brush : {QBrush(Qt::red), QBrush(gradient), QBrush(QPixmap(3, 3))}) {
        const QScopedPointer<QStandardItemModel> model(
            oneCell(nullptr, {{Qt::ForegroundRole, brush}}));
        QSet<qint64> keys;
        for (int i = 0; i < 10; ++i) {
            const StyledItemDelegate delegate(nullptr);
            QStyleOptionViewItem option;
            option.palette = base;
            delegate.initStyleOption(&option, model->index(0, 0));
            keys.insert(option.palette.cacheKey());
        }
        QCOMPARE(keys.size(), 1);
        QVERIFY(!keys.contains(base.cacheKey()));
    }
}

void TestStyledItemDelegate::givesOtherPalettesForOtherBrushes()
{
    QLinearGradient one(0, 0, 1, 1);
    one.setColorAt(0.3, Qt::red);
    QLinearGradient other = one;
    other.setColorAt(0.3, Qt::blue);
    const QList<QBrush> brushes {
        QBrush(Qt::red),
        QBrush(QColor(255, 0, 0, 128)),
        QBrush(Qt::red, Qt::Dense1Pattern),
        QBrush(Qt::blue),
        QBrush(one),
        QBrush(other),
    };
    const StyledItemDelegate delegate(nullptr);
    QSet<qint64> keys;
    const QPalette light(Qt::lightGray);
    const QPalette dark(Qt::darkGray);
    for (const QPalette &base : {light, dark, light}) {
        for (const QBrush &brush : brushes) {
            const QScopedPointer<QStandardItemModel> model(
                oneCell(nullptr, {{Qt::ForegroundRole, brush}}));
            QStyleOptionViewItem option;
            option.palette = base;
            delegate.initStyleOption(&option, model->index(0, 0));
            QCOMPARE(option.palette.brush(QPalette::Text), brush);
            QCOMPARE(option.palette.color(QPalette::Window), base.color(QPalette::Window));
            keys.insert(option.palette.cacheKey());
        }
    }
    QCOMPARE(keys.size(), 2 * brushes.size());
}

void TestStyledItemDelegate::keepsTheColorGroup()
{
    const QScopedPointer<QStandardItemModel> model(
        oneCell(nullptr, {{Qt::ForegroundRole, QBrush(Qt::red)}}));
    const StyledItemDelegate delegate(nullptr);
    const QPalette base(Qt::lightGray);
    for (QPalette::ColorGroup group : groups()) {
        QStyleOptionViewItem option;
        option.palette = base;
        option.palette.setCurrentColorGroup(group);
        delegate.initStyleOption(&option, model->index(0, 0));
        QCOMPARE(option.palette.currentColorGroup(), group);
    }
}

void TestStyledItemDelegate::namesMonths_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("expected");
    const char *const names[] = {"январь", "февраль", "март",     "апрель",  "май",    "июнь",
                                 "июль",   "август",  "сентябрь", "октябрь", "ноябрь", "декабрь"};
    for (int month = 1; month <= 12; ++month)
        QTest::addRow("month %d", month) << QDate(2024, month, 28) << names[month - 1];
    QTest::newRow("invalid") << QDate() << "нулябрь";
}

void TestStyledItemDelegate::namesMonths()
{
    QFETCH(QDate, date);
    QTEST(StyledItemDelegate::dateMonthToString(date), "expected");
}

void TestStyledItemDelegate::countsWeeks_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("expected");
    const QList<std::pair<int, const char *>> weeks {
        {1, "1st week"},   {2, "2nd week"},   {3, "3rd week"},   {4, "4th week"},
        {11, "11th week"}, {12, "12th week"}, {13, "13th week"}, {19, "19th week"},
        {20, "20th week"}, {21, "21st week"}, {22, "22nd week"}, {23, "23rd week"},
        {31, "31st week"}, {52, "52nd week"}, {53, "53rd week"},
    };
    const QDate firstMonday(2019, 12, 30); // of a year with 53 weeks
    for (const auto &[week, text] : weeks)
        QTest::addRow("week %d", week) << firstMonday.addDays(7 * (week - 1)) << text;
    QTest::newRow("invalid") << QDate() << "0th week";
}

void TestStyledItemDelegate::countsWeeks()
{
    QFETCH(QDate, date);
    QTEST(StyledItemDelegate::expWeekToString(date), "expected");
}

QTEST_MAIN(TestStyledItemDelegate)
#include "tst_styleditemdelegate.moc"
