// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BOOKMODEL_H
#define BOOKMODEL_H

#include "feedmodel.h"

#include <vector>

/*!
 * \brief What has become of each symbol of a feed: a row for each, whose cells change.
 *
 * Begins with the last trades of before, and takes in all that come.
 */
class BookModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        SymbolColumn,
        LastColumn,   //!< price of the last trade
        ChangeColumn, //!< of the price, since the first trade that was taken in
        HighColumn,
        LowColumn,
        VolumeColumn, //!< pieces
        ColumnCount
    };

    static constexpr int firstTrades = 20000; //!< of before that are taken in, at most

    //! About \a feed, which must outlive the model.
    explicit BookModel(const FeedModel *feed, QObject *parent = nullptr);

    static constexpr int mostAtOnce = 5000; //!< trades that update() takes in

    //! Takes in trades that have come, the oldest first; what is left over waits for the next
    //! call. Tells of each row that has changed once.
    void update();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    //! update() has taken in \a trade.
    void traded(const Trade &trade);

private:
    struct Symbol
    {
        bool isTraded = false;
        Trade::Price first;
        Trade::Price last;
        Trade::Price high;
        Trade::Price low;
        qint64 volume = 0;
        int direction = 0; //!< of the last change of the price: 1 up, −1 down, 0 none yet
    };

    void take(const Trade &trade);
    QString text(const Symbol &symbol, int row, int column) const;

    const FeedModel *m_feed;       //!< not owned
    std::vector<Symbol> m_symbols; //!< by number
    qint64 m_next = 0;             //!< the first trade that has not been taken in
};

#endif // BOOKMODEL_H
