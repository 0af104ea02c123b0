// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowtimes.h"

#include "files/journal.h"
#include "files/textfilemodel.h"
#include "rowtext.h"

#include <QDateTime>
#include <QFileInfo>

RowTimes::RowTimes(const QAbstractItemModel &model, Order order)
    : m_model(model)
    , m_lines(qobject_cast<const TextFileModel *>(&model))
    , m_order(order)
{
    const QDateTime changed = m_lines ? QFileInfo(m_lines->path()).lastModified() : QDateTime();
    m_latest = changed.isValid() ? changed.date() : QDate::currentDate();
    if (m_lines && !m_lines->hasAsciiBytes())
        m_lines = nullptr;
}

std::optional<TimeStamp> RowTimes::at(int row) const
{
    if (!m_lines)
        return timeStampOf(rowText(m_model, row).toUtf8(), m_latest);
    if (m_lines->isJournal())
        return m_order == Order::InTurn
            ? Journal::timeOf(m_lines->rowView(row, Journal::lineBytes))
            : Journal::timeOf(m_lines->rowBytes(row, Journal::lineBytes));
    if (m_order == Order::InTurn)
        return timeStampOf(m_lines->rowView(row, timeStampBytes), m_latest);
    return timeStampOf(m_lines->rowBytes(row, timeStampBytes), m_latest);
}

int RowTimes::rowWithTime(int row, int end, int most) const
{
    const int stop = most < end - row ? row + most : end;
    while (row < stop && !at(row))
        ++row;
    return row < stop ? row : end;
}

int RowTimes::rowWithTimeAbove(int row, int most) const
{
    for (int i = 0; i < most && row - i >= 0; ++i) {
        if (at(row - i))
            return row - i;
    }
    return -1;
}
