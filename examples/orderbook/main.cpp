// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// An order book of 20,001 prices, 2,000 orders a second: each frame tells the rows that changed,
// and these are painted, nothing else. Amounts, sums and turnover are decimals, exact to the last
// digit.

#include "bookmodel.h"
#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int frame = 16; // ms
constexpr int ordersInFrame = 32;

QTableFastView *createView(BookModel *model)
{
    auto *view = new QTableFastView;
    view->setItemDelegate(new Vantix::ItemDelegate(view));
    view->setPaintBufferEnabled(true);
    view->setFollowsCurrentRow(false);
    view->setAlternatingRowColors(true);
    view->setModel(model);
    view->header()->setSectionResizeMode(QHeaderView::Stretch);
    return view;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    BookModel model;

    QWidget window;
    QTableFastView *view = createView(&model);
    auto *turnover = new QLabel;
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(view);
    layout->addWidget(turnover);
    window.setWindowTitle("Order book");
    window.resize(520, 560);
    window.show();

    QTimer feed;
    QObject::connect(&feed, &QTimer::timeout, view, [&] {
        model.trade(ordersInFrame);
        view->scrollToRow(model.index(model.bestBid(), 0), QAbstractItemView::PositionAtCenter);
        turnover->setText("Turnover: " + QString::fromStdString(model.turnover().toString()));
    });
    feed.start(frame);
    return QApplication::exec();
}
