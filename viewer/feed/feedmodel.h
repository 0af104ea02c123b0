// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FEEDMODEL_H
#define FEEDMODEL_H

#include "bcdiivalue.h"

#include <QAbstractTableModel>

#include <vector>

//! One simulated trade. Everything in it is exact: no floating point.
struct Trade
{
    using Price = BCDIIValue<9, 2>;
    using Value = BCDIIValue<15, 2>;

    Value value() const { return Value::product(price, BCDIIValue<9, 0>(quantity)); }

    qint64 time = 0;     //!< milliseconds since 1970, UTC
    int symbol = 0;      //!< number of the symbol
    bool isBuy = false;  //!< else it is a sell
    Price price;         //!< of one piece
    qint64 quantity = 0; //!< pieces, at least 1
    int venue = 0;       //!< number of the venue
};

/*!
 * \brief A simulated market feed: a million past trades, and new ones at any rate.
 *
 * A trade follows from its number alone, and is computed whenever it is looked at:
 * nothing is stored per row. Only each change of the rate is remembered, because the
 * times of the trades depend on it.
 *
 * The model has no clock of its own: its user says with advance() how much time went
 * by.
 */
class FeedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    //! Where new rows appear.
    enum class NewRows {
        AtTop,
        AtEnd
    };
    Q_ENUM(NewRows)

    enum Column {
        NumberColumn,
        TimeColumn,
        SymbolColumn,
        SideColumn,
        PriceColumn,
        QuantityColumn,
        ValueColumn,
        VenueColumn,
        ColumnCount
    };

    static constexpr int pastTrades = 1'000'000;        //!< rows at the start
    static constexpr int maximumTrades = 2'000'000'000; //!< the feed ends there
    static constexpr int maximumRate = 50'000;          //!< rows per second

    //! Begins with \a past trades, 1 at least, the last of which happened at \a start,
    //! milliseconds since 1970.
    explicit FeedModel(qint64 start, int past = pastTrades, QObject *parent = nullptr);

    //! Where new rows appear; changing it turns the table upside down.
    NewRows newRows() const { return m_newRows; }
    void setNewRows(NewRows newRows);

    //! New rows per second, 0 to maximumRate; values outside are clamped.
    int rate() const { return m_rate; }
    void setRate(int rate);

    //! Lets \a nanoseconds go by and adds the trades that happened, in one insertion.
    //! What is left over counts for the next call.
    void advance(qint64 nanoseconds);

    //! The trade number \a number, counted from 0 for the oldest.
    Trade trade(qint64 number) const;

    //! Symbols are numbered from 0.
    static int symbolCount();
    static QString symbolName(int symbol);
    //! Of what was bought, or went up, and of what was sold. Readable on the base colour of the
    //! present palette.
    static QColor sideColor(bool isBuy);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    //! From this trade on, trades follow each other at one interval.
    struct Pace
    {
        qint64 number;   //!< the first trade
        qint64 time;     //!< its time in nanoseconds since 1970
        qint64 interval; //!< nanoseconds
    };

    qint64 numberOfRow(int row) const;
    qint64 timeOf(qint64 number) const;
    void beginPace();
    QString text(const Trade &trade, qint64 number, int column) const;

    NewRows m_newRows = NewRows::AtTop; //!< see newRows()
    int m_rate = 0;                     //!< rows per second
    int m_count;                        //!< trades so far
    qint64 m_now;                       //!< nanoseconds since 1970
    qint64 m_owed = 0;                  //!< billionths of a trade that are due
    std::vector<Pace> m_paces;          //!< in order; never empty
};

#endif // FEEDMODEL_H
