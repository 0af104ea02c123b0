// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bookmodel.h"

#include "basics/alignments.h"

#include <algorithm>
#include <array>

BookModel::BookModel(const FeedModel *feed, QObject *parent)
    : QAbstractTableModel(parent)
    , m_feed(feed)
    , m_symbols(std::size_t(FeedModel::symbolCount()))
    , m_next(qMax(0, feed->rowCount() - firstTrades))
{
    while (m_next < feed->rowCount())
        update();
}

void BookModel::update()
{
    const qint64 count = qMin<qint64>(m_feed->rowCount(), m_next + mostAtOnce);
    std::vector<bool> isChanged(m_symbols.size());
    for (; m_next < count; ++m_next) {
        const Trade trade = m_feed->trade(m_next);
        take(trade);
        isChanged[std::size_t(trade.symbol)] = true;
        Q_EMIT traded(trade);
    }
    for (std::size_t row = 0; row < isChanged.size(); ++row) {
        if (isChanged[row])
            Q_EMIT dataChanged(index(int(row), LastColumn), index(int(row), ColumnCount - 1));
    }
}

void BookModel::take(const Trade &trade)
{
    Symbol &symbol = m_symbols[std::size_t(trade.symbol)];
    if (!symbol.isTraded)
        symbol = {true, trade.price, trade.price, trade.price, trade.price, 0, 0};
    if (trade.price != symbol.last)
        symbol.direction = trade.price > symbol.last ? 1 : -1;
    symbol.last = trade.price;
    symbol.high = std::max(symbol.high, trade.price);
    symbol.low = std::min(symbol.low, trade.price);
    symbol.volume += trade.quantity;
}

int BookModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_symbols.size());
}

int BookModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString BookModel::text(const Symbol &symbol, int row, int column) const
{
    if (column == SymbolColumn)
        return FeedModel::symbolName(row);
    if (!symbol.isTraded)
        return {};
    switch (column) {
    case LastColumn:
        return symbol.last.toQString();
    case ChangeColumn: {
        const Trade::Price change = symbol.last - symbol.first;
        const bool isGain = change > Trade::Price::fromUnits(0);
        return (isGain ? QStringLiteral("+") : QString()) + change.toQString();
    }
    case HighColumn:
        return symbol.high.toQString();
    case LowColumn:
        return symbol.low.toQString();
    case VolumeColumn:
        return QString::number(symbol.volume);
    default:
        return {};
    }
}

QVariant BookModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Symbol &symbol = m_symbols[std::size_t(index.row())];
    if (role == Qt::DisplayRole)
        return text(symbol, index.row(), index.column());
    if (role == Qt::TextAlignmentRole && index.column() != SymbolColumn)
        return QVariant::fromValue(numberAlignment);
    if (role == Qt::ForegroundRole && index.column() == LastColumn && symbol.direction != 0)
        return FeedModel::sideColor(symbol.direction > 0);
    return {};
}

QVariant BookModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(section == SymbolColumn ? Qt::AlignLeft | Qt::AlignVCenter : numberAlignment);
    if (role != Qt::DisplayRole)
        return {};
    static constexpr std::array names {QT_TR_NOOP("Symbol"), QT_TR_NOOP("Last"),
                                       QT_TR_NOOP("Change"), QT_TR_NOOP("High"),
                                       QT_TR_NOOP("Low"),    QT_TR_NOOP("Volume")};
    return tr(names[std::size_t(section)]);
}
