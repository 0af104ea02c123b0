// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BOOKMODEL_H
#define BOOKMODEL_H

#include "bcdiivalue.h"

#include <QAbstractTableModel>
#include <QRandomGenerator>

#include <set>
#include <vector>

//! An order book: what is wanted and what is offered at each price, the highest price first. Orders
//! come by chance.
class BookModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Amount = BCDIIValue<12, 3>; //!< exact, as books have to be
    using Price = BCDIIValue<9, 2>;
    using Money = BCDIIValue<18, 5>; //!< has room for any product of these

    enum Column {
        Bid,
        PriceColumn,
        Ask,
        Total, //!< from the best price to this one
        ColumnCount
    };

    explicit BookModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    //! Lets \a count orders come, and tells of the rows that they changed, each once.
    void trade(int count);
    //! The row of the best bid.
    int bestBid() const { return m_bestBid; }
    //! What was traded so far, in money.
    Money turnover() const { return m_turnover; }

private:
    static constexpr int levels = 20'001; // a cent apart

    Price priceOf(int row) const;
    Amount total(int row) const;
    void place(bool isBid, int row, const Amount &amount);
    void take(bool isBid, Amount amount);
    void changed(int row) { m_changed.insert(row); }

    std::vector<Amount> m_amounts; //!< by row; bids from m_bestBid on, asks above
    int m_bestBid = levels / 2 + 1;
    Money m_turnover;
    std::set<int> m_changed; //!< rows, not told yet
    QRandomGenerator m_random {7};
};

#endif // BOOKMODEL_H
