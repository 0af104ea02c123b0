// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MARKSDIALOG_H
#define MARKSDIALOG_H

#include <QDialog>
#include <QPersistentModelIndex>

class MarkedRows;
class QAbstractItemModel;
class QTreeWidget;

//! A list of marked rows to choose one from: number and beginning of each.
class MarksDialog : public QDialog
{
    Q_OBJECT

public:
    //! Lists the present \a marks of \a model. They may change while it is open; rows that
    //! are gone then cannot be chosen.
    MarksDialog(const MarkedRows &marks, const QAbstractItemModel &model, QWidget *parent);

    void accept() override;

Q_SIGNALS:
    //! Somebody wants to see \a row of the model.
    void rowChosen(int row);

private:
    void fill(const MarkedRows &marks, const QAbstractItemModel &model);

    QTreeWidget *m_list;
    QList<QPersistentModelIndex> m_rows; //!< in the order of the list
};

#endif // MARKSDIALOG_H
