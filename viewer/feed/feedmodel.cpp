// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feedmodel.h"

#include "basics/alignments.h"

#include <QColor>
#include <QDateTime>
#include <QGuiApplication>
#include <QPalette>
#include <QTimeZone>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 s_second = 1000000000;   // nanoseconds
constexpr qint64 s_millisecond = 1000000; // nanoseconds
constexpr qint64 s_pastInterval = 25 * s_millisecond;

// Invented names; any likeness is chance.
constexpr std::array s_symbols {"ALDR", "BRKT", "CIRO", "DUNE", "ELMO", "FJRD", "GLDE", "HAZL",
                                "IVOR", "JUNI", "KELP", "LARK", "MOSS", "NIMB", "OPAL", "PINE"};
constexpr std::array s_venues {"SIM-A", "SIM-B", "SIM-C"};

// A bijection of 64-bit numbers without visible order.
quint64 scatter(quint64 value)
{
    value += 0x9e3779b97f4a7c15;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9;
    value = (value ^ (value >> 27)) * 0x94d049bb133111eb;
    return value ^ (value >> 31);
}

// A height between 0 and \a height that changes smoothly within 2^shift steps.
qint64 wave(quint64 seed, quint64 step, int shift, qint64 height)
{
    const auto corner = [&](quint64 i) {
        return qint64(scatter(seed ^ (i << 8) ^ quint64(shift)) % quint64(height + 1));
    };
    const quint64 at = step >> shift;
    const qint64 within = qint64(step - (at << shift));
    const qint64 left = corner(at);
    return left + (corner(at + 1) - left) * within / (qint64(1) << shift);
}

// Long, middle and short waves above a floor of the symbol's own, in hundredths.
Trade::Price priceOf(int symbol, quint64 number)
{
    const quint64 seed = scatter(quint64(symbol) + 1);
    const qint64 floor = 2000 + qint64(seed % 30000);
    return Trade::Price::fromUnits(
        floor + wave(seed, number, 19, floor / 2) + wave(seed, number, 14, floor / 20)
        + wave(seed, number, 9, 1 + floor / 200) + qint64(scatter(number) >> 32) % 3);
}

bool isRightAligned(int column)
{
    return column == FeedModel::NumberColumn || column == FeedModel::PriceColumn
        || column == FeedModel::QuantityColumn || column == FeedModel::ValueColumn;
}

} // namespace

FeedModel::FeedModel(qint64 start, int past, QObject *parent)
    : QAbstractTableModel(parent)
    , m_count(past)
    , m_now(start * s_millisecond)
    , m_paces {{0, m_now - qint64(past - 1) * s_pastInterval, s_pastInterval}}
{
}

void FeedModel::setNewRows(NewRows newRows)
{
    if (newRows == m_newRows)
        return;
    beginResetModel();
    m_newRows = newRows;
    endResetModel();
}

void FeedModel::setRate(int rate)
{
    rate = std::clamp(rate, 0, maximumRate);
    if (rate == m_rate)
        return;
    m_rate = rate;
    m_owed = 0;
    beginPace();
}

//! The next trade comes one interval from now.
void FeedModel::beginPace()
{
    if (m_rate == 0)
        return;
    const qint64 interval = s_second / m_rate;
    if (m_paces.back().number == m_count)
        m_paces.pop_back();
    m_paces.push_back({m_count, m_now + interval, interval});
}

void FeedModel::advance(qint64 nanoseconds)
{
    const bool isAwake = m_rate > 0;
    m_now += nanoseconds;
    if (!isAwake || nanoseconds <= 0)
        return;
    // A minute at a time at most: the product stays far below 2^63.
    m_owed += qMin(nanoseconds, 60 * s_second) * m_rate;
    const qint64 due = qMin<qint64>(m_owed / s_second, maximumTrades - m_count);
    m_owed %= s_second;
    if (due == 0)
        return;
    const int first = m_newRows == NewRows::AtTop ? 0 : m_count;
    beginInsertRows({}, first, first + int(due) - 1);
    m_count += int(due);
    endInsertRows();
}

qint64 FeedModel::numberOfRow(int row) const
{
    return m_newRows == NewRows::AtTop ? qint64(m_count) - 1 - row : row;
}

qint64 FeedModel::timeOf(qint64 number) const
{
    const auto next =
        std::upper_bound(m_paces.begin(), m_paces.end(), number,
                         [](qint64 value, const Pace &pace) { return value < pace.number; });
    const Pace &pace = next == m_paces.begin() ? *next : *(next - 1);
    return pace.time + (number - pace.number) * pace.interval;
}

Trade FeedModel::trade(qint64 number) const
{
    const quint64 random = scatter(quint64(number));
    Trade trade;
    trade.time = timeOf(number) / s_millisecond;
    trade.symbol = int(random % s_symbols.size());
    trade.isBuy = (random >> 8) % 2 == 0;
    trade.price = priceOf(trade.symbol, quint64(number));
    // Small orders are the most frequent.
    trade.quantity = 1 + qint64((random >> 16) % 100) * qint64((random >> 24) % 20);
    trade.venue = int((random >> 40) % s_venues.size());
    return trade;
}

int FeedModel::symbolCount()
{
    return int(s_symbols.size());
}

QString FeedModel::symbolName(int symbol)
{
    return QString::fromLatin1(s_symbols[std::size_t(symbol)]);
}

QColor FeedModel::sideColor(bool isBuy)
{
    const bool isDark = QGuiApplication::palette().color(QPalette::Base).lightness() < 128;
    if (isBuy)
        return isDark ? QColor(0x6f, 0xd0, 0x8c) : QColor(0x0b, 0x6b, 0x2f);
    return isDark ? QColor(0xff, 0x8f, 0x85) : QColor(0xa8, 0x1c, 0x1c);
}

int FeedModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int FeedModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString FeedModel::text(const Trade &trade, qint64 number, int column) const
{
    switch (column) {
    case NumberColumn:
        return QString::number(number + 1);
    case TimeColumn:
        return QDateTime::fromMSecsSinceEpoch(trade.time, QTimeZone::utc())
            .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    case SymbolColumn:
        return symbolName(trade.symbol);
    case SideColumn:
        return trade.isBuy ? tr("Buy") : tr("Sell");
    case PriceColumn:
        return trade.price.toQString();
    case QuantityColumn:
        return QString::number(trade.quantity);
    case ValueColumn:
        return trade.value().toQString();
    case VenueColumn:
        return QString::fromLatin1(s_venues[std::size_t(trade.venue)]);
    default:
        return {};
    }
}

QVariant FeedModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int column = index.column();
    if (role == Qt::TextAlignmentRole && isRightAligned(column))
        return QVariant::fromValue(numberAlignment);
    if (role != Qt::DisplayRole && (role != Qt::ForegroundRole || column != SideColumn))
        return {};
    const qint64 number = numberOfRow(index.row());
    const Trade shown = trade(number);
    if (role == Qt::ForegroundRole)
        return sideColor(shown.isBuy);
    return text(shown, number, column);
}

QVariant FeedModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(isRightAligned(section) ? numberAlignment : Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    static constexpr std::array names {
        QT_TR_NOOP("No."),   QT_TR_NOOP("Time (UTC)"), QT_TR_NOOP("Symbol"), QT_TR_NOOP("Side"),
        QT_TR_NOOP("Price"), QT_TR_NOOP("Quantity"),   QT_TR_NOOP("Value"),  QT_TR_NOOP("Venue")};
    return tr(names[std::size_t(section)]);
}
