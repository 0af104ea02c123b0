// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A first table: a thousand million rows, none of which is stored. Drag the scroll bar to the
// middle, press End, make the window larger: nothing takes longer than with a thousand rows.

#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>

namespace {

//! Numbers, and what can be said of them. Any flat model will do.
class NumberModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 1'000'000'000;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 4;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const QStringList titles {"n", "n²", "Binary", "Hexadecimal"};
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section)
                                                                        : QVariant();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const qint64 number = index.row();
        if (role == Qt::TextAlignmentRole && index.column() < 2)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (role != Qt::DisplayRole)
            return {};
        switch (index.column()) {
        case 0:
            return number;
        case 1:
            return number * number;
        case 2:
            return QString::number(number, 2);
        default:
            return QString::number(number, 16);
        }
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    NumberModel model;

    QTableFastView view;
    view.setItemDelegate(new Vantix::ItemDelegate(&view)); // texts, fast
    view.setPaintBufferEnabled(true);                      // painted cells are kept
    view.setAlternatingRowColors(true);
    view.setModel(&model);
    view.header()->resizeSection(1, 180);
    view.header()->resizeSection(2, 230);
    view.setWindowTitle("First table");
    view.resize(640, 420);
    view.show();
    return QApplication::exec();
}
