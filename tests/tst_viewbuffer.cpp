// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The paint buffer changes no pixel: what the window shows with it is what it shows
// without. Run at several device pixel ratios.
//
// Gradients and antialiased corners that a style draws come out a level lighter or darker
// elsewhere on a device, and the dots of the Windows style's focus frame lie elsewhere at
// ratios above 1: no picture that is kept can have both places.

#include "activation.h"
#include "viewpictures.h"

#include <itemdelegate.h>
#include <qtablefastview.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPixmapCache>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTest>

namespace {

using MakeDelegate = QAbstractItemDelegate *(*)(QAbstractItemView *);

QAbstractItemDelegate *qtDelegate(QAbstractItemView *view)
{
    return new QStyledItemDelegate(view);
}
QAbstractItemDelegate *gridDelegate(QAbstractItemView *view)
{
    return new Vantix::ItemDelegate(view);
}
QAbstractItemDelegate *plainDelegate(QAbstractItemView *view)
{
    auto *delegate = new Vantix::ItemDelegate(view);
    delegate->setDrawFrame(false);
    return delegate;
}
QAbstractItemDelegate *indicatorDelegate(QAbstractItemView *view)
{
    auto *delegate = new Vantix::ItemDelegate(view);
    delegate->setDrawIndicator(true);
    return delegate;
}

//! Texts, numbers, check marks, icons, colours and disabled cells.
void fill(QStandardItemModel *model)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::darkGreen);
    model->clear();
    for (int row = 0; row < 40; ++row) {
        QList<QStandardItem *> items;
        for (int column = 0; column < 4; ++column) {
            auto *item = new QStandardItem(QStringLiteral("row %1, %2 fjq").arg(row).arg(column));
            if (column == 1) {
                item->setCheckable(true);
                item->setCheckState(Qt::CheckState(row % 3));
            }
            if (column == 2)
                item->setIcon(QIcon(pixmap));
            if (row % 5 == 2)
                item->setBackground(QColor(200, 220, 255, column == 3 ? 120 : 255));
            if (row % 7 == 3)
                item->setEnabled(false);
            if (column == 3)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            items.append(item);
        }
        model->appendRow(items);
    }
}

} // namespace

class TestViewBuffer : public QObject
{
    Q_OBJECT

private slots:
    void changesNoPixel_data();
    void changesNoPixel();

private:
    QImage pictureOf(QTableFastView &view, bool isBuffered);
};

void TestViewBuffer::changesNoPixel_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<MakeDelegate>("makeDelegate");
    QTest::addColumn<bool>("hasEditor");
    const std::pair<const char *, MakeDelegate> delegates[] = {{"Qt's delegate", qtDelegate},
                                                               {"grid", gridDelegate},
                                                               {"no grid", plainDelegate},
                                                               {"indicators", indicatorDelegate}};
    for (const char *style : {"Fusion", "Windows"}) {
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            for (const auto &[name, delegate] : delegates) {
                for (const bool hasEditor : {false, true}) {
                    QTest::addRow("%s, %s, %s%s", style,
                                  direction == Qt::LeftToRight ? "left to right" : "right to left",
                                  name, hasEditor ? ", editor" : "")
                        << QString::fromLatin1(style) << direction << delegate << hasEditor;
                }
            }
        }
    }
}

//! What the window shows after it was painted for the first time and again.
QImage TestViewBuffer::pictureOf(QTableFastView &view, bool isBuffered)
{
    QPixmapCache::clear();
    view.setPaintBufferEnabled(!isBuffered);
    view.setPaintBufferEnabled(isBuffered);
    for (int i = 0; i < 2; ++i) {
        view.viewport()->update();
        QCoreApplication::processEvents();
    }
    return maintainedPicture(view);
}

void TestViewBuffer::changesNoPixel()
{
    QFETCH(QString, style);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(MakeDelegate, makeDelegate);
    QFETCH(bool, hasEditor);
    const std::unique_ptr<QStyle> made(QStyleFactory::create(style));
    QVERIFY(made);
    // Its check marks are of lines that lie between device pixels at odd ratios.
    if (style == QStringLiteral("Windows") && qApp->devicePixelRatio() > 2
        && (makeDelegate == qtDelegate || makeDelegate == indicatorDelegate)) {
        QSKIP("the Windows style's check marks depend on their place at this ratio");
    }
    QStandardItemModel model;
    fill(&model);
    QWidget window;
    window.resize(360, 260);
    QTableFastView view(&window);
    view.setGeometry(0, 0, 360, 260);
    view.setStyle(made.get());
    view.viewport()->setStyle(made.get());
    view.setLayoutDirection(direction);
    view.setItemDelegate(makeDelegate(&view));
    view.updateItemHeight();
    view.setAlternatingRowColors(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    view.header()->resizeSection(0, 71);
    view.header()->resizeSection(3, 120);
    window.show();
    activate(&window);
    view.setCurrentIndex(model.index(4, 0));
    view.selectionModel()->select(QItemSelection(model.index(5, 0), model.index(7, 3)),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    if (hasEditor) {
        auto *editor = new QLineEdit;
        editor->setReadOnly(true); // without a cursor that blinks
        view.setIndexWidget(model.index(4, 1), editor);
        editor->setFocus();
    }
    view.horizontalScrollBar()->setValue(17);
    const QImage plain = pictureOf(view, false);
    const QImage buffered = pictureOf(view, true);
    QCOMPARE(plain.size(), buffered.size());
    const bool hasDots = style == QStringLiteral("Windows") && makeDelegate == qtDelegate
        && view.devicePixelRatioF() > 1;
    const QRect dots = view.visualRect(model.index(4, 0));
    const auto isDotted = [&](int y) {
        const double logical = y / view.devicePixelRatioF();
        return hasDots && logical >= dots.top() && logical < dots.top() + dots.height();
    };
    int different = 0;
    QPoint first(-1, -1);
    for (int y = plain.height() - 1; y >= 0; --y) {
        for (int x = plain.width() - 1; x >= 0; --x) {
            if (isDotted(y) || isSameColor(plain.pixel(x, y), buffered.pixel(x, y)))
                continue;
            ++different;
            first = QPoint(x, y);
        }
    }
    if (different != 0 && qEnvironmentVariableIsSet("VANTIX_TEST_PICTURES")) {
        plain.save(qEnvironmentVariable("VANTIX_TEST_PICTURES") + QStringLiteral("/plain.png"));
        buffered.save(qEnvironmentVariable("VANTIX_TEST_PICTURES")
                      + QStringLiteral("/buffered.png"));
    }
    QVERIFY2(different == 0,
             qPrintable(QStringLiteral("%1 pixels differ, the first at (%2, %3)")
                            .arg(different)
                            .arg(first.x())
                            .arg(first.y())));
}

QTEST_MAIN(TestViewBuffer)

#include "tst_viewbuffer.moc"
