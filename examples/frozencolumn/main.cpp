// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A wide table whose first column stays in sight. Scroll it to the right: the names stay, and so
// does their header, which still can be clicked, and dragged wider. Go from cell to cell with the
// arrow keys: none hides beneath the names. Move another column to the first place, and the names
// scroll along with all others.
//
// The view derives from QTableFastView, whose frozenColumnWidth() it answers: see
// viewer/windows/frozencolumnview.cpp.

#include "frozencolumnview.h"

#include <QApplication>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QStandardItemModel>

namespace {

constexpr int stations = 1000;
constexpr int hours = 24;

//! A day's temperatures, degrees Celsius, by station and hour.
void fill(QStandardItemModel *model)
{
    QStringList titles {"Station"};
    for (int hour = 0; hour < hours; ++hour)
        titles.append(QStringLiteral("%1:00").arg(hour, 2, 10, QLatin1Char('0')));
    model->setHorizontalHeaderLabels(titles);
    QRandomGenerator random(1);
    for (int station = 1; station <= stations; ++station) {
        QList<QStandardItem *> row {new QStandardItem(QStringLiteral("Station %1").arg(station))};
        for (int hour = 0; hour < hours; ++hour)
            row.append(new QStandardItem(QString::number(random.bounded(400) / 10.0, 'f', 1)));
        model->appendRow(row);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStandardItemModel model;
    fill(&model);

    FrozenColumnView view;
    view.setModel(&model);
    view.setFrozenColumn(0);
    view.setStandardKeys(true);
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.setPaintBufferEnabled(true);
    view.setAlternatingRowColors(true);
    view.setSortingEnabled(true);
    view.setWindowTitle("Frozen column");
    view.resize(700, 500);
    view.show();
    return QApplication::exec();
}
