// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/alignments.h"
#include "basics/contrast.h"
#include "scalablefont.h"
#include "windows/framestatistics.h"
#include "windows/shorttextdelegate.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>

#include <memory>

namespace {

constexpr QSize viewSize(300, 200);

//! A table, with its text in a font of one width, on a screen.
struct Shown
{
    explicit Shown(QAbstractItemModel *model)
        : table(&statistics)
    {
        table.useTextFont();
        table.resize(viewSize);
        table.setModel(model);
        table.show();
        table.fitColumns();
    }

    //! A cell as it is on the screen.
    QImage cell(const QModelIndex &index)
    {
        return table.viewport()
            ->grab(table.visualRect(index))
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    FrameStatistics statistics;
    ViewerTable table;
};

//! The colour that is farthest from that of the background, which most pixels have.
std::pair<QColor, QColor> textAndBackground(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb behind = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > counts.value(behind))
            behind = it.key();
    }
    QRgb text = behind;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (contrast(it.key(), behind) > contrast(text, behind))
            text = it.key();
    }
    return {text, behind};
}

//! How much is not background, by column, each with the ones beside it.
QList<double> inkOf(const QImage &image)
{
    const int background = QColor(image.pixel(0, 0)).lightness();
    QList<double> ink(image.width());
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            ink[x] += qAbs(QColor(image.pixel(x, y)).lightness() - background);
    }
    QList<double> smooth = ink;
    for (qsizetype x = 1; x + 1 < ink.size(); ++x)
        smooth[x] = (ink.at(x - 1) + ink.at(x) + ink.at(x + 1)) / 3;
    return smooth;
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20));
    palette.setColor(QPalette::Highlight, QColor(0x2a, 0x82, 0xda));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

class tst_ViewerTable : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private Q_SLOTS:
    void keepsNoPicturesOfWhatPassesBy();
    void cleanup();

    void keysSelect_data();
    void keysSelect();
    void farEndsAreSelected();
    void tellsWhatIsTyped();
    void tellsOfRows();
    void coloursAreReadable_data();
    void coloursAreReadable();
    void followsThePalette();
    void readsFromLeftToRight_data();
    void readsFromLeftToRight();
    void alignsNumbersInBothDirections();
    void showsTheEndOfALongLine_data();
    void showsTheEndOfALongLine();
    void laysOutWhatIsSeen();
    void zooms();
    void marksMatches_data();
    void marksMatches();
    void marksAreReadable_data();
    void marksAreReadable();

private:
    const QPalette m_palette = QApplication::palette();
};

void tst_ViewerTable::cleanup()
{
    QApplication::setPalette(m_palette);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void tst_ViewerTable::keysSelect_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const std::pair<const char *, int> keys[] = {
        {"Down", Qt::Key_Down},   {"Up", Qt::Key_Up},          {"Home", Qt::Key_Home},
        {"End", Qt::Key_End},     {"Page up", Qt::Key_PageUp}, {"Page down", Qt::Key_PageDown},
        {"Left", Qt::Key_Left},   {"Right", Qt::Key_Right},    {"Space", Qt::Key_Space},
        {"Select all", Qt::Key_A}};
    for (const auto &[name, key] : keys) {
        if (key != Qt::Key_A)
            QTest::addRow("%s", name) << key << Qt::KeyboardModifiers();
        if (key != Qt::Key_A && key != Qt::Key_Space)
            QTest::addRow("Shift+%s", name) << key << Qt::KeyboardModifiers(Qt::ShiftModifier);
        if (key != Qt::Key_Home && key != Qt::Key_End)
            QTest::addRow("Ctrl+%s", name) << key << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
}

//! As in a table of Qt's.
void tst_ViewerTable::keysSelect()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QStandardItemModel model(60, 3);
    Shown shown(&model);
    QTableView peer;
    peer.setSelectionBehavior(QAbstractItemView::SelectRows);
    peer.setFrameShape(QFrame::NoFrame);
    peer.verticalHeader()->setMinimumSectionSize(1);
    peer.verticalHeader()->setDefaultSectionSize(shown.table.rowHeight());
    peer.setShowGrid(false);
    peer.setModel(&model);
    peer.show();
    peer.resize(peer.width(),
                peer.height() + shown.table.viewport()->height() - peer.viewport()->height());
    QCOMPARE(peer.viewport()->height(), shown.table.viewport()->height());
    const auto rowsOf = [](const QAbstractItemView &view) {
        QList<int> rows;
        for (int row = 0; row < 60; ++row) {
            if (view.selectionModel()->isRowSelected(row, {}))
                rows << row;
        }
        return rows;
    };
    for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(&shown.table),
                                    static_cast<QAbstractItemView *>(&peer)}) {
        view->selectionModel()->setCurrentIndex(
            model.index(30, 1), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        view->scrollTo(model.index(30, 1), QAbstractItemView::PositionAtTop);
        for (int press = 0; press < 2; ++press)
            QTest::keyClick(view, Qt::Key(key), modifiers);
    }
    QCOMPARE(shown.table.currentIndex(), peer.currentIndex());
    QCOMPARE(rowsOf(shown.table), rowsOf(peer));
}

//! Qt's tables only move there.
void tst_ViewerTable::farEndsAreSelected()
{
    QStandardItemModel model(60, 3);
    Shown shown(&model);
    shown.table.setCurrentIndex(model.index(30, 0));
    QTest::keyClick(&shown.table, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(shown.table.currentIndex().row(), 59);
    QCOMPARE(shown.table.selectionModel()->selectedRows(), QModelIndexList {model.index(59, 0)});
    QTest::keyClick(&shown.table, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(shown.table.selectionModel()->selectedRows(), QModelIndexList {model.index(0, 0)});
    QTest::keyClick(&shown.table, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(shown.table.selectionModel()->selectedRows().size(), 60);
}

void tst_ViewerTable::tellsWhatIsTyped()
{
    QStandardItemModel model(60, 3);
    Shown shown(&model);
    const QSignalSpy typed(&shown.table, &ViewerTable::typed);
    shown.table.setCurrentIndex(model.index(3, 0));
    QTest::keyClick(&shown.table, Qt::Key_E);
    QTest::keyClick(&shown.table, Qt::Key_Down);
    QTest::keyClick(&shown.table, Qt::Key_E, Qt::ControlModifier);
    QTest::keyClick(&shown.table, Qt::Key_F5);
    QCOMPARE(typed, QList<QVariantList>({{"e"}}));
}

void tst_ViewerTable::tellsOfRows()
{
    QStandardItemModel model(3, 1);
    Shown shown(&model);
    const QSignalSpy pressed(&shown.table, &ViewerTable::rowPressed);
    const QSignalSpy reached(&shown.table, &ViewerTable::rowReached);
    const int height = shown.table.rowHeight();
    QTest::mouseClick(shown.table.viewport(), Qt::LeftButton, {}, QPoint(5, height / 2));
    QCOMPARE(pressed.size(), 1);
    QTest::mouseClick(shown.table.viewport(), Qt::LeftButton, {}, QPoint(5, 5 * height));
    QCOMPARE(pressed.size(), 1);
    QCOMPARE(reached.size(), 0);
    QTest::keyClick(&shown.table, Qt::Key_Down);
    QCOMPARE(reached.size(), 1);
    QTest::keyClick(&shown.table, Qt::Key_F7);
    QCOMPARE(reached.size(), 1);
}

void tst_ViewerTable::coloursAreReadable_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<bool>("isSelected");
    const std::pair<const char *, QPalette> palettes[] = {{"light", lightPalette()},
                                                          {"dark", darkPalette()}};
    for (const auto &[name, palette] : palettes) {
        for (const QColor &color : {QColor(), QColor(Qt::red), QColor(0x0b, 0x6b, 0x2f),
                                    QColor(0xff, 0x8f, 0x85), QColor(Qt::yellow)}) {
            for (const bool isSelected : {false, true}) {
                const QString colorName = color.isValid() ? color.name() : QStringLiteral("plain");
                QTest::addRow("%s, %s%s", name, qPrintable(colorName),
                              isSelected ? ", selected" : "")
                    << palette << color << isSelected;
            }
        }
    }
}

void tst_ViewerTable::coloursAreReadable()
{
    QFETCH(QPalette, palette);
    QFETCH(QColor, color);
    QFETCH(bool, isSelected);
    QApplication::setPalette(palette);
    QStandardItemModel model(3, 1);
    model.setData(model.index(1, 0), QString(12, QChar(0x2588))); // a block: no smooth edges
    if (color.isValid())
        model.setData(model.index(1, 0), color, Qt::ForegroundRole);
    Shown shown(&model);
    if (isSelected)
        shown.table.selectionModel()->select(model.index(1, 0), QItemSelectionModel::Select);
    const auto [text, behind] = textAndBackground(shown.cell(model.index(1, 0)));
    QVERIFY2(contrast(text, behind) >= readableContrast,
             qPrintable(text.name() + " on " + behind.name()));
}

void tst_ViewerTable::followsThePalette()
{
    QStandardItemModel model(3, 1);
    Shown shown(&model);
    QApplication::setPalette(darkPalette());
    QCoreApplication::processEvents();
    QCOMPARE(shown.table.palette().color(QPalette::Base), darkPalette().color(QPalette::Base));
    const QColor dark = shown.table.palette().color(QPalette::Highlight);
    QApplication::setPalette(lightPalette());
    QCoreApplication::processEvents();
    QCOMPARE(shown.table.palette().color(QPalette::Base), lightPalette().color(QPalette::Base));
    QVERIFY(shown.table.palette().color(QPalette::Highlight) != dark);
}

void tst_ViewerTable::readsFromLeftToRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("date and time") << "2026-11-22 08:10:15.045";
    QTest::newRow("ends with a stop") << "done.";
    QTest::newRow("numbers") << "-3.50 (7)";
}

//! A right-to-left window shows the same picture of the text, but for parts of a pixel.
void tst_ViewerTable::readsFromLeftToRight()
{
    QFETCH(QString, text);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), text);
    model.setData(model.index(0, 0), QVariant::fromValue(numberAlignment), Qt::TextAlignmentRole);
    Shown shown(&model);
    const QImage plain = shown.cell(model.index(0, 0));
    shown.table.setLayoutDirection(Qt::RightToLeft);
    shown.table.setColumnWidth(0, plain.width());
    const QImage turned = shown.cell(model.index(0, 0));
    QCOMPARE(turned.size(), plain.size());
    const QList<double> expected = inkOf(plain);
    const QList<double> ink = inkOf(turned);
    double all = 0;
    double differing = 0;
    for (qsizetype x = 0; x < ink.size(); ++x) {
        all += expected.at(x);
        differing += qAbs(ink.at(x) - expected.at(x));
    }
    QVERIFY(all > 0);
    QVERIFY2(differing < 0.2 * all, qPrintable(QString::number(differing / all)));
}

void tst_ViewerTable::alignsNumbersInBothDirections()
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QCOMPARE(QStyle::visualAlignment(direction, numberAlignment) & Qt::AlignHorizontal_Mask
                     & ~Qt::AlignAbsolute,
                 Qt::AlignRight);
    }
}

void tst_ViewerTable::showsTheEndOfALongLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("one width") << QString(16000, u'-') + QStringLiteral("END");
    QTest::newRow("other characters") << QString(5000, QChar(0x444)) + QStringLiteral("END");
}

void tst_ViewerTable::showsTheEndOfALongLine()
{
    QFETCH(QString, line);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), line);
    Shown shown(&model);
    QScrollBar *bar = shown.table.horizontalScrollBar();
    QTRY_VERIFY(bar->maximum() > 3000);
    // Somewhere the text ends: what is behind it is empty.
    const auto isEmpty = [&] {
        const auto [text, behind] = textAndBackground(
            shown.table.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32));
        return text == behind;
    };
    QVERIFY(!isEmpty());
    shown.table.setColumnWidth(0, shown.table.columnWidth(0) + 2 * viewSize.width());
    bar->setValue(bar->maximum());
    QVERIFY(isEmpty());
    bar->setValue(bar->value() - 2 * viewSize.width());
    QVERIFY(!isEmpty());
}

//! Only what is seen is laid out, where it would be if all was.
void tst_ViewerTable::laysOutWhatIsSeen()
{
    class Noting : public ShortTextDelegate
    {
    public:
        using ShortTextDelegate::ShortTextDelegate;
        void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                            const QVariant &value) const override
        {
            text = opt.text;
            left = opt.rect.left() - columnGap;
            ShortTextDelegate::drawCustomText(painter, opt, value);
        }
        mutable QString text;
        mutable int left = 0;
    };
    QString line;
    for (int i = 0; line.size() < 16000; ++i)
        line += QString::number(i) + u' ';
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), line);
    Shown shown(&model);
    const QFontMetricsF metrics(shown.table.font());
    if (metrics.horizontalAdvance(u'i') != metrics.horizontalAdvance(u'W'))
        QSKIP("There is no font of one width here.");
    Noting noting(&shown.table);
    shown.table.setItemDelegate(&noting);
    const double width = metrics.horizontalAdvance(u'0');
    for (const int x : {0, 1, 7, 5000, 60000}) {
        shown.table.horizontalScrollBar()->setValue(x);
        shown.table.viewport()->grab();
        const auto from = line.indexOf(noting.text);
        QVERIFY(from >= 0);
        QVERIFY(qAbs(noting.left + x - double(from) * width) <= 1);
        QVERIFY(noting.left <= 0);
        QVERIFY(noting.left + double(noting.text.size()) * width
                >= shown.table.viewport()->width());
        QVERIFY(double(noting.text.size()) * width < 2 * viewSize.width());
    }
}

void tst_ViewerTable::zooms()
{
    QStandardItemModel model(5, 1);
    Shown shown(&model);
    shown.table.setFont(scalableFont(16)); // the system's own may have one size only
    const auto size = [&shown] { return QFontInfo(shown.table.font()).pointSizeF(); };
    const double usual = size();
    const int height = shown.table.rowHeight();
    const auto wheel = [&shown](int delta, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, {0, delta}, {}, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(shown.table.viewport(), &event);
    };
    wheel(120, {});
    QCOMPARE(size(), usual);
    wheel(240, Qt::ControlModifier);
    QVERIFY(qAbs(size() - usual - 2) < 1);
    QVERIFY(shown.table.rowHeight() >= height);
    wheel(60, Qt::ControlModifier); // half a step of a fine wheel
    const double between = size();
    wheel(60, Qt::ControlModifier);
    QVERIFY(size() > between);
    shown.table.resetZoom();
    QCOMPARE(size(), usual);
    QCOMPARE(shown.table.rowHeight(), height);
    for (int i = 0; i < 100; ++i)
        shown.table.zoomOut();
    QVERIFY(shown.table.font().pointSizeF() >= 4);
    for (int i = 0; i < 200; ++i)
        shown.table.zoomIn();
    QVERIFY(shown.table.font().pointSizeF() <= 72);
}

void tst_ViewerTable::marksMatches_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<int>("alignment");
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const char *way = direction == Qt::LeftToRight ? "left to right" : "right to left";
        QTest::addRow("%s, leading", way) << direction << int(Qt::AlignLeft | Qt::AlignVCenter);
        QTest::addRow("%s, line", way) << direction << int(lineAlignment);
        QTest::addRow("%s, number", way) << direction << int(numberAlignment);
    }
}

//! The marks are where the text is, and nothing else changes.
void tst_ViewerTable::marksMatches()
{
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(int, alignment);
    const QString text = QStringLiteral("one two three.");
    QStandardItemModel model(1, 2);
    for (int column = 0; column < 2; ++column) {
        model.setData(model.index(0, column), text);
        model.setData(model.index(0, column), alignment, Qt::TextAlignmentRole);
    }
    Shown shown(&model);
    shown.table.setLayoutDirection(direction);
    const int width = shown.table.fontMetrics().horizontalAdvance(text) + 40;
    shown.table.resize(3 * width, viewSize.height());
    shown.table.setColumnWidth(0, width);
    shown.table.setColumnWidth(1, width);
    const QImage plain = shown.cell(model.index(0, 0));
    const QImage other = shown.cell(model.index(0, 1));
    shown.table.setMarked(TextMatcher(QStringLiteral("TWO"), {}), {0});
    const QImage marked = shown.cell(model.index(0, 0));
    QCOMPARE(shown.cell(model.index(0, 1)), other);

    int from = width;
    int to = 0;
    for (int x = 0; x < width; ++x) {
        if (plain.pixel(x, 0) != marked.pixel(x, 0)) {
            from = qMin(from, x);
            to = qMax(to, x + 1);
        }
    }
    const QFontMetricsF metrics(shown.table.font());
    const double place = metrics.horizontalAdvance(text.left(4));
    const double length = metrics.horizontalAdvance(QStringLiteral("two"));
    const int margin = QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1
        + ShortTextDelegate::columnGap;
    const bool isRight =
        QStyle::visualAlignment(direction, Qt::Alignment(alignment)) & Qt::AlignRight;
    const double begin =
        isRight ? width - margin - metrics.horizontalAdvance(text) : double(margin);
    QVERIFY(qAbs(from - (begin + place)) <= 1.5);
    QVERIFY(qAbs(to - (begin + place + length)) <= 1.5);

    shown.table.setMarked({}, {0});
    QCOMPARE(shown.cell(model.index(0, 0)), plain);
}

void tst_ViewerTable::marksAreReadable_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("isSelected");
    QTest::addColumn<QColor>("color");
    for (const bool isSelected : {false, true}) {
        for (const QColor &color :
             {QColor(), QColor(Qt::gray), QColor(Qt::red), QColor(Qt::blue), QColor(Qt::yellow)}) {
            const QString name = (color.isValid() ? color.name() : QStringLiteral("plain"))
                + (isSelected ? ", selected" : "");
            QTest::addRow("light, %s", qPrintable(name)) << lightPalette() << isSelected << color;
            QTest::addRow("dark, %s", qPrintable(name)) << darkPalette() << isSelected << color;
        }
    }
}

void tst_ViewerTable::marksAreReadable()
{
    QFETCH(QPalette, palette);
    QFETCH(bool, isSelected);
    QFETCH(QColor, color);
    QApplication::setPalette(palette);
    QStandardItemModel model(1, 1);
    const QChar half(0x2584); // the lower half of a block: no smooth edges at its sides
    model.setData(model.index(0, 0), QString(12, half));
    if (color.isValid())
        model.setData(model.index(0, 0), color, Qt::ForegroundRole);
    Shown shown(&model);
    if (isSelected)
        shown.table.selectAll();
    const QImage plain = shown.cell(model.index(0, 0));
    shown.table.setMarked(TextMatcher(QString(12, half), {}), {0});
    const QImage cell = shown.cell(model.index(0, 0));
    const int x = cell.height();
    const QColor behind = cell.pixelColor(x, 0);
    const QColor text = cell.pixelColor(x, cell.height() * 3 / 4);
    QVERIFY(behind != plain.pixelColor(x, 0));
    QVERIFY2(contrast(text, behind) >= readableContrast,
             qPrintable(text.name() + " on " + behind.name()));
}

//! In a busy feed; when that ends, or somebody scrolls, they are kept again.
void tst_ViewerTable::keepsNoPicturesOfWhatPassesBy()
{
    QStandardItemModel model(100, 2);
    Shown shown(&model);
    QVERIFY(shown.table.isPaintBufferEnabled());
    const auto addRows = [&](int count) {
        model.insertRows(model.rowCount(), count);
        shown.table.scrollToBottom();
        shown.table.grab();
    };
    for (int i = 0; i < 20 && shown.table.isPaintBufferEnabled(); ++i)
        addRows(100);
    QVERIFY(!shown.table.isPaintBufferEnabled());
    shown.table.fitColumns();
    QVERIFY(!shown.table.isPaintBufferEnabled());
    for (int i = 0; i < 20 && !shown.table.isPaintBufferEnabled(); ++i)
        addRows(1);
    QVERIFY(shown.table.isPaintBufferEnabled());
    for (int i = 0; i < 20; ++i)
        addRows(1);
    QVERIFY(shown.table.isPaintBufferEnabled());
}

QTEST_MAIN(tst_ViewerTable)

#include "tst_viewertable.moc"
