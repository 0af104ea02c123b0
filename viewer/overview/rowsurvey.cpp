// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowsurvey.h"

#include "files/journal.h"
#include "files/textfilemodel.h"
#include "qtablefastview.h"
#include "search/tablefilter.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int s_tellTime = 100; // ms
constexpr int s_rowsAtOnce = 16;

bool isAsciiOnly(QByteArrayView bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
}

} // namespace

RowSurvey::RowSurvey(TableFilter *find, QTableFastView *table, QObject *parent)
    : QObject(parent)
    , m_find(find)
    , m_table(table)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RowSurvey::work);
    m_tellTimer.setSingleShot(true);
    m_tellTimer.setInterval(s_tellTime);
    connect(&m_tellTimer, &QTimer::timeout, this, &RowSurvey::changed);
    connect(find, &TableFilter::modelShown, this, &RowSurvey::followModel);
}

void RowSurvey::followModel(QAbstractItemModel *model)
{
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &RowSurvey::rowsCame);
        connect(model, &QAbstractItemModel::dataChanged, this, &RowSurvey::rowsChanged);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &RowSurvey::beginAnew);
        connect(model, &QAbstractItemModel::rowsMoved, this, &RowSurvey::beginAnew);
        connect(model, &QAbstractItemModel::modelReset, this, &RowSurvey::beginAnew);
        connect(model, &QAbstractItemModel::layoutChanged, this, &RowSurvey::beginAnew);
        connect(model, &QObject::destroyed, this, [this] { followModel(nullptr); });
    }
    beginAnew();
}

void RowSurvey::setSought(const TextMatcher &matcher, const QList<int> &columns)
{
    const bool isSame = m_sought.text() == matcher.text() && m_sought.rules() == matcher.rules()
        && std::equal(m_columns.begin(), m_columns.end(), columns.begin(), columns.end());
    if (isSame)
        return;
    m_sought = matcher;
    m_columns = columns;
    m_hits.isWanted = !matcher.isNothing();
    m_hitRows.clear();
    begin(&m_hits);
}

void RowSurvey::setLevelsWanted(const QObject *user, bool on)
{
    if (on)
        m_levelUsers.insert(user);
    else
        m_levelUsers.remove(user);
    if (m_levels.isWanted == !m_levelUsers.isEmpty())
        return;
    m_levels.isWanted = !m_levelUsers.isEmpty();
    m_errorRows.clear();
    m_warningRows.clear();
    begin(&m_levels);
}

void RowSurvey::setTimesWanted(bool on)
{
    if (m_times.isWanted == on)
        return;
    m_times.isWanted = on;
    m_bins.clear();
    begin(&m_times);
}

void RowSurvey::beginAnew()
{
    for (RowCells *cells : {&m_hitRows, &m_errorRows, &m_warningRows})
        cells->clear();
    m_bins.clear();
    for (Pass *pass : {&m_hits, &m_levels, &m_times})
        begin(pass);
}

void RowSurvey::begin(Pass *pass)
{
    if (pass == &m_hits) {
        m_judge.reset();
        if (const QAbstractItemModel *source = m_find->source())
            m_judge.emplace(m_columns, m_sought).setSource(source);
    }
    m_clock.reset();
    pass->lastRow = -1;
    pass->left.clear();
    if (pass->isWanted)
        pass->left.begin(std::clamp(m_table->rowAt(0), 0, qMax(rows() - 1, 0)), rows());
    goOn();
}

void RowSurvey::goOn()
{
    if (!isComplete() && !m_timer.isActive())
        m_timer.start(0);
    if (!m_tellTimer.isActive())
        m_tellTimer.start();
}

void RowSurvey::rowsCame(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    if (last + 1 != rows()) {
        beginAnew();
        return;
    }
    for (Pass *pass : {&m_hits, &m_levels, &m_times}) {
        if (pass->isWanted)
            pass->left.append(first, last + 1);
    }
    goOn();
}

//! The last line of a file may grow; other changes are rare.
void RowSurvey::rowsChanged(const QModelIndex &first, const QModelIndex &last)
{
    if (first.row() != last.row()) {
        beginAnew();
        return;
    }
    for (Pass *pass : {&m_hits, &m_levels, &m_times})
        countAgain(pass, first.row());
    goOn();
}

void RowSurvey::countAgain(Pass *pass, int row)
{
    if (!pass->isWanted || pass->left.contains(row))
        return;
    if (row != pass->lastRow) {
        beginAnew();
        return;
    }
    if (const auto takeBack = std::exchange(pass->takeBack, nullptr))
        takeBack();
    pass->left.append(row, row + 1);
}

void RowSurvey::count(Pass *pass, int row, RowCells *cells)
{
    if (cells)
        cells->add(row);
    if (row == rows() - 1)
        noteLast(pass, row, cells ? [=] { cells->add(row, -1); } : std::function<void()>());
}

void RowSurvey::noteLast(Pass *pass, int row, const std::function<void()> &takeBack)
{
    pass->lastRow = row;
    pass->takeBack = takeBack;
}

//! What somebody looks for comes first.
void RowSurvey::work()
{
    if (!m_model)
        return;
    if (m_find->isFiltering()) { // somebody waits for that
        m_timer.start(s_tellTime);
        return;
    }
    QElapsedTimer since;
    since.start();
    while (!isComplete() && since.elapsed() < slice) {
        // Seeking goes through a block of the file at once.
        const int atOnce = m_hits.left.isEmpty() ? s_rowsAtOnce : 1;
        for (int i = 0; i < atOnce && !isComplete(); ++i) {
            if (!m_hits.left.isEmpty())
                seek();
            else if (!m_levels.left.isEmpty())
                judgeLevel();
            else
                tellTime();
        }
    }
    goOn();
}

int RowSurvey::sourceRow(int row) const
{
    return m_find->showsSource() ? row : m_find->toSource(m_model->index(row, 0)).row();
}

const TextFileModel *RowSurvey::lines() const
{
    return qobject_cast<const TextFileModel *>(m_find->source());
}

//! Looks at some rows for what is looked for; at those that are filtered or sorted one by one, as
//! others may be between them.
void RowSurvey::seek()
{
    const int row = m_hits.left.next();
    const int first = sourceRow(row);
    const int end = m_find->showsSource() ? m_hits.left.end() : first + 1;
    m_found.clear();
    const int next = row + m_judge->judge(first, end, &m_found) - first;
    for (const int hit : m_found)
        count(&m_hits, row + hit - first, &m_hitRows);
    const bool isLastHit = !m_found.empty() && row + m_found.back() - first == rows() - 1;
    if (next == rows() && !isLastHit) // what grows may have it then
        count(&m_hits, rows() - 1, nullptr);
    m_hits.left.goOn(next);
}

void RowSurvey::judgeLevel()
{
    const int row = m_levels.left.next();
    RowCells *cells = nullptr;
    switch (levelOfRow(row)) {
    case LogLevel::Error:
        cells = &m_errorRows;
        break;
    case LogLevel::Warning:
        cells = &m_warningRows;
        break;
    case LogLevel::None:
    case LogLevel::Debug:
    case LogLevel::Info:
        break;
    }
    count(&m_levels, row, cells);
    m_levels.left.goOn(row + 1);
}

void RowSurvey::tellTime()
{
    const int row = m_times.left.next();
    m_times.left.goOn(row + 1);
    if (!m_find->source())
        return;
    if (!m_clock)
        m_clock.emplace(*m_find->source());
    const auto time = m_clock->timeOf(sourceRow(row));
    if (m_bins.isEmpty() && time)
        m_haveDates = time->hasDate;
    const bool isCounted = time && time->hasDate == m_haveDates;
    const LogLevel level = isCounted ? levelOfRow(row) : LogLevel::None;
    if (isCounted)
        m_bins.add(time->clock, level);
    if (row != rows() - 1)
        return;
    noteLast(&m_times, row,
             isCounted ? [=, this, clock = time->clock] { m_bins.add(clock, level, -1); }
                       : std::function<void()>());
}

LogLevel RowSurvey::levelOfRow(int row) const
{
    const TextFileModel *file = lines();
    if (file && file->hasAsciiBytes()) {
        if (file->isJournal())
            return Journal::levelOf(file->rowView(sourceRow(row), Journal::lineBytes));
        const QByteArrayView bytes = file->rowView(sourceRow(row), levelBytes);
        if (isAsciiOnly(bytes))
            return levelOfAscii(bytes);
    }
    QString text;
    for (int column = 0; column < m_model->columnCount(); ++column)
        text += m_model->index(row, column).data().toString() + u' ';
    return levelOf(text);
}
