// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FLATPROXY_H
#define FLATPROXY_H

#include <QAbstractProxyModel>
#include <QPersistentModelIndex>

//! Rows of a flat model, some of them or in another order, with all of its columns.
class FlatProxy : public QAbstractProxyModel
{
    Q_OBJECT

public:
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    //! Nothing for a row that has gone from the source: others may hear of that earlier.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    //! Does nothing.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

protected:
    //! How many rows there are; asked while there is a source only, as are the others.
    virtual int shownRows() const = 0;
    //! The row of the source behind \a row, which is there.
    virtual int sourceRow(int row) const = 0;
    //! The row that shows \a sourceRow, or −1.
    virtual int rowOf(int sourceRow) const = 0;

    //! To be called when the source tells that its layout is about to change, and that it has,
    //! once rowOf() knows: persistent indexes stay with their rows.
    //! @{
    void layoutAboutToChange();
    void layoutHasChanged();
    //! @}

private:
    QModelIndexList m_layoutProxies;              //!< persistent ones while the layout changes
    QList<QPersistentModelIndex> m_layoutSources; //!< what is behind them
};

#endif // FLATPROXY_H
