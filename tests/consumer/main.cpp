// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include <qtablefastview.h>

#include <QApplication>
#include <QStringListModel>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStringListModel model({QStringLiteral("one"), QStringLiteral("two")});
    QTableFastView view;
    view.setModel(&model);
    view.show();
    QCoreApplication::processEvents();
    return view.indexAt(QPoint(2, 2)) == model.index(0, 0) ? 0 : 1;
}
