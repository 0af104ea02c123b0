// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "itemdelegate.h"
#include "scaled.h"

#include <QApplication>
#include <QBitmap>
#include <QCheckBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPainter>
#include <QPixmapCache>
#include <QProxyStyle>
#include <QScopeGuard>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QToolTip>

namespace {

using Vantix::ItemDelegate;

constexpr QSize cellSize(120, 24);

//! Notes which steps run.
class NotingDelegate : public ItemDelegate
{
public:
    using ItemDelegate::ItemDelegate;

    QString cacheKey(const QStyleOptionViewItem &option, double dpr) const override
    {
        return noted("cacheKey",
                     m_marksKeys ? QStringLiteral("ID:mine") : ItemDelegate::cacheKey(option, dpr));
    }
    QRect indicatorRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const override
    {
        return noted("indicatorRect", ItemDelegate::indicatorRect(opt, index));
    }
    QRect textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const override
    {
        return noted("textRect", ItemDelegate::textRect(opt, index));
    }
    void drawBackground(QPainter *painter, const QStyleOptionViewItem &opt) const override
    {
        m_steps.append("drawBackground");
        ItemDelegate::drawBackground(painter, opt);
    }
    void drawContents(QPainter *p, const QStyleOptionViewItem &opt,
                      const QModelIndex &index) const override
    {
        m_steps.append("drawContents");
        ItemDelegate::drawContents(p, opt, index);
    }
    void drawIndicator(QPainter *painter, const QStyleOptionViewItem &opt,
                       const QModelIndex &index) const override
    {
        m_steps.append("drawIndicator");
        ItemDelegate::drawIndicator(painter, opt, index);
    }
    void drawText(QPainter *painter, const QStyleOptionViewItem &opt,
                  const QModelIndex &index) const override
    {
        m_steps.append("drawText");
        ItemDelegate::drawText(painter, opt, index);
    }
    void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                        const QVariant &value) const override
    {
        m_steps.append("drawCustomText");
        ItemDelegate::drawCustomText(painter, opt, value);
    }
    void drawFrame(QPainter *painter, const QStyleOptionViewItem &opt) const override
    {
        m_steps.append("drawFrame");
        ItemDelegate::drawFrame(painter, opt);
    }

    int count(const char *step) const { return int(m_steps.count(QByteArray(step))); }

    mutable QList<QByteArray> m_steps;
    bool m_marksKeys = false;

private:
    template<typename T> T noted(const char *step, const T &result) const
    {
        m_steps.append(step);
        return result;
    }
};

//! Draws its text instead of the value's.
class ReplacingDelegate : public ItemDelegate
{
public:
    using ItemDelegate::ItemDelegate;
    QString displayElidedText(const QVariant &, const QLocale &, const QFontMetrics &,
                              Qt::TextElideMode, int) const override
    {
        return QStringLiteral("another text");
    }
};

//! Tells what text it made.
class ElisionDelegate : public ItemDelegate
{
public:
    using ItemDelegate::ItemDelegate;
    QString displayElidedText(const QVariant &value, const QLocale &locale,
                              const QFontMetrics &fontMetrics, Qt::TextElideMode elideMode,
                              int width) const override
    {
        m_shown = ItemDelegate::displayElidedText(value, locale, fontMetrics, elideMode, width);
        return m_shown;
    }

    mutable QString m_shown;
};

//! Shows messages in its own way.
class RecordingDelegate : public ItemDelegate
{
    Q_OBJECT

public:
    using ItemDelegate::ItemDelegate;
    Q_INVOKABLE void showToolTip(const QString &msg, const QPoint &pos) const
    {
        m_messages.append(msg);
        m_positions.append(pos);
    }

    mutable QStringList m_messages;
    mutable QList<QPoint> m_positions;
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

//! A model that does not take what it is given.
class RefusingModel : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (m_accepts)
            return QStandardItemModel::setData(index, value, role);
        m_offered.append(value);
        if (m_thrown.metaType() == QMetaType::fromType<QString>())
            throw m_thrown.toString();
        if (m_thrown.isValid())
            throw m_thrown.toInt();
        return false;
    }

    bool m_accepts = false;
    QVariant m_thrown;
    QVariantList m_offered;
};

//! A model of one cell, and how a view would show it.
struct Cell
{
    explicit Cell(const QHash<int, QVariant> &roles = {{Qt::DisplayRole, QStringLiteral("cell")}})
    {
        for (auto it = roles.begin(); it != roles.end(); ++it)
            model.setData(index(), it.value(), it.key());
        option.rect = QRect(QPoint(11, 7), cellSize);
        option.state = QStyle::State_Enabled | QStyle::State_Active;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option.palette = QApplication::palette();
    }

    QModelIndex index() const { return model.index(0, 0); }
    QStyleOptionViewItem initialised(const ItemDelegate &delegate) const
    {
        QStyleOptionViewItem opt = option;
        delegate.initStyleOption(&opt, index());
        return opt;
    }

    QStandardItemModel model {1, 1};
    QStyleOptionViewItem option;
};

QImage canvas(double ratio = 1)
{
    QImage image(int(200 * ratio), int(60 * ratio), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    return image;
}

QImage painted(const ItemDelegate &delegate, const Cell &cell,
               Qt::LayoutDirection direction = Qt::LeftToRight, double ratio = 1)
{
    QImage image = canvas(ratio);
    QPainter painter(&image);
    painter.setLayoutDirection(direction);
    delegate.paint(&painter, cell.option, cell.index());
    return image;
}

int marginOfStyle()
{
    return QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
}

//! The cell, step by step in the plainest way.
QImage plainlyPainted(const Cell &cell, const QString &value,
                      Qt::LayoutDirection direction = Qt::LeftToRight, double ratio = 1)
{
    const QStyleOptionViewItem opt = cell.initialised(ItemDelegate(nullptr));
    const QString text = QStyledItemDelegate().displayText(value, opt.locale);
    QPixmap pixmap(qRound(opt.rect.width() * ratio), qRound(opt.rect.height() * ratio));
    pixmap.fill(Qt::transparent);
    pixmap.setDevicePixelRatio(ratio);
    const QRect rect(QPoint(0, 0), opt.rect.size());
    QPainter p(&pixmap);
    p.setLayoutDirection(direction);
    p.fillRect(rect, opt.palette.color(QPalette::Active, QPalette::Base));
    p.setPen(opt.palette.color(QPalette::Active, QPalette::Text));
    p.setFont(opt.font);
    const int margin = marginOfStyle();
    const QRect inner = rect.adjusted(margin, 0, -margin, 0);
    p.drawText(inner, int(opt.displayAlignment),
               p.fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
    p.setPen(opt.palette.color(QPalette::Active, QPalette::Mid));
    p.drawLine(rect.topRight(), rect.bottomRight());
    p.drawLine(rect.bottomLeft(), rect.bottomRight());
    p.end();

    QImage image = canvas(ratio);
    QPainter(&image).drawPixmap(opt.rect.topLeft(), pixmap);
    return image;
}

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

bool isCached(const QString &key, QPixmap *pixmap = nullptr)
{
    QPixmap found;
    const bool isFound = QPixmapCache::find(key, &found);
    if (pixmap)
        *pixmap = found;
    return isFound;
}

QBrush gradientBrush(const QColor &end)
{
    QLinearGradient gradient(0, 0, 100, 0);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, end);
    return gradient;
}

//! Whether both ways paint the same. The first pictures of some glyphs differ from the
//! later ones, Qt's own, too.
bool isPaintedPlainly(const ItemDelegate &delegate, const Cell &cell, const QString &value,
                      Qt::LayoutDirection direction = Qt::LeftToRight, double ratio = 1)
{
    for (int attempt = 0; attempt < 5; ++attempt) {
        const QImage plain = plainlyPainted(cell, value, direction, ratio);
        if (painted(delegate, cell, direction, ratio) == plain)
            return true;
        QPixmapCache::clear();
    }
    return false;
}

//! Of the colours beside that of the background: glyphs have blurred edges.
QColor mostFrequentColor(const QImage &picture, const QColor &background)
{
    QMap<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    counts.remove(background.rgb());
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    return most == counts.cend() ? QColor() : QColor(most.key());
}

void runQueuedCalls()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

} // namespace

Q_DECLARE_METATYPE(QStyleOptionViewItem)

class TestItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void init();

    // The key
    void keyHasItsSixteenPieces_data();
    void keyHasItsSixteenPieces();
    void keyTruncatesTheRatio_data();
    void keyTruncatesTheRatio();
    void keyIgnoresThePlace();
    void pictureIsKeptUnderTheKey_data();
    void pictureIsKeptUnderTheKey();

    // The cache
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
    void nullValuesHaveTheirOwnPictures_data();
    void nullValuesHaveTheirOwnPictures();

    // The steps
    void stepsRunInOrder_data();
    void stepsRunInOrder();
    void cachedCellRunsNoStep();
    void replacedTextIsDrawn();
    void directPaintingLooksLikeThePicture();
    void textIsPaintedAsThePlainWayDoes_data();
    void textIsPaintedAsThePlainWayDoes();
    void everyWidthIsPaintedAsThePlainWayDoes_data();
    void everyWidthIsPaintedAsThePlainWayDoes();
    void fontsArePaintedAsThePlainWayDoes_data();
    void fontsArePaintedAsThePlainWayDoes();
    void elidedTextIsTheMetrics_data();
    void elidedTextIsTheMetrics();
    void unresolvedFontIsTheOptions();
    void backgroundHasItsColor_data();
    void backgroundHasItsColor();
    void textHasItsColor_data();
    void textHasItsColor();
    void frameIsTheRightAndBottomLine();
    void frameHasNoBrush();
    void frameIsThatOfDrawRects_data();
    void frameIsThatOfDrawRects();
    void directFrameReachesTheNeighbours();
    void frameIsOfTheCurrentGroup();
    void clipReplacesTheCallers();
    void painterIsLeftAsItWas_data();
    void painterIsLeftAsItWas();
    void emptyCellPaintsNothing_data();
    void emptyCellPaintsNothing();

    // Indicators
    void indicatorIsCentred_data();
    void indicatorIsCentred();
    void indicatorIsNullWithout();
    void textIsRightOfTheIndicator();
    void sizeHintHasRoomForTheIndicator();
    void checkMarkIsTheStyles_data();
    void checkMarkIsTheStyles();
    void checkMarkWinsOverDecoration();
    void decorationIsShown_data();
    void decorationIsShown();
    void uselessDecorationDrawsNothing();

    // Editing
    void lineEditorIsAligned();
    void otherEditorIsLeftAlone();
    void editorCoversTheText();
    void editorsCommit_data();
    void editorsCommit();
    void emptyTextIsCommitted();
    void editorWithoutPropertyIsLeftToQt();
    void refusalIsExplained_data();
    void refusalIsExplained();
    void acceptedValueSaysNothing();
    void otherExceptionsPass();
    void toolTipComesLater();
    void positionIsThatOfTheCommit();
    void hiddenMethodIsFound();
    void viewKeepsTheRefusedValue();
};

void TestItemDelegate::init()
{
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(10240);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

// The key

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

// The cache

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

// The steps

void TestItemDelegate::stepsRunInOrder_data()
{
    QTest::addColumn<bool>("hasFrame");
    QTest::addColumn<bool>("hasIndicator");
    QTest::addColumn<QList<QByteArray>>("expected");
    using Steps = QList<QByteArray>;
    QTest::newRow("picture") << true << false
                             << Steps {"cacheKey", "drawBackground", "drawContents",
                                       "drawText", "drawCustomText", "drawFrame"};
    QTest::newRow("picture without frame")
        << false << false
        << Steps {"cacheKey", "drawBackground", "drawContents", "drawText", "drawCustomText"};
    QTest::newRow("direct") << true << true
                            << Steps {"drawBackground", "drawContents",   "drawIndicator",
                                      "drawText",       "drawCustomText", "drawFrame"};
    QTest::newRow("direct without frame")
        << false << true
        << Steps {"drawBackground", "drawContents", "drawIndicator", "drawText", "drawCustomText"};
}

void TestItemDelegate::stepsRunInOrder()
{
    QFETCH(bool, hasFrame);
    QFETCH(bool, hasIndicator);
    NotingDelegate delegate(nullptr);
    delegate.setDrawFrame(hasFrame);
    delegate.setDrawIndicator(hasIndicator);
    const Cell cell({{Qt::DisplayRole, QStringLiteral("x")}, {Qt::CheckStateRole, Qt::Checked}});
    painted(delegate, cell);
    QVERIFY(delegate.count("textRect") > 0);
    QCOMPARE(delegate.count("indicatorRect") > 0, hasIndicator);
    QList<QByteArray> steps = delegate.m_steps;
    steps.removeAll("textRect");
    steps.removeAll("indicatorRect");
    QTEST(steps, "expected");
}

void TestItemDelegate::cachedCellRunsNoStep()
{
    NotingDelegate delegate(nullptr);
    delegate.m_marksKeys = true;
    const Cell cell;
    painted(delegate, cell);
    QVERIFY(isCached(QStringLiteral("ID:mine")));
    delegate.m_steps.clear();
    painted(delegate, cell);
    delegate.m_steps.removeAll("textRect");
    QCOMPARE(delegate.m_steps, QList<QByteArray> {"cacheKey"});
}

void TestItemDelegate::replacedTextIsDrawn()
{
    const Cell cell;
    QCOMPARE(painted(ReplacingDelegate(nullptr), cell),
             plainlyPainted(cell, QStringLiteral("another text")));
}

void TestItemDelegate::directPaintingLooksLikeThePicture()
{
    ItemDelegate delegate(nullptr);
    const Cell cell;
    const QImage cached = painted(delegate, cell);
    delegate.setDrawIndicator(true);
    const QImage direct = painted(delegate, cell);
    QCOMPARE(direct.copy(cell.option.rect), cached.copy(cell.option.rect));
}

void TestItemDelegate::textIsPaintedAsThePlainWayDoes_data()
{
    QTest::addColumn<QString>("text");
    const QString filler = QStringLiteral(" and so on, for longer than fits");
    const QList<std::pair<const char *, QString>> texts {
        {"latin", QStringLiteral("AVATAR office")},
        {"one letter", QStringLiteral("W")},
        {"number", QStringLiteral("-1,234.50")},
        {"cyrillic", QStringLiteral("Съешь же ещё")},
        {"combining", QStringLiteral("e\u0301 A\u030a n\u0303o\u0308")},
        {"arabic", QStringLiteral("مرحبا بالعالم")},
        {"hebrew", QStringLiteral("שלום עולם")},
        {"mixed", QStringLiteral("abc שלום 12.5%")},
        {"hebrew first", QStringLiteral("שלום abc (12)")},
        {"emoji", QStringLiteral("a 😀👩‍👩‍👧 b")},
        {"chinese", QStringLiteral("漢字テスト")},
        {"brackets", QStringLiteral("(a) [b] -")},
        {"spaces around", QStringLiteral("  text  ")},
        {"tab", QStringLiteral("a\tb")},
        {"break", QStringLiteral("first\nsecond")},
        {"line separator", QStringLiteral("first\u2028second")},
        {"carriage return", QStringLiteral("first\rsecond")},
        {"soft hyphen", QStringLiteral("soft\u00adhyphen")},
        {"variants", QStringLiteral("a longer variant of it\u009cshort")},
        {"ampersand", QStringLiteral("a && b &c")},
        {"empty", QString()},
        {"blank", QStringLiteral("   ")},
        {"zero width", QStringLiteral("\u200b\u200e\u200f\u202ex\u202c")},
        {"lone surrogate", QString(QChar(0xd83d)) + u'x'},
    };
    for (const auto &[name, text] : texts) {
        QTest::addRow("%s", name) << text;
        QTest::addRow("%s, long", name) << QString(text + filler);
    }
}

void TestItemDelegate::textIsPaintedAsThePlainWayDoes()
{
    QFETCH(QString, text);
    const ItemDelegate delegate(nullptr);
    Cell cell({{Qt::DisplayRole, text}});
    int drawn = 0;
    for (Qt::Alignment horizontal : QList<Qt::Alignment> {
             Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify, {}}) {
        for (Qt::Alignment vertical :
             {Qt::AlignTop, Qt::AlignBottom, Qt::AlignVCenter, Qt::AlignBaseline}) {
            for (Qt::LayoutDirection direction :
                 {Qt::LeftToRight, Qt::RightToLeft, Qt::LayoutDirectionAuto}) {
                cell.option.displayAlignment = horizontal | vertical;
                QVERIFY(isPaintedPlainly(delegate, cell, text, direction));
                drawn += painted(delegate, cell, direction)
                    != plainlyPainted(cell, QString(), direction);
            }
        }
    }
    QCOMPARE(drawn > 0, !text.trimmed().isEmpty());
}

void TestItemDelegate::everyWidthIsPaintedAsThePlainWayDoes_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("latin") << QStringLiteral("AVATAR, Te. fj");
    QTest::newRow("number") << QStringLiteral("-1,234.50");
    QTest::newRow("mixed") << QStringLiteral("abc שלום!");
    QTest::newRow("arabic") << QStringLiteral("مرحبا");
    QTest::newRow("combining") << QStringLiteral("e\u0301A\u030an\u0303o\u0308");
}

void TestItemDelegate::everyWidthIsPaintedAsThePlainWayDoes()
{
    QFETCH(QString, text);
    const ItemDelegate delegate(nullptr);
    Cell cell({{Qt::DisplayRole, text}});
    for (Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        for (Qt::Alignment alignment : {Qt::AlignLeft, Qt::AlignRight}) {
            for (int width = 1; width < 130; ++width) {
                cell.option.rect.setWidth(width);
                cell.option.displayAlignment = alignment | Qt::AlignVCenter;
                QVERIFY(isPaintedPlainly(delegate, cell, text, direction));
            }
        }
    }
}

void TestItemDelegate::fontsArePaintedAsThePlainWayDoes_data()
{
    QTest::addColumn<QFont>("font");
    QTest::addColumn<double>("ratio");
    const auto row = [](const char *name, double ratio, auto change) {
        QFont font;
        change(font);
        QTest::newRow(name) << font << ratio;
    };
    row("usual", 1, [](QFont &) {});
    row("usual at 2", 2, [](QFont &) {});
    row("usual at 1.5", 1.5, [](QFont &) {});
    row("fractional size", 1, [](QFont &f) { f.setPointSizeF(10.37); });
    row("taller than the cell", 1, [](QFont &f) { f.setPixelSize(40); });
    row("tiny", 1, [](QFont &f) { f.setPixelSize(4); });
    row("italic", 1, [](QFont &f) { f.setItalic(true); });
    row("bold", 2, [](QFont &f) { f.setBold(true); });
    row("underlined", 1, [](QFont &f) { f.setUnderline(true); });
    row("overlined", 1, [](QFont &f) { f.setOverline(true); });
    row("struck out", 1, [](QFont &f) { f.setStrikeOut(true); });
    row("spaced", 1, [](QFont &f) { f.setLetterSpacing(QFont::AbsoluteSpacing, 1.3); });
    row("small capitals", 1, [](QFont &f) { f.setCapitalization(QFont::SmallCaps); });
    row("without hinting", 1, [](QFont &f) { f.setHintingPreference(QFont::PreferNoHinting); });
}

void TestItemDelegate::fontsArePaintedAsThePlainWayDoes()
{
    QFETCH(QFont, font);
    QFETCH(double, ratio);
    const Scaled<QWidget> widget(ratio);
    const ItemDelegate delegate(nullptr);
    for (const QString &text :
         {QStringLiteral("Avatar fj 12.5"), QStringLiteral("longer than the cell is wide, always"),
          QStringLiteral("שלום abc")}) {
        Cell cell({{Qt::DisplayRole, text}});
        cell.option.widget = &widget;
        cell.option.font = font;
        for (Qt::Alignment alignment : {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter}) {
            cell.option.displayAlignment = alignment | Qt::AlignVCenter;
            QVERIFY(isPaintedPlainly(delegate, cell, text, Qt::LeftToRight, ratio));
        }
    }
}

void TestItemDelegate::elidedTextIsTheMetrics_data()
{
    fontsArePaintedAsThePlainWayDoes_data();
}

void TestItemDelegate::elidedTextIsTheMetrics()
{
    QFETCH(QFont, font);
    QFETCH(double, ratio);
    QImage image = canvas(ratio);
    QPainter painter(&image);
    int elidedCount = 0;
    for (const QString &text :
         {QStringLiteral("Efficient office AVATAR, Te. fjord ffi"), QStringLiteral("-1,234,567.50"),
          QStringLiteral("Съешь же ещё этих булок"), QStringLiteral("Ωmega and Ünïcödé"),
          QStringLiteral("Latin и кириллица"), QStringLiteral("abc שלום עולם def"),
          QStringLiteral("a  b\u00a0 c   d"), QStringLiteral("e\u0301tude A\u030angstrom")}) {
        painter.setFont(font);
        const int full = painter.fontMetrics().horizontalAdvance(text);
        for (int width = 0; width < full + 2; ++width) {
            const ElisionDelegate delegate(nullptr);
            Cell cell;
            cell.option.font = font;
            cell.option.rect = QRect(0, 0, width + 2 * marginOfStyle(), 24);
            delegate.drawCustomText(&painter, cell.option, text);
            const QString expected = painter.fontMetrics().elidedText(text, Qt::ElideRight, width);
            QCOMPARE(delegate.m_shown, expected);
            elidedCount += expected != text;
        }
    }
    QVERIFY(elidedCount > 100);
}

void TestItemDelegate::unresolvedFontIsTheOptions()
{
    const ItemDelegate delegate(nullptr);
    Cell cell;
    QFont font = cell.option.font;
    font.setPixelSize(19);
    cell.option.font = font;
    const QImage expected = painted(delegate, cell);
    cell.option.font.setResolveMask(0); // as that of a widget class's own font
    QPixmapCache::clear();
    QCOMPARE(painted(delegate, cell), expected);
}

void TestItemDelegate::backgroundHasItsColor_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QStyleOptionViewItem::ViewItemFeatures>("features");
    QTest::addColumn<bool>("isDecorationSelected");
    QTest::addColumn<QVariant>("background");
    QTest::addColumn<QColor>("expected");
    using Features = QStyleOptionViewItem::ViewItemFeatures;
    QPalette palette = QApplication::palette();
    const QStyle::State active = QStyle::State_Enabled | QStyle::State_Active;
    const QStyle::State selected = active | QStyle::State_Selected;
    const Features none;
    const Features alternate = QStyleOptionViewItem::Alternate;
    const auto color = [](QPalette::ColorGroup group, QPalette::ColorRole role) {
        return QColor(10 + int(role), 100 + int(group), 7);
    };
    const auto row = [](const char *name, QStyle::State state, Features features, bool isSelected,
                        const QVariant &background, const QColor &expected) {
        QTest::newRow(name) << state << features << isSelected << background << expected;
    };
    row("active", active, none, true, {}, color(QPalette::Active, QPalette::Base));
    row("inactive", QStyle::State_Enabled, none, true, {},
        color(QPalette::Inactive, QPalette::Base));
    row("disabled", QStyle::State_Active, none, true, {},
        color(QPalette::Disabled, QPalette::Base));
    row("alternate", active, alternate, true, {}, color(QPalette::Active, QPalette::AlternateBase));
    row("selected", selected, none, true, {}, color(QPalette::Active, QPalette::Highlight));
    row("selected alternate", selected, alternate, true, {},
        color(QPalette::Active, QPalette::Highlight));
    row("selection not shown", selected, none, false, {}, color(QPalette::Active, QPalette::Base));
    row("selection not shown, alternate", selected, alternate, false, {},
        color(QPalette::Active, QPalette::AlternateBase));
    row("model's", selected, alternate, true, QBrush(Qt::yellow), Qt::yellow);
    row("model's default brush", selected, none, true, QBrush(),
        color(QPalette::Active, QPalette::Highlight));
}

void TestItemDelegate::backgroundHasItsColor()
{
    QFETCH(QStyle::State, state);
    QFETCH(QStyleOptionViewItem::ViewItemFeatures, features);
    QFETCH(bool, isDecorationSelected);
    QFETCH(QVariant, background);
    const ItemDelegate delegate(nullptr);
    Cell cell({{Qt::BackgroundRole, background}});
    cell.option.state = state;
    cell.option.features = features;
    cell.option.showDecorationSelected = isDecorationSelected;
    for (int group = 0; group < QPalette::NColorGroups; ++group) {
        for (QPalette::ColorRole role :
             {QPalette::Base, QPalette::AlternateBase, QPalette::Highlight}) {
            cell.option.palette.setColor(QPalette::ColorGroup(group), role,
                                         QColor(10 + int(role), 100 + group, 7));
        }
    }
    QTEST(painted(delegate, cell).pixelColor(cell.option.rect.topLeft()), "expected");
}

void TestItemDelegate::textHasItsColor_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<bool>("isParentEnabled");
    QTest::addColumn<QColor>("expected");
    const QStyle::State active = QStyle::State_Enabled | QStyle::State_Active;
    QTest::newRow("active") << active << true << QColor(10, 0, 0);
    QTest::newRow("inactive") << QStyle::State(QStyle::State_Enabled) << true << QColor(20, 0, 0);
    QTest::newRow("selected") << (active | QStyle::State_Selected) << true << QColor(10, 99, 0);
    QTest::newRow("disabled parent") << active << false << QColor(30, 0, 0);
    QTest::newRow("the parent decides")
        << QStyle::State(QStyle::State_Active) << true << QColor(10, 0, 0);
}

void TestItemDelegate::textHasItsColor()
{
    QFETCH(QStyle::State, state);
    QFETCH(bool, isParentEnabled);
    QFETCH(QColor, expected);
    QTableView view;
    view.setEnabled(isParentEnabled);
    const auto *delegate = new ItemDelegate(&view);
    Cell cell({{Qt::DisplayRole, QString(10, QChar(0x2588))}}); // full blocks
    cell.option.font.setPixelSize(40);
    const QPalette::ColorGroup groups[] = {QPalette::Active, QPalette::Inactive,
                                           QPalette::Disabled};
    for (int i = 0; i < 3; ++i) {
        cell.option.palette.setColor(groups[i], QPalette::Text, QColor(10 + 10 * i, 0, 0));
        cell.option.palette.setColor(groups[i], QPalette::HighlightedText,
                                     QColor(10 + 10 * i, 99, 0));
    }
    cell.option.state = state;
    const QImage picture = painted(*delegate, cell).copy(cell.option.rect);
    const QColor background = cell.option.palette.color(
        isParentEnabled ? QPalette::Active : QPalette::Disabled, QPalette::Base);
    QCOMPARE(mostFrequentColor(picture, background), expected);
}

void TestItemDelegate::frameIsTheRightAndBottomLine()
{
    const ItemDelegate delegate(nullptr);
    Cell cell(QHash<int, QVariant> {});
    cell.option.palette.setColor(QPalette::Mid, Qt::red);
    cell.option.palette.setColor(QPalette::Base, Qt::white);
    QImage expected = canvas();
    QPainter painter(&expected);
    const QRect &rect = cell.option.rect;
    painter.fillRect(rect, Qt::red);
    painter.fillRect(rect.adjusted(0, 0, -1, -1), Qt::white);
    painter.end();
    QCOMPARE(painted(delegate, cell), expected);
}

void TestItemDelegate::frameHasNoBrush()
{
    const ItemDelegate delegate(nullptr);
    const Cell cell;
    QImage image = canvas();
    QPainter painter(&image);
    painter.setBrush(Qt::cyan);
    delegate.drawFrame(&painter, cell.option);
    painter.end();
    const QColor mid = cell.option.palette.color(QPalette::Mid).rgb();
    const QRect outline = cell.option.rect.translated(-1, -1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRect whole(outline.topLeft(), outline.size() + QSize(1, 1));
            const bool isLine = whole.contains(x, y) && !whole.contains(x, y, true);
            QCOMPARE(image.pixelColor(x, y), isLine ? mid : QColor(Qt::magenta));
        }
    }
}

void TestItemDelegate::frameIsThatOfDrawRects_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("isSmooth");
    const QTransform none;
    for (double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        QTest::addRow("ratio %g", ratio) << ratio << QColor(Qt::red) << none << false;
        QTest::addRow("transparent, ratio %g", ratio)
            << ratio << QColor(255, 0, 0, 99) << none << false;
        QTest::addRow("smooth, ratio %g", ratio) << ratio << QColor(Qt::red) << none << true;
        QTest::addRow("moved, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromTranslate(3, -2) << false;
        QTest::addRow("moved by a part, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromTranslate(3.4, 2.7) << false;
        QTest::addRow("scaled, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromScale(1.3, 0.7) << false;
    }
}

void TestItemDelegate::frameIsThatOfDrawRects()
{
    QFETCH(double, ratio);
    QFETCH(QColor, color);
    QFETCH(QTransform, transform);
    QFETCH(bool, isSmooth);
    for (const QSize &size : {QSize(100, 20), QSize(31, 7), QSize(2, 2), QSize(1, 1)}) {
        Cell cell;
        cell.option.rect.setSize(size);
        cell.option.palette.setColor(QPalette::Mid, color);
        QImage images[] = {canvas(ratio), canvas(ratio)};
        for (bool isPlain : {false, true}) {
            QPainter painter(&images[isPlain]);
            painter.setTransform(transform);
            painter.setRenderHint(QPainter::Antialiasing, isSmooth);
            if (isPlain) {
                const QRect outline = cell.option.rect.translated(-1, -1);
                painter.setPen(color);
                painter.drawRects(&outline, 1);
            } else {
                ItemDelegate(nullptr).drawFrame(&painter, cell.option);
            }
        }
        QCOMPARE(images[0], images[1]);
        QVERIFY(images[0] != canvas(ratio));
    }
}

void TestItemDelegate::directFrameReachesTheNeighbours()
{
    ItemDelegate delegate(nullptr);
    delegate.setDrawIndicator(true);
    const Cell cell;
    const QImage image = painted(delegate, cell);
    const QColor mid = cell.option.palette.color(QPalette::Mid).rgb();
    const QRect &rect = cell.option.rect;
    QCOMPARE(image.pixelColor(rect.left() - 1, rect.center().y()), mid);
    QCOMPARE(image.pixelColor(rect.center().x(), rect.top() - 1), mid);
    QCOMPARE(image.pixelColor(rect.right(), rect.center().y()), mid);
    QCOMPARE(image.pixelColor(rect.center().x(), rect.bottom()), mid);
}

void TestItemDelegate::frameIsOfTheCurrentGroup()
{
    const ItemDelegate delegate(nullptr);
    Cell cell;
    cell.option.palette.setColor(QPalette::Disabled, QPalette::Mid, Qt::blue);
    cell.option.palette.setCurrentColorGroup(QPalette::Disabled);
    QCOMPARE(painted(delegate, cell).pixelColor(cell.option.rect.bottomRight()), QColor(Qt::blue));
}

void TestItemDelegate::clipReplacesTheCallers()
{
    const Cell cell;
    const QRect &rect = cell.option.rect;
    for (bool hasFrame : {false, true}) {
        for (bool hasIndicator : {false, true}) {
            ItemDelegate delegate(nullptr);
            delegate.setDrawFrame(hasFrame);
            delegate.setDrawIndicator(hasIndicator);
            QImage image = canvas();
            QPainter painter(&image);
            painter.setClipRect(0, 0, rect.center().x(), 60);
            delegate.paint(&painter, cell.option, cell.index());
            painter.fillRect(image.rect(), Qt::cyan); // the caller's clip is back
            painter.end();
            QCOMPARE(image.pixelColor(rect.center().x() - 1, rect.top()), QColor(Qt::cyan));
            QCOMPARE(image.pixelColor(rect.right() - 1, rect.top()) == QColor(Qt::magenta),
                     hasFrame);
        }
    }
}

void TestItemDelegate::painterIsLeftAsItWas_data()
{
    QTest::addColumn<bool>("hasFrame");
    QTest::addColumn<bool>("hasIndicator");
    QTest::newRow("picture") << true << false;
    QTest::newRow("picture without frame") << false << false;
    QTest::newRow("direct") << true << true;
    QTest::newRow("direct without frame") << false << true;
}

void TestItemDelegate::painterIsLeftAsItWas()
{
    QFETCH(bool, hasFrame);
    QFETCH(bool, hasIndicator);
    ItemDelegate delegate(nullptr);
    delegate.setDrawFrame(hasFrame);
    delegate.setDrawIndicator(hasIndicator);
    const Cell cell;
    QImage image = canvas();
    QPainter painter(&image);
    const QPen pen(Qt::green, 3);
    QFont font = painter.font();
    font.setPixelSize(77);
    painter.setPen(pen);
    painter.setBrush(Qt::cyan);
    painter.setFont(font);
    delegate.paint(&painter, cell.option, cell.index());
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), QBrush(Qt::cyan));
    QCOMPARE(painter.font().pixelSize(), 77);
    QVERIFY(!painter.hasClipping());
}

void TestItemDelegate::emptyCellPaintsNothing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("no width") << QSize(0, 20);
    QTest::newRow("no height") << QSize(20, 0);
    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("negative") << QSize(-5, 20);
}

void TestItemDelegate::emptyCellPaintsNothing()
{
    QFETCH(QSize, size);
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    for (bool hasFrame : {false, true}) {
        for (bool hasIndicator : {false, true}) {
            ItemDelegate delegate(nullptr);
            delegate.setDrawFrame(hasFrame);
            delegate.setDrawIndicator(hasIndicator);
            Cell cell;
            cell.option.rect.setSize(size);
            QCOMPARE(painted(delegate, cell), canvas());
        }
    }
}

// Indicators

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

// Editing

void TestItemDelegate::lineEditorIsAligned()
{
    const ItemDelegate delegate(nullptr);
    QWidget parent;
    const Cell cell({{Qt::DisplayRole, QStringLiteral("12")},
                     {Qt::TextAlignmentRole, int(Qt::AlignRight | Qt::AlignVCenter)}});
    QWidget *editor = delegate.createEditor(&parent, cell.option, cell.index());
    auto *lineEdit = qobject_cast<QLineEdit *>(editor);
    QVERIFY(lineEdit);
    QCOMPARE(lineEdit->parent(), &parent);
    QCOMPARE(lineEdit->alignment(), Qt::AlignRight | Qt::AlignVCenter);
}

void TestItemDelegate::otherEditorIsLeftAlone()
{
    const ItemDelegate delegate(nullptr);
    QWidget parent;
    const Cell cell(
        {{Qt::DisplayRole, 12}, {Qt::TextAlignmentRole, int(Qt::AlignRight | Qt::AlignVCenter)}});
    QWidget *editor = delegate.createEditor(&parent, cell.option, cell.index());
    auto *box = qobject_cast<QSpinBox *>(editor);
    QVERIFY(box);
    QCOMPARE(box->alignment(), QSpinBox().alignment());
}

void TestItemDelegate::editorCoversTheText()
{
    ItemDelegate delegate(nullptr);
    QWidget parent;
    QLineEdit editor(&parent);
    const Cell cell({{Qt::DecorationRole, QColor(Qt::red)}});
    delegate.updateEditorGeometry(&editor, cell.option, cell.index());
    QCOMPARE(editor.geometry(), cell.option.rect);
    delegate.setDrawIndicator(true);
    delegate.updateEditorGeometry(&editor, cell.option, cell.index());
    QRect beside = cell.option.rect;
    beside.setLeft(ItemDelegate::indicatorRectByStyle(cell.option).right() + 1);
    QCOMPARE(editor.geometry(), beside);
}

void TestItemDelegate::editorsCommit_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("new"));
    QTest::newRow("number") << QVariant(42);
    QTest::newRow("switch") << QVariant(true);
}

void TestItemDelegate::editorsCommit()
{
    QFETCH(QVariant, value);
    const ItemDelegate delegate(nullptr);
    QLineEdit lineEdit(value.toString());
    QSpinBox spinBox;
    spinBox.setValue(value.toInt());
    QCheckBox checkBox;
    checkBox.setChecked(value.toBool());
    QWidget *editor = &lineEdit;
    if (value.metaType() == QMetaType::fromType<int>())
        editor = &spinBox;
    else if (value.metaType() == QMetaType::fromType<bool>())
        editor = &checkBox;

    QStandardItemModel model(1, 1);
    delegate.setModelData(editor, &model, model.index(0, 0));
    QCOMPARE(model.index(0, 0).data(Qt::EditRole), value);
}

void TestItemDelegate::emptyTextIsCommitted()
{
    const ItemDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QLineEdit editor;
    delegate.setModelData(&editor, &model, model.index(0, 0));
    QCOMPARE(model.m_offered.size(), 1);
    QVERIFY(model.m_offered.first().isValid());
    QCOMPARE(model.m_offered.first().metaType(), QMetaType::fromType<QString>());
    QCOMPARE(model.m_offered.first().toString(), QString());
    runQueuedCalls();
}

void TestItemDelegate::editorWithoutPropertyIsLeftToQt()
{
    const RecordingDelegate delegate(nullptr);
    QWidget editor;
    QVERIFY(!editor.metaObject()->userProperty().isValid());
    RefusingModel model(1, 1);
    model.m_accepts = true;
    model.setData(model.index(0, 0), 3, Qt::EditRole);
    model.m_accepts = false;
    delegate.setModelData(&editor, &model, model.index(0, 0));
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
    QCOMPARE(model.index(0, 0).data(), 3);
}

void TestItemDelegate::refusalIsExplained_data()
{
    QTest::addColumn<QVariant>("thrown");
    QTest::addColumn<QString>("message");
    const QString first = QStringLiteral("Невозможно завершить редактирование.");
    QTest::newRow("false") << QVariant() << first;
    QTest::newRow("thrown reason")
        << QVariant(QStringLiteral("Too large")) << QString(first + QStringLiteral("\nToo large"));
    QTest::newRow("thrown without reason") << QVariant(QString()) << first;
}

void TestItemDelegate::refusalIsExplained()
{
    QFETCH(QVariant, thrown);
    QFETCH(QString, message);
    QTableView view;
    view.show();
    auto *delegate = new ItemDelegate(&view);
    RefusingModel model(1, 1);
    model.m_thrown = thrown;
    QLineEdit editor(&view);
    delegate->commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    QVERIFY(!QToolTip::isVisible());
    runQueuedCalls();
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), message);
    QCOMPARE(model.index(0, 0).data(), QVariant());
}

void TestItemDelegate::acceptedValueSaysNothing()
{
    const RecordingDelegate delegate(nullptr);
    QStandardItemModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::UserRole);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
    QCOMPARE(model.index(0, 0).data(Qt::UserRole), 5);
}

void TestItemDelegate::otherExceptionsPass()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    model.m_thrown = 7;
    QWidget editor;
    QVERIFY_THROWS_EXCEPTION(
        int, delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole));
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
}

void TestItemDelegate::toolTipComesLater()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    QCOMPARE(delegate.m_messages.size(), 0);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages.size(), 1);
}

void TestItemDelegate::positionIsThatOfTheCommit()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QPoint expected;
    {
        QWidget editor;
        editor.setGeometry(40, 50, 90, 21);
        expected = editor.mapToGlobal(QPoint(0, 21));
        delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
        editor.move(400, 300);
    } // the editor is gone when the message comes
    runQueuedCalls();
    QCOMPARE(delegate.m_positions, QList<QPoint> {expected});
}

void TestItemDelegate::hiddenMethodIsFound()
{
    const QMetaObject &meta = ItemDelegate::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("Vantix::ItemDelegate"));
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(),
             QByteArray("showToolTip(QString,QPoint)"));
    QCOMPARE(StyledItemDelegate::staticMetaObject.methodOffset(),
             StyledItemDelegate::staticMetaObject.methodCount());

    QToolTip::hideText();
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages.size(), 1); // the subclass's own
    QVERIFY(!QToolTip::isVisible());
}

void TestItemDelegate::viewKeepsTheRefusedValue()
{
    RefusingModel model(1, 1);
    model.m_accepts = true;
    model.setData(model.index(0, 0), QStringLiteral("old"), Qt::EditRole);
    model.m_accepts = false;
    model.m_thrown = QStringLiteral("Not today");
    QTableView view;
    view.setItemDelegate(new ItemDelegate(&view));
    view.setModel(&model);
    view.show();
    view.setCurrentIndex(model.index(0, 0));
    view.edit(model.index(0, 0));
    auto *editor = view.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QCOMPARE(editor->geometry(), view.visualRect(model.index(0, 0)));
    editor->setText(QStringLiteral("new"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(QToolTip::text(),
                 QStringLiteral("Невозможно завершить редактирование.\nNot today"));
    QCOMPARE(model.index(0, 0).data(), QStringLiteral("old"));
    QVERIFY(model.m_offered.contains(QStringLiteral("new")));
}

QTEST_MAIN(TestItemDelegate)
#include "tst_itemdelegate.moc"
