// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "delegatecells.h"
#include "scalablefont.h"
#include "scaled.h"

#include <QApplication>
#include <QBitmap>
#include <QDateTime>
#include <QPainter>
#include <QPixmapCache>
#include <QProxyStyle>
#include <QScopeGuard>
#include <QTableView>
#include <QTest>

namespace {

//! Tells the state in which it was to draw a check mark.
class StateStyle : public QProxyStyle
{
public:
    StateStyle()
        : QProxyStyle(QStringLiteral("fusion"))
    {
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_IndicatorItemViewItemCheck)
            drawn = option->state;
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable State drawn;
};

//! A style with measures of its own.
class MeasuredStyle : public QProxyStyle
{
public:
    MeasuredStyle(int margin, int indicator)
        : QProxyStyle(QStringLiteral("fusion"))
        , m_margin(margin)
        , m_indicator(indicator)
    {
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_FocusFrameHMargin)
            return m_margin;
        if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight)
            return m_indicator;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int m_margin;
    int m_indicator;
};

QString hex(quint64 value, int digits)
{
    QString text = QString::number(value, 16).rightJustified(digits, u'0');
    std::reverse(text.begin(), text.end());
    return text;
}

//! The key by its definition, piece by piece.
QString plainKey(const QStyleOptionViewItem &o, double dpr, bool hasFrame, bool hasIndicator)
{
    const QBrush &brush = o.backgroundBrush;
    const quint64 kind = brush.style() == Qt::TexturePattern ? quint64(brush.texture().cacheKey())
                                                             : quint64(brush.style());
    return QStringList {QStringLiteral("ID:"),
                        o.text,
                        hex(uint(o.state), 8),
                        o.font.toString(),
                        hex(uint(dpr * 1000), 8),
                        hex(uint(o.rect.width()), 8),
                        hex(uint(o.rect.height()), 8),
                        hex(uint(o.displayAlignment), 8),
                        hex(kind, 16),
                        brush.color().name(),
                        hex(uint(o.features), 8),
                        hex(uint(o.checkState), 8),
                        hex(o.showDecorationSelected, 2),
                        hex(hasFrame, 2),
                        hex(hasIndicator, 2),
                        hex(quint64(o.palette.cacheKey()), 16)}
        .join(QString());
}

QBrush gradientBrush(const QColor &end)
{
    QLinearGradient gradient(0, 0, 100, 0);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, end);
    return gradient;
}

} // namespace

Q_DECLARE_METATYPE(QStyleOptionViewItem)

class TestItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keyHasItsSixteenPieces_data();
    void keyHasItsSixteenPieces();
    void keyTruncatesTheRatio_data();
    void keyTruncatesTheRatio();
    void keyIgnoresThePlace();
    void pictureIsKeptUnderTheKey_data();
    void pictureIsKeptUnderTheKey();
    void equalCellsShareOnePicture();
    void coloredTextHitsTheCache();
    void cachedPictureIsUsed();
    void indicatorsStoreNothing();
    void flagsMakeOtherPictures();
    void pictureHasTheDeviceRatio_data();
    void pictureHasTheDeviceRatio();
    void ratioIsTheParentsWithoutWidget();
    void tooLargePictureIsShownAllTheSame();
    void unlikeCellsAreNotMixedUp_data();
    void unlikeCellsAreNotMixedUp();
    void disabledParentIsNotMixedUp();
    void otherGroupIsNotMixedUp();
    void otherDirectionIsNotMixedUp();
    void directionIsTheViews_data();
    void directionIsTheViews();
    void narrowDateTimeShowsItsSeconds();
    void barelyNarrowDateTimesAreApart_data();
    void barelyNarrowDateTimesAreApart();
    void fontsAreMeasuredApart();
    void nullValuesHaveTheirOwnPictures_data();
    void nullValuesHaveTheirOwnPictures();
    void indicatorIsCentred_data();
    void indicatorIsCentred();
    void indicatorIsNullWithout();
    void textIsRightOfTheIndicator();
    void sizeHintHasRoomForTheIndicator();
    void checkMarkHasNoFocus();
    void checkMarkIsTheStyles_data();
    void checkMarkIsTheStyles();
    void checkMarkWinsOverDecoration();
    void decorationIsShown_data();
    void decorationIsShown();
    void uselessDecorationDrawsNothing();
};

void TestItemDelegate::init()
{
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(10240);
}

void TestItemDelegate::keyHasItsSixteenPieces_data()
{
    QTest::addColumn<QStyleOptionViewItem>("option");
    QStyleOptionViewItem option;
    option.rect = QRect(30, 40, 123, 17);
    option.text = QStringLiteral("Text é 漢");
    const auto row = [&](const char *name, auto change) {
        QStyleOptionViewItem changed = option;
        change(changed);
        QTest::newRow(name) << changed;
    };
    row("plain", [](auto &) {});
    row("no text", [](auto &o) { o.text.clear(); });
    row("state", [](auto &o) { o.state = QStyle::State_Selected | QStyle::State_HasFocus; });
    row("font", [](auto &o) {
        o.font.setPixelSize(33);
        o.font.setItalic(true);
    });
    row("negative size", [](auto &o) { o.rect.setSize(QSize(-4, -1)); });
    row("alignment", [](auto &o) { o.displayAlignment = Qt::AlignRight | Qt::AlignBottom; });
    row("solid", [](auto &o) { o.backgroundBrush = QBrush(QColor(1, 0xab, 0xff)); });
    row("pattern", [](auto &o) { o.backgroundBrush = QBrush(Qt::red, Qt::CrossPattern); });
    row("transparent", [](auto &o) { o.backgroundBrush = QBrush(QColor(9, 8, 7, 6)); });
    row("texture", [](auto &o) { o.backgroundBrush = QBrush(QPixmap(4, 4)); });
    row("gradient", [](auto &o) { o.backgroundBrush = gradientBrush(Qt::red); });
    row("hsv", [](auto &o) { o.backgroundBrush = QBrush(QColor::fromHsv(200, 99, 77)); });
    row("features", [](auto &o) { o.features = QStyleOptionViewItem::Alternate; });
    row("checked", [](auto &o) { o.checkState = Qt::Checked; });
    row("selected decoration", [](auto &o) { o.showDecorationSelected = true; });
    row("palette", [](auto &o) { o.palette = QPalette(Qt::green); });
}

void TestItemDelegate::keyHasItsSixteenPieces()
{
    QFETCH(QStyleOptionViewItem, option);
    for (bool hasFrame : {false, true}) {
        for (bool hasIndicator : {false, true}) {
            ItemDelegate delegate(nullptr);
            delegate.setDrawFrame(hasFrame);
            delegate.setDrawIndicator(hasIndicator);
            QCOMPARE(delegate.cacheKey(option, 1.25),
                     plainKey(option, 1.25, hasFrame, hasIndicator));
        }
    }
}

void TestItemDelegate::keyTruncatesTheRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("thousandths");
    QTest::newRow("1") << 1.0 << 1000;
    QTest::newRow("1.5") << 1.5 << 1500;
    QTest::newRow("below 2") << 1.99999 << 1999;
    QTest::newRow("a third more") << 4.0 / 3 << 1333;
}

void TestItemDelegate::keyTruncatesTheRatio()
{
    QFETCH(double, ratio);
    QFETCH(int, thousandths);
    const QStyleOptionViewItem option;
    const QString key = ItemDelegate(nullptr).cacheKey(option, ratio);
    const QString head =
        QStringLiteral("ID:") + hex(uint(option.state), 8) + option.font.toString();
    QVERIFY(key.startsWith(head));
    QCOMPARE(key.mid(head.size(), 8), hex(quint64(thousandths), 8));
}

void TestItemDelegate::keyIgnoresThePlace()
{
    const ItemDelegate delegate(nullptr);
    Cell cell;
    const QString key = delegate.cacheKey(cell.option, 1);
    cell.option.rect.translate(100, 200);
    QCOMPARE(delegate.cacheKey(cell.option, 1), key);
}

void TestItemDelegate::pictureIsKeptUnderTheKey_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("plain") << int(Qt::UserRole) << QVariant();
    QTest::newRow("solid") << int(Qt::BackgroundRole) << QVariant(QBrush(Qt::red));
    QTest::newRow("pattern") << int(Qt::BackgroundRole)
                             << QVariant(QBrush(Qt::red, Qt::Dense4Pattern));
    QPixmap texture(3, 3);
    texture.fill(Qt::green);
    QTest::newRow("texture") << int(Qt::BackgroundRole) << QVariant(QBrush(texture));
    QTest::newRow("coloured text") << int(Qt::ForegroundRole) << QVariant(QBrush(Qt::red));
    QTest::newRow("number") << int(Qt::DisplayRole) << QVariant(12.5);
    QTest::newRow("narrow date") << int(Qt::DisplayRole) << QVariant(QDate(2024, 5, 7));
}

void TestItemDelegate::pictureIsKeptUnderTheKey()
{
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QWidget viewport;
    Cell cell({{Qt::DisplayRole, QStringLiteral("cell")}, {role, value}});
    for (QStyle::State state : {QStyle::State_Enabled | QStyle::State_Active,
                                QStyle::State_Enabled | QStyle::State_Selected}) {
        ItemDelegate delegate(nullptr);
        delegate.setParent(&viewport);
        cell.option.state = state;
        cell.option.rect.setWidth(41);
        const QString key =
            delegate.cacheKey(cell.initialised(delegate), viewport.devicePixelRatioF());
        QVERIFY(!isCached(key));
        painted(delegate, cell);
        QVERIFY(isCached(key));
    }
}

void TestItemDelegate::equalCellsShareOnePicture()
{
    const NotingDelegate delegate(nullptr);
    Cell one;
    Cell other;
    other.option.rect.translate(30, 2);
    const QImage first = painted(delegate, one);
    const QImage second = painted(delegate, other);
    QCOMPARE(delegate.count("drawBackground"), 1);
    QCOMPARE(second.copy(other.option.rect), first.copy(one.option.rect));
}

void TestItemDelegate::coloredTextHitsTheCache()
{
    const NotingDelegate delegate(nullptr);
    const Cell cell(
        {{Qt::DisplayRole, QStringLiteral("cell")}, {Qt::ForegroundRole, QBrush(Qt::darkGreen)}});
    for (int i = 0; i < 10; ++i)
        painted(delegate, cell);
    QCOMPARE(delegate.count("drawBackground"), 1);
}

void TestItemDelegate::cachedPictureIsUsed()
{
    const ItemDelegate delegate(nullptr);
    const Cell cell;
    QPixmap planted(cellSize);
    planted.fill(Qt::cyan);
    QPixmapCache::insert(delegate.cacheKey(cell.initialised(delegate), 1), planted);
    const QImage image = painted(delegate, cell);
    QImage expected = canvas();
    QPainter(&expected).fillRect(cell.option.rect, Qt::cyan);
    QCOMPARE(image, expected);
}

void TestItemDelegate::indicatorsStoreNothing()
{
    NotingDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    const Cell cell;
    painted(delegate, cell);
    painted(delegate, cell);
    QCOMPARE(delegate.count("drawBackground"), 2);
    QCOMPARE(delegate.count("cacheKey"), 0);
    QVERIFY(!isCached(delegate.ItemDelegate::cacheKey(cell.initialised(delegate), 1)));
}

void TestItemDelegate::flagsMakeOtherPictures()
{
    ItemDelegate delegate(nullptr);
    const Cell cell;
    const QImage framed = painted(delegate, cell);
    delegate.setDrawFrame(false);
    const QImage frameless = painted(delegate, cell);
    QVERIFY(framed != frameless);
    delegate.setDrawFrame(true);
    QCOMPARE(painted(delegate, cell), framed);
}

void TestItemDelegate::pictureHasTheDeviceRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("1") << 1.0 << QSize(100, 20) << QSize(100, 20);
    QTest::newRow("1.5") << 1.5 << QSize(100, 20) << QSize(150, 30);
    QTest::newRow("2") << 2.0 << QSize(101, 21) << QSize(202, 42);
    QTest::newRow("half away from zero") << 1.5 << QSize(101, 21) << QSize(152, 32);
    QTest::newRow("1.25") << 1.25 << QSize(101, 21) << QSize(126, 26);
}

void TestItemDelegate::pictureHasTheDeviceRatio()
{
    QFETCH(double, ratio);
    QFETCH(QSize, size);
    QFETCH(QSize, expected);
    const Scaled<QWidget> widget(ratio);
    const ItemDelegate delegate(nullptr);
    Cell cell;
    cell.option.rect.setSize(size);
    cell.option.widget = &widget;
    painted(delegate, cell); // on a device of ratio 1, which does not count
    QPixmap pixmap;
    QVERIFY(isCached(delegate.cacheKey(cell.initialised(delegate), ratio), &pixmap));
    QCOMPARE(pixmap.size(), expected);
    QCOMPARE(pixmap.devicePixelRatio(), ratio);
}

void TestItemDelegate::ratioIsTheParentsWithoutWidget()
{
    Scaled<QWidget> parent(3);
    auto *delegate = new ItemDelegate(nullptr);
    delegate->setParent(&parent);
    const Cell cell;
    painted(*delegate, cell);
    QPixmap pixmap;
    QVERIFY(isCached(delegate->cacheKey(cell.initialised(*delegate), 3), &pixmap));
    QCOMPARE(pixmap.size(), 3 * cellSize);
}

void TestItemDelegate::tooLargePictureIsShownAllTheSame()
{
    const ItemDelegate delegate(nullptr);
    const Cell cell;
    const QImage usual = painted(delegate, cell);
    QPixmapCache::setCacheLimit(1);
    QCOMPARE(painted(delegate, cell), usual);
    QVERIFY(!isCached(delegate.cacheKey(cell.initialised(delegate), 1)));
}

void TestItemDelegate::unlikeCellsAreNotMixedUp_data()
{
    QTest::addColumn<QBrush>("one");
    QTest::addColumn<QBrush>("other");
    QTest::newRow("gradients with other stops")
        << gradientBrush(Qt::red) << gradientBrush(Qt::blue);
    QTest::newRow("other alpha") << QBrush(QColor(200, 0, 0, 255)) << QBrush(QColor(200, 0, 0, 90));
    QTest::newRow("both transparent")
        << QBrush(QColor(200, 0, 0, 30)) << QBrush(QColor(200, 0, 0, 90));
    QTest::newRow("pattern of other alpha") << QBrush(QColor(200, 0, 0, 255), Qt::Dense4Pattern)
                                            << QBrush(QColor(200, 0, 0, 90), Qt::Dense4Pattern);
    QPixmap halves(8, 8);
    halves.fill(Qt::red);
    QPainter(&halves).fillRect(0, 0, 8, 4, Qt::blue);
    QBrush turned(halves);
    turned.setTransform(QTransform().rotate(90));
    QTest::newRow("other transformation") << QBrush(halves) << turned;
    QBitmap bitmap(4, 4);
    bitmap.fill(Qt::color1);
    QTest::newRow("bitmap of other alpha")
        << QBrush(QColor(200, 0, 0, 255), bitmap) << QBrush(QColor(200, 0, 0, 90), bitmap);
}

void TestItemDelegate::unlikeCellsAreNotMixedUp()
{
    QFETCH(QBrush, one);
    QFETCH(QBrush, other);
    const NotingDelegate delegate(nullptr);
    const Cell oneCell({{Qt::BackgroundRole, one}});
    const Cell otherCell({{Qt::BackgroundRole, other}});
    const QImage first = painted(delegate, oneCell);
    const QImage second = painted(delegate, otherCell);
    QVERIFY(first != second);
    QCOMPARE(delegate.count("drawBackground"), 2);
    QCOMPARE(painted(delegate, oneCell), first);
    QCOMPARE(painted(delegate, otherCell), second);
    QCOMPARE(delegate.count("drawBackground"), 2); // both are still cached
}

void TestItemDelegate::disabledParentIsNotMixedUp()
{
    QTableView view;
    const auto *delegate = new NotingDelegate(&view);
    for (QStyle::State state :
         {QStyle::State(QStyle::State_None), QStyle::State_Enabled | QStyle::State_Active}) {
        Cell cell;
        cell.option.palette.setColor(QPalette::Disabled, QPalette::Text, Qt::red);
        cell.option.palette.setColor(QPalette::Disabled, QPalette::Base, Qt::blue);
        cell.option.state = state;
        view.setEnabled(true);
        const QImage enabled = painted(*delegate, cell);
        view.setEnabled(false);
        const QImage disabled = painted(*delegate, cell);
        QVERIFY(enabled != disabled);
        QCOMPARE(disabled.pixelColor(cell.option.rect.topLeft()), QColor(Qt::blue));
        view.setEnabled(true);
        QCOMPARE(painted(*delegate, cell), enabled);
    }
}

void TestItemDelegate::otherGroupIsNotMixedUp()
{
    const ItemDelegate delegate(nullptr);
    Cell cell;
    cell.option.palette.setColor(QPalette::Active, QPalette::Mid, Qt::red);
    cell.option.palette.setColor(QPalette::Inactive, QPalette::Mid, Qt::green);
    cell.option.palette.setColor(QPalette::Disabled, QPalette::Mid, Qt::blue);
    const QPoint corner = cell.option.rect.bottomRight();
    for (int round = 0; round < 2; ++round) {
        for (QPalette::ColorGroup group :
             {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            cell.option.palette.setCurrentColorGroup(group);
            QCOMPARE(painted(delegate, cell).pixelColor(corner),
                     cell.option.palette.color(group, QPalette::Mid));
        }
    }
}

void TestItemDelegate::otherDirectionIsNotMixedUp()
{
    const ItemDelegate delegate(nullptr);
    for (const QString &text : {QStringLiteral("cell"), QStringLiteral("שלום abc")}) {
        const Cell cell({{Qt::DisplayRole, text}});
        QList<QImage> images;
        for (Qt::LayoutDirection direction :
             {Qt::LeftToRight, Qt::RightToLeft, Qt::LayoutDirectionAuto}) {
            images.append(painted(delegate, cell, direction));
            QCOMPARE(images.last(), plainlyPainted(cell, text, direction));
        }
        QVERIFY(images.at(0) != images.at(1));
        QCOMPARE(painted(delegate, cell, Qt::LeftToRight), images.at(0));
        QCOMPARE(painted(delegate, cell, Qt::RightToLeft), images.at(1));
    }
}

void TestItemDelegate::directionIsTheViews_data()
{
    QTest::addColumn<Qt::LayoutDirection>("ofApplication");
    QTest::addColumn<Qt::LayoutDirection>("ofPainter");
    QTest::addColumn<Qt::LayoutDirection>("ofOption");
    QTest::addColumn<Qt::LayoutDirection>("expected");
    const Qt::LayoutDirection left = Qt::LeftToRight;
    const Qt::LayoutDirection right = Qt::RightToLeft;
    const Qt::LayoutDirection any = Qt::LayoutDirectionAuto;
    QTest::newRow("all left to right") << left << left << left << left;
    QTest::newRow("view in a left-to-right application") << left << left << right << right;
    QTest::newRow("view in a right-to-left application") << right << right << left << left;
    QTest::newRow("all right to left") << right << right << right << right;
    QTest::newRow("set on the painter") << left << right << left << right;
    QTest::newRow("painter of no direction") << left << any << left << any;
    QTest::newRow("painter of no direction, view of one") << left << any << right << right;
}

void TestItemDelegate::directionIsTheViews()
{
    QFETCH(Qt::LayoutDirection, ofApplication);
    QFETCH(Qt::LayoutDirection, ofPainter);
    QFETCH(Qt::LayoutDirection, ofOption);
    QFETCH(Qt::LayoutDirection, expected);
    const auto restore = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
    QGuiApplication::setLayoutDirection(ofApplication);
    const QString text = QStringLiteral("שלום abc (12).");
    Cell cell({{Qt::DisplayRole, text}});
    cell.option.direction = ofOption;
    for (bool hasIndicator : {false, true}) {
        ItemDelegate delegate(nullptr);
        delegate.setDrawIndicator(hasIndicator);
        const QRect &rect = cell.option.rect;
        QCOMPARE(painted(delegate, cell, ofPainter).copy(rect),
                 plainlyPainted(cell, text, expected).copy(rect));
    }
}

void TestItemDelegate::narrowDateTimeShowsItsSeconds()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German)); // whose short form is without seconds
    const NotingDelegate delegate(nullptr);
    const QDateTime one(QDate(2024, 5, 7), QTime(21, 43, 5));
    Cell oneCell({{Qt::DisplayRole, one}});
    Cell laterCell({{Qt::DisplayRole, one.addSecs(31)}});
    QCOMPARE(oneCell.initialised(delegate).text, laterCell.initialised(delegate).text);

    const QFontMetrics metrics(oneCell.option.font);
    const int timeWidth = metrics.horizontalAdvance(QStringLiteral("21:43:05")) + 20;
    for (Cell *cell : {&oneCell, &laterCell})
        cell->option.rect.setWidth(timeWidth);
    QVERIFY(painted(delegate, oneCell) != painted(delegate, laterCell));
    QCOMPARE(delegate.count("drawBackground"), 2);

    for (Cell *cell : {&oneCell, &laterCell})
        cell->option.rect.setWidth(1000);
    QCOMPARE(painted(delegate, oneCell), painted(delegate, laterCell));
    QCOMPARE(delegate.count("drawBackground"), 3);
    QVERIFY(isCached(delegate.cacheKey(oneCell.initialised(delegate), 1)));
}

//! The width of the widest date-time as StyledItemDelegate measures it.
static int wideWidth(const QFont &font)
{
    const QDateTime widest(QDate(2013, 12, 30), QTime(23, 50, 50, 105));
    return QFontMetrics(font).horizontalAdvance(
        StyledItemDelegate(nullptr).dateTimeToWideText(widest));
}

void TestItemDelegate::barelyNarrowDateTimesAreApart_data()
{
    QTest::addColumn<int>("missing");
    for (int missing : {0, 1})
        QTest::addRow("%d", missing) << missing;
}

//! As soon as the column is too narrow inside its margins, the seconds are seen.
void TestItemDelegate::barelyNarrowDateTimesAreApart()
{
    QFETCH(int, missing);
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German)); // whose short form is without seconds
    MeasuredStyle style(10, 13);
    QTableView view;
    view.setStyle(&style);
    const ItemDelegate delegate(nullptr);
    const QDateTime one(QDate(2024, 5, 7), QTime(21, 43, 5));
    Cell oneCell({{Qt::DisplayRole, one}});
    Cell laterCell({{Qt::DisplayRole, one.addSecs(31)}});
    for (Cell *cell : {&oneCell, &laterCell}) {
        cell->option.widget = &view;
        cell->option.rect.setWidth(wideWidth(cell->option.font) + 2 * 10 - missing);
    }
    QCOMPARE(painted(delegate, oneCell) == painted(delegate, laterCell), missing == 0);
}

//! A width that is enough in smaller fonts, inside its margins, is too narrow in a large one.
void TestItemDelegate::fontsAreMeasuredApart()
{
    const QLocale before;
    const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German));
    const ItemDelegate delegate(nullptr);
    const QDateTime one(QDate(2024, 5, 7), QTime(21, 43, 5));
    const QFont small = scalableFont(8);
    const QFont large = scalableFont(24);
    for (const QFont &font : {small, large, small, large}) {
        Cell oneCell({{Qt::DisplayRole, one}});
        Cell laterCell({{Qt::DisplayRole, one.addSecs(31)}});
        for (Cell *cell : {&oneCell, &laterCell}) {
            cell->option.font = font;
            cell->option.rect.setWidth(wideWidth(large));
        }
        QCOMPARE(painted(delegate, oneCell) == painted(delegate, laterCell), font == small);
    }
}

void TestItemDelegate::nullValuesHaveTheirOwnPictures_data()
{
    QTest::addColumn<QMetaType>("type");
    QTest::newRow("int") << QMetaType(QMetaType::Int);
    QTest::newRow("double") << QMetaType(QMetaType::Double);
    QTest::newRow("bool") << QMetaType(QMetaType::Bool);
    QTest::newRow("text") << QMetaType(QMetaType::QString);
    QTest::newRow("date") << QMetaType(QMetaType::QDate);
    QTest::newRow("date-time") << QMetaType(QMetaType::QDateTime);
}

//! Whatever was painted before.
void TestItemDelegate::nullValuesHaveTheirOwnPictures()
{
    QFETCH(QMetaType, type);
    const ItemDelegate delegate(nullptr);
    Cell null({{Qt::DisplayRole, QVariant(type)}});
    Cell blank({{Qt::DisplayRole, QVariant(QMetaType(QMetaType::QString))}});
    const QImage expected = painted(delegate, null);
    QPixmapCache::clear();
    const QImage nothing = painted(delegate, blank);
    QCOMPARE(painted(delegate, null), expected);
    QPixmapCache::clear();
    painted(delegate, null);
    QCOMPARE(painted(delegate, blank), nothing);
}

void TestItemDelegate::indicatorIsCentred_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("expectedTop");
    QTest::newRow("30") << 30 << 8;
    QTest::newRow("31") << 31 << 9;
    QTest::newRow("13") << 13 << 0;
    QTest::newRow("12, towards zero") << 12 << 0;
    QTest::newRow("10, towards zero") << 10 << -1;
}

void TestItemDelegate::indicatorIsCentred()
{
    QFETCH(int, height);
    QFETCH(int, expectedTop);
    MeasuredStyle style(5, 13);
    QWidget widget;
    widget.setStyle(&style);
    Cell cell({{Qt::CheckStateRole, Qt::Checked}});
    cell.option.widget = &widget;
    cell.option.rect.setHeight(height);
    const QRect expected(cell.option.rect.topLeft() + QPoint(5, expectedTop), QSize(13, 13));
    QCOMPARE(ItemDelegate::indicatorRectByStyle(cell.option), expected);

    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    QCOMPARE(delegate.indicatorRect(cell.initialised(delegate), cell.index()), expected);
}

void TestItemDelegate::indicatorIsNullWithout()
{
    ItemDelegate delegate(nullptr);
    const Cell checked({{Qt::CheckStateRole, Qt::Unchecked}});
    QCOMPARE(delegate.indicatorRect(checked.initialised(delegate), checked.index()), QRect());
    QCOMPARE(delegate.textRect(checked.initialised(delegate), checked.index()),
             checked.option.rect);

    delegate.setDrawIndicator(true);
    QVERIFY(!delegate.indicatorRect(checked.initialised(delegate), checked.index()).isNull());
    const Cell decorated({{Qt::DecorationRole, QColor(Qt::red)}});
    QCOMPARE(delegate.indicatorRect(decorated.initialised(delegate), decorated.index()),
             ItemDelegate::indicatorRectByStyle(decorated.option));
    const Cell bare;
    QCOMPARE(delegate.indicatorRect(bare.initialised(delegate), bare.index()), QRect());
    QCOMPARE(delegate.textRect(bare.initialised(delegate), bare.index()), bare.option.rect);
}

void TestItemDelegate::textIsRightOfTheIndicator()
{
    MeasuredStyle style(5, 13);
    QWidget widget;
    widget.setStyle(&style);
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    Cell cell({{Qt::CheckStateRole, Qt::Checked}});
    cell.option.widget = &widget;
    QRect expected = cell.option.rect;
    expected.setLeft(expected.left() + 5 + 13);
    QCOMPARE(delegate.textRect(cell.initialised(delegate), cell.index()), expected);
}

void TestItemDelegate::sizeHintHasRoomForTheIndicator()
{
    MeasuredStyle style(5, 70);
    QWidget widget;
    widget.setStyle(&style);
    ItemDelegate delegate(nullptr);
    Cell cell;
    cell.option.widget = &widget;
    const StyledItemDelegate base(nullptr);
    for (const QRect &rect : {QRect(0, 0, -1, 5), QRect()}) {
        cell.option.rect = rect;
        delegate.setDrawIndicator(false);
        QCOMPARE(delegate.sizeHint(cell.option, cell.index()),
                 base.sizeHint(cell.option, cell.index()));
        delegate.setDrawIndicator(true);
        QCOMPARE(delegate.sizeHint(cell.option, cell.index()),
                 base.sizeHint(cell.option, cell.index()).expandedTo(QSize(72, 72)));
    }
}

//! The frame around what has the focus is that of the cell.
void TestItemDelegate::checkMarkHasNoFocus()
{
    StateStyle style;
    QTableView view;
    view.setStyle(&style);
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    Cell cell({{Qt::CheckStateRole, Qt::Checked}});
    cell.option.widget = &view;
    cell.option.state |= QStyle::State_HasFocus;
    painted(delegate, cell);
    QCOMPARE(style.drawn, QStyle::State_Enabled | QStyle::State_Active | QStyle::State_On);
}

void TestItemDelegate::checkMarkIsTheStyles_data()
{
    QTest::addColumn<Qt::CheckState>("checkState");
    QTest::addColumn<QStyle::State>("mark");
    QTest::newRow("unchecked") << Qt::Unchecked << QStyle::State(QStyle::State_Off);
    QTest::newRow("partially") << Qt::PartiallyChecked << QStyle::State(QStyle::State_NoChange);
    QTest::newRow("checked") << Qt::Checked << QStyle::State(QStyle::State_On);
}

void TestItemDelegate::checkMarkIsTheStyles()
{
    QFETCH(Qt::CheckState, checkState);
    QFETCH(QStyle::State, mark);
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    Cell cell({{Qt::CheckStateRole, checkState}});
    cell.option.state |= QStyle::State_HasFocus;
    const QImage image = painted(delegate, cell);

    QImage expected = canvas();
    QPainter painter(&expected);
    QStyleOptionViewItem option = cell.initialised(delegate);
    delegate.drawBackground(&painter, option);
    delegate.drawFrame(&painter, option);
    option.rect = ItemDelegate::indicatorRectByStyle(option);
    option.state = (option.state & ~QStyle::State_HasFocus) | mark;
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &option, &painter);
    painter.end();
    QCOMPARE(image, expected);
}

void TestItemDelegate::checkMarkWinsOverDecoration()
{
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    const Cell both({{Qt::CheckStateRole, Qt::Checked}, {Qt::DecorationRole, QColor(Qt::red)}});
    const Cell checked({{Qt::CheckStateRole, Qt::Checked}});
    QCOMPARE(painted(delegate, both), painted(delegate, checked));
}

void TestItemDelegate::decorationIsShown_data()
{
    QTest::addColumn<QVariant>("decoration");
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::red);
    QTest::newRow("icon") << QVariant(QIcon(pixmap));
    QTest::newRow("pixmap") << QVariant(pixmap);
    QTest::newRow("image") << QVariant(pixmap.toImage());
    QTest::newRow("colour") << QVariant(QColor(Qt::red));
}

void TestItemDelegate::decorationIsShown()
{
    QFETCH(QVariant, decoration);
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    const Cell cell({{Qt::DecorationRole, decoration}});
    for (double ratio : {1.0, 2.0}) {
        const QImage image = painted(delegate, cell, Qt::LeftToRight, ratio);
        QImage expected = canvas(ratio);
        QPainter painter(&expected);
        delegate.drawBackground(&painter, cell.option);
        delegate.drawFrame(&painter, cell.option);
        painter.fillRect(ItemDelegate::indicatorRectByStyle(cell.option), Qt::red);
        painter.end();
        QCOMPARE(image, expected);
    }
}

void TestItemDelegate::uselessDecorationDrawsNothing()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    for (const QVariant &decoration : {QVariant(QStringLiteral("text")), QVariant(QIcon()),
                                       QVariant(QPixmap()), QVariant(QImage())}) {
        const Cell cell({{Qt::DecorationRole, decoration}});
        QCOMPARE(painted(delegate, cell), painted(delegate, Cell(QHash<int, QVariant> {})));
    }
}

QTEST_MAIN(TestItemDelegate)
#include "tst_itemdelegate.moc"
