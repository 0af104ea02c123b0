// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "delegatecells.h"
#include "scaled.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QTableView>
#include <QTest>

namespace {

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

} // namespace

class TestItemDelegatePainting : public QObject
{
    Q_OBJECT

private slots:
    void init();
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
};

void TestItemDelegatePainting::init()
{
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(10240);
}

void TestItemDelegatePainting::stepsRunInOrder_data()
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

void TestItemDelegatePainting::stepsRunInOrder()
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

void TestItemDelegatePainting::cachedCellRunsNoStep()
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

void TestItemDelegatePainting::replacedTextIsDrawn()
{
    const Cell cell;
    QCOMPARE(painted(ReplacingDelegate(nullptr), cell),
             plainlyPainted(cell, QStringLiteral("another text")));
}

void TestItemDelegatePainting::directPaintingLooksLikeThePicture()
{
    ItemDelegate delegate(nullptr);
    const Cell cell;
    const QImage cached = painted(delegate, cell);
    delegate.setDrawIndicator(true);
    const QImage direct = painted(delegate, cell);
    QCOMPARE(direct.copy(cell.option.rect), cached.copy(cell.option.rect));
}

void TestItemDelegatePainting::textIsPaintedAsThePlainWayDoes_data()
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
        {"paragraph separator", QStringLiteral("first\u2029second")},
        {"replaced object", QStringLiteral("first\ufffcsecond")},
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

void TestItemDelegatePainting::textIsPaintedAsThePlainWayDoes()
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

void TestItemDelegatePainting::everyWidthIsPaintedAsThePlainWayDoes_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("latin") << QStringLiteral("AVATAR, Te. fj");
    QTest::newRow("number") << QStringLiteral("-1,234.50");
    QTest::newRow("mixed") << QStringLiteral("abc שלום!");
    QTest::newRow("arabic") << QStringLiteral("مرحبا");
    QTest::newRow("combining") << QStringLiteral("e\u0301A\u030an\u0303o\u0308");
}

void TestItemDelegatePainting::everyWidthIsPaintedAsThePlainWayDoes()
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

void TestItemDelegatePainting::fontsArePaintedAsThePlainWayDoes_data()
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

void TestItemDelegatePainting::fontsArePaintedAsThePlainWayDoes()
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

void TestItemDelegatePainting::elidedTextIsTheMetrics_data()
{
    fontsArePaintedAsThePlainWayDoes_data();
}

void TestItemDelegatePainting::elidedTextIsTheMetrics()
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

void TestItemDelegatePainting::unresolvedFontIsTheOptions()
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

void TestItemDelegatePainting::backgroundHasItsColor_data()
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

void TestItemDelegatePainting::backgroundHasItsColor()
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

void TestItemDelegatePainting::textHasItsColor_data()
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

void TestItemDelegatePainting::textHasItsColor()
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

void TestItemDelegatePainting::frameIsTheRightAndBottomLine()
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

void TestItemDelegatePainting::frameHasNoBrush()
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

void TestItemDelegatePainting::frameIsThatOfDrawRects_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("isSmooth");
    QTest::addColumn<int>("mode");
    const QTransform none;
    const int plain = QPainter::CompositionMode_SourceOver;
    for (double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        QTest::addRow("ratio %g", ratio) << ratio << QColor(Qt::red) << none << false << plain;
        QTest::addRow("transparent, ratio %g", ratio)
            << ratio << QColor(255, 0, 0, 99) << none << false << plain;
        QTest::addRow("smooth, ratio %g", ratio)
            << ratio << QColor(Qt::red) << none << true << plain;
        QTest::addRow("moved, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromTranslate(3, -2) << false << plain;
        QTest::addRow("moved by a part, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromTranslate(3.4, 2.7) << false << plain;
        QTest::addRow("scaled, ratio %g", ratio)
            << ratio << QColor(Qt::red) << QTransform::fromScale(1.3, 0.7) << false << plain;
        QTest::addRow("exclusive, ratio %g", ratio)
            << ratio << QColor(Qt::red) << none << false << int(QPainter::CompositionMode_Xor);
    }
}

void TestItemDelegatePainting::frameIsThatOfDrawRects()
{
    QFETCH(double, ratio);
    QFETCH(QColor, color);
    QFETCH(QTransform, transform);
    QFETCH(bool, isSmooth);
    QFETCH(int, mode);
    for (const QSize &size : {QSize(100, 20), QSize(31, 7), QSize(2, 2), QSize(1, 1)}) {
        Cell cell;
        cell.option.rect.setSize(size);
        cell.option.palette.setColor(QPalette::Mid, color);
        QImage images[] = {canvas(ratio), canvas(ratio)};
        for (bool isPlain : {false, true}) {
            QPainter painter(&images[isPlain]);
            painter.setTransform(transform);
            painter.setRenderHint(QPainter::Antialiasing, isSmooth);
            painter.setCompositionMode(QPainter::CompositionMode(mode));
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

void TestItemDelegatePainting::directFrameReachesTheNeighbours()
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

void TestItemDelegatePainting::frameIsOfTheCurrentGroup()
{
    const ItemDelegate delegate(nullptr);
    Cell cell;
    cell.option.palette.setColor(QPalette::Disabled, QPalette::Mid, Qt::blue);
    cell.option.palette.setCurrentColorGroup(QPalette::Disabled);
    QCOMPARE(painted(delegate, cell).pixelColor(cell.option.rect.bottomRight()), QColor(Qt::blue));
}

void TestItemDelegatePainting::clipReplacesTheCallers()
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

void TestItemDelegatePainting::painterIsLeftAsItWas_data()
{
    QTest::addColumn<bool>("hasFrame");
    QTest::addColumn<bool>("hasIndicator");
    QTest::newRow("picture") << true << false;
    QTest::newRow("picture without frame") << false << false;
    QTest::newRow("direct") << true << true;
    QTest::newRow("direct without frame") << false << true;
}

void TestItemDelegatePainting::painterIsLeftAsItWas()
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

void TestItemDelegatePainting::emptyCellPaintsNothing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("no width") << QSize(0, 20);
    QTest::newRow("no height") << QSize(20, 0);
    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("negative") << QSize(-5, 20);
}

void TestItemDelegatePainting::emptyCellPaintsNothing()
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

QTEST_MAIN(TestItemDelegatePainting)
#include "tst_itemdelegatepainting.moc"
