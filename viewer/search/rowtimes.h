// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWTIMES_H
#define ROWTIMES_H

#include "files/timestamp.h"

class QAbstractItemModel;
class TextFileModel;

//! Times of the rows of a model: those of a file by its bytes. For a short while; the model must
//! live on.
class RowTimes
{
public:
    //! How rows are asked for.
    enum class Order {
        HereAndThere,
        InTurn //!< downwards; a block of the file is read for many of them
    };

    explicit RowTimes(const QAbstractItemModel &model, Order order = Order::HereAndThere);

    //! The time that \a row begins with, if there is one.
    std::optional<TimeStamp> at(int row) const;

    //! The first row from \a row on, before \a end, that has a time; \a end without one. Looks at
    //! no more than \a most rows.
    int rowWithTime(int row, int end, int most) const;

    //! The last row from \a row up that has a time, or −1. Looks at no more than \a most rows.
    int rowWithTimeAbove(int row, int most) const;

    //! The day that stamps without a year are not later than.
    QDate latest() const { return m_latest; }

private:
    const QAbstractItemModel &m_model;
    const TextFileModel *m_lines; //!< m_model, if bytes of its rows tell; else null
    Order m_order;
    QDate m_latest;
};

#endif // ROWTIMES_H
