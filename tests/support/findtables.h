// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FINDTABLES_H
#define FINDTABLES_H

#include "abstractitemviewfind.h"

#include <QStandardItemModel>
#include <QTableView>

#include <initializer_list>
#include <utility>

//! The engine with what it keeps from others, and a record of what it asked.
class Engine : public AbstractItemViewFind
{
public:
    using AbstractItemViewFind::acceptsLineForward;
    using AbstractItemViewFind::acceptsLineReverse;
    using AbstractItemViewFind::dofind;
    using AbstractItemViewFind::dofindReverse;
    using AbstractItemViewFind::find;
    using AbstractItemViewFind::itemModel;
    using AbstractItemViewFind::processEvents;
    using AbstractItemViewFind::setCurrentIndex;
    using AbstractItemViewFind::trim;
    using AbstractItemViewFind::tryAcceptCurrentLine;
};

class RecordingEngine : public Engine
{
public:
    bool acceptsData(const QVariant &data, const QString &text, int column) const override
    {
        asked << data.toString();
        return Engine::acceptsData(data, text, column);
    }

    mutable QStringList asked;
};

inline QStandardItem *item(const QVariant &value)
{
    auto *made = new QStandardItem;
    made->setData(value, Qt::DisplayRole);
    return made;
}

inline QList<QStandardItem *> itemsOf(const QVariantList &values)
{
    QList<QStandardItem *> items;
    for (const QVariant &value : values)
        items << item(value);
    return items;
}

//! A table view of Qt's with its engine.
struct Table
{
    Table(std::initializer_list<QVariantList> rows = {})
    {
        for (const QVariantList &row : rows)
            model.appendRow(itemsOf(row));
        view.setModel(&model);
        view.setLocale(QLocale::c());
        find.setView(&view);
        find.setHeader(view.horizontalHeader());
    }
    void setCurrent(int row, int column) { view.setCurrentIndex(model.index(row, column)); }
    std::pair<int, int> current() const
    {
        return {view.currentIndex().row(), view.currentIndex().column()};
    }

    QStandardItemModel model;
    QTableView view;
    RecordingEngine find;
};

using Cell = std::pair<int, int>;

inline QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

//! a(b(c, d), e), f(g) with every child under the first column, two columns.
inline void fillTree(QStandardItemModel *model)
{
    const auto add = [](QStandardItem *parent, const char *name) {
        QStandardItem *made = item(utf8(name));
        parent->appendRow({made, item(utf8(name) + u'2')});
        return made;
    };
    QStandardItem *a = add(model->invisibleRootItem(), "a");
    QStandardItem *b = add(a, "b");
    add(b, "c");
    add(b, "d");
    add(a, "e");
    add(add(model->invisibleRootItem(), "f"), "g");
}

#endif // FINDTABLES_H
