// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A table that refuses some edits and says why. Try a negative amount, an empty
// customer, a priority of 7, and drag the date columns narrower.

#include "itemdelegate.h"
#include "ordermodel.h"
#include "qtablefastview.h"
#include "translations.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QHeaderView>
#include <QPixmapCache>

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2a, 0x2a, 0x2a));
    palette.setColor(QPalette::AlternateBase, QColor(0x31, 0x31, 0x31));
    palette.setColor(QPalette::Highlight, QColor(0x2a, 0x5a, 0x8a));
    return palette;
}

void setUp(QTableFastView *view, OrderModel *model)
{
    view->setPaintBufferEnabled(true);
    view->setAlternatingRowColors(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    view->setItemDelegate(new Vantix::ItemDelegate(view));
    auto *marking = new Vantix::ItemDelegate(view);
    marking->setDrawIndicator(true);
    view->setItemDelegateForColumn(OrderModel::Customer, marking);
    view->setItemDelegateForColumn(OrderModel::Priority, marking);
    view->setRowHeightFollowsFont(true);
    view->setModel(model);
    const int widths[] = {190, 70, 90, 150, 75};
    for (int column = 0; column < OrderModel::ColumnCount; ++column)
        view->header()->resizeSection(column, widths[column]);
    view->resize(600, 400);
    view->setWindowTitle(QStringLiteral("Editing"));
}

//! Shows a selection and an editor, and saves what the window looks like.
bool saveScreenshot(QTableFastView *view, const QString &file)
{
    view->setCurrentIndex(view->model()->index(2, OrderModel::Amount));
    view->edit(view->model()->index(2, OrderModel::Amount));
    QCoreApplication::processEvents();
    return view->grab().save(file);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    vantixInstallTranslations(); // why an edit was refused
    QApplication::setStyle(QStringLiteral("fusion"));
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours."));
    const QCommandLineOption rightToLeft(QStringLiteral("rtl"),
                                         QStringLiteral("Right-to-left layout."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture and quit."),
                                        QStringLiteral("FILE"));
    parser.addOptions({dark, rightToLeft, screenshot});
    parser.process(app);

    if (parser.isSet(dark))
        QApplication::setPalette(darkPalette());
    if (parser.isSet(rightToLeft))
        QApplication::setLayoutDirection(Qt::RightToLeft);
    QPixmapCache::setCacheLimit(20 * 1024);
    OrderModel model;
    QTableFastView view;
    setUp(&view, &model);
    view.show();
    if (parser.isSet(screenshot)) {
        QCoreApplication::processEvents();
        return saveScreenshot(&view, parser.value(screenshot)) ? 0 : 1;
    }
    return QApplication::exec();
}
