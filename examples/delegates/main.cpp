// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What the delegates make of values: the same rows by Qt's delegate, on the left, and by
// Vantix::ItemDelegate. Drag the column of times narrower: the date goes before the time does. Rows
// have colours of their own, and are kept as pictures all the same.

#include "itemdelegate.h"
#include "qtablefastview.h"
#include "styleditemdelegate.h"

#include <QApplication>
#include <QColor>
#include <QDateTime>
#include <QHeaderView>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>

namespace {

QStandardItem *item(const QVariant &value, const QColor &background)
{
    auto *item = new QStandardItem;
    item->setData(value, Qt::DisplayRole);
    if (background.isValid()) {
        item->setBackground(background);
        item->setForeground(QColor(Qt::black));
    }
    return item;
}

void fill(QStandardItemModel *model)
{
    model->setHorizontalHeaderLabels({"Time", "Number", "Share", "Done"});
    const QDateTime start(QDate(2026, 11, 23), QTime(9, 0));
    for (int row = 0; row < 500; ++row) {
        const QColor color = row % 5 == 4 ? QColor(0xff, 0xe8, 0xb0) : QColor();
        QStandardItem *done = item({}, color);
        done->setCheckable(true);
        done->setCheckState(row % 3 == 0 ? Qt::Checked : Qt::Unchecked);
        model->appendRow({item(start.addSecs(row * 97), color), item(row * 12'345, color),
                          item(row / 7.0, color), done});
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStandardItemModel model;
    fill(&model);

    QSplitter window;
    auto *plain = new QTableView;
    plain->setModel(&model);
    plain->setColumnWidth(0, 170);
    window.addWidget(plain);

    auto *fast = new QTableFastView;
    fast->setItemDelegate(new Vantix::ItemDelegate(fast));
    // Check marks, and whatever else styles paint, are the business of the other delegate.
    fast->setItemDelegateForColumn(3, new StyledItemDelegate(fast));
    fast->setPaintBufferEnabled(true);
    fast->setModel(&model);
    fast->setColumnWidth(0, 170);
    window.addWidget(fast);

    window.setWindowTitle("Delegates");
    window.resize(1000, 420);
    window.show();
    return QApplication::exec();
}
