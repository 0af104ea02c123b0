// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bookmodel.h"

#include <QColor>

#include <algorithm>
#include <utility>

namespace {

QString text(const std::string &number)
{
    return QString::fromStdString(number);
}

} // namespace

BookModel::BookModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_amounts(levels)
{
    for (Amount &amount : m_amounts)
        amount = Amount::fromUnits(1000 + m_random.bounded(50'000));
}

int BookModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : levels;
}

int BookModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

BookModel::Price BookModel::priceOf(int row) const
{
    return Price::fromUnits(50'000 + levels - row);
}

//! Exact, however many amounts are added.
BookModel::Amount BookModel::total(int row) const
{
    constexpr int mostLevels = 200;
    const bool isBid = row >= m_bestBid;
    const int first = isBid ? m_bestBid : row;
    const int last = isBid ? row : m_bestBid - 1;
    Amount sum;
    if (last - first > mostLevels)
        return Amount::nan();
    for (int i = first; i <= last; ++i)
        sum += m_amounts[std::size_t(i)];
    return sum;
}

QVariant BookModel::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    const bool isBid = row >= m_bestBid;
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && index.column() == PriceColumn)
        return isBid ? QColor(0x1d, 0x8a, 0x4b) : QColor(0xc6, 0x3a, 0x3a);
    if (role != Qt::DisplayRole)
        return {};
    const Amount &amount = m_amounts[std::size_t(row)];
    switch (index.column()) {
    case Bid:
        return isBid ? text(amount.toString()) : QString();
    case PriceColumn:
        return text(priceOf(row).toString());
    case Ask:
        return isBid ? QString() : text(amount.toString());
    default:
        const Amount sum = total(row);
        return sum.isNan() ? QString() : text(sum.toString());
    }
}

QVariant BookModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles {"Bid", "Price", "Ask", "Total"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section)
                                                                    : QVariant();
}

void BookModel::place(bool isBid, int row, const Amount &amount)
{
    const int level = isBid ? std::max(row, m_bestBid) : std::min(row, m_bestBid - 1);
    m_amounts[std::size_t(level)] += amount;
    changed(level);
}

//! Takes what is offered at the best prices; a level that is taken belongs to the other side then.
void BookModel::take(bool isBid, Amount amount)
{
    while (amount > Amount() && m_bestBid > 1 && m_bestBid < levels - 1) {
        const int level = isBid ? m_bestBid : m_bestBid - 1;
        Amount &there = m_amounts[std::size_t(level)];
        const Amount taken = std::min(amount, there);
        m_turnover += Money::product(taken, priceOf(level));
        there -= taken;
        amount -= taken;
        changed(level);
        if (there > Amount())
            return;
        m_bestBid += isBid ? 1 : -1;
        there = Amount::fromUnits(1 + m_random.bounded(9000)); // somebody goes on from there
    }
}

void BookModel::trade(int count)
{
    for (int i = 0; i < count; ++i) {
        const bool isBid = m_random.bounded(2) == 0;
        const auto amount = Amount::fromUnits(1 + m_random.bounded(9000));
        const int distance = m_random.bounded(12);
        if (m_random.bounded(3) == 0)
            take(isBid, amount);
        else
            place(isBid, isBid ? m_bestBid + distance : m_bestBid - 1 - distance, amount);
    }
    for (const int row : std::exchange(m_changed, {}))
        Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}
