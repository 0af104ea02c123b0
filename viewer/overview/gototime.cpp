// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "gototime.h"

#include "qtablefastview.h"
#include "search/rowtimes.h"
#include "search/tablefilter.h"

#include <QAction>
#include <QDateTime>
#include <QInputDialog>
#include <QTimeZone>

namespace {

constexpr int s_rowsAbove = 2000; // looked at for a time

QString written(const TimeStamp &time)
{
    const QDateTime clock = QDateTime::fromMSecsSinceEpoch(time.clock, QTimeZone::utc());
    return clock.toString(time.hasDate ? QStringLiteral("yyyy-MM-dd HH:mm:ss")
                                       : QStringLiteral("HH:mm:ss"));
}

} // namespace

GoToTime::GoToTime(TableFilter *find, QTableFastView *table, QWidget *window)
    : QObject(window)
    , m_find(find)
    , m_table(table)
    , m_action(new QAction(tr("Go to &Time…"), this))
{
    m_action->setShortcut(Qt::CTRL | Qt::Key_T);
    connect(m_action, &QAction::triggered, this, &GoToTime::ask);
    connect(&m_search, &TimeSearch::found, this, &GoToTime::showFound);
}

QString GoToTime::present() const
{
    if (!m_find->source())
        return {};
    const RowTimes times(*m_find->source());
    const int row =
        times.rowWithTimeAbove(m_find->toSource(m_table->currentIndex()).row(), s_rowsAbove);
    return row < 0 ? QString() : written(*times.at(row));
}

void GoToTime::ask()
{
    bool isChosen = false;
    const QString text = QInputDialog::getText(qobject_cast<QWidget *>(parent()), tr("Go to Time"),
                                               tr("Time, or date and time, as in the file:"),
                                               QLineEdit::Normal, present(), &isChosen);
    if (isChosen)
        goTo(text);
}

void GoToTime::goTo(const QString &text)
{
    m_search.cancel();
    if (!m_find->source())
        return;
    const auto time = timeStampFrom(text.toUtf8(), RowTimes(*m_find->source()).latest());
    if (!time) {
        Q_EMIT said(tr("“%1” is no time.").arg(text));
        return;
    }
    goTo(*time);
}

void GoToTime::goTo(const TimeStamp &time)
{
    Q_EMIT said(tr("Looking for that time…"));
    m_search.find(m_find->source(), time, m_find->toSource(m_table->currentIndex()).row());
}

void GoToTime::showFound(int row)
{
    Q_EMIT said(row < 0 ? tr("No row is at that time or after it.") : QString());
    if (row >= 0)
        Q_EMIT rowChosen(row);
}
