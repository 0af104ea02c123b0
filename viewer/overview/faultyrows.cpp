// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "faultyrows.h"

#include "files/textfilemodel.h"

#include <QElapsedTimer>

#include <bit>

namespace {

constexpr int s_tellPause = 100;   // ms
constexpr int s_waitForIndex = 50; // ms
constexpr int s_rowsPerLook = 64;  // between two looks at the clock

bool isBeingIndexed(const TextFileModel &model)
{
    return model.activity() == TextFileModel::Activity::Indexing
        && model.indexedBytes() < model.fileSize();
}

} // namespace

FaultyRows::FaultyRows(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &FaultyRows::work);
    m_tellTimer.setSingleShot(true);
    m_tellTimer.setInterval(s_tellPause);
    connect(&m_tellTimer, &QTimer::timeout, this, &FaultyRows::changed);
}

void FaultyRows::setModel(TextFileModel *model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &FaultyRows::goOn);
        connect(model, &QAbstractItemModel::dataChanged, this, &FaultyRows::rowsChanged);
        connect(model, &QAbstractItemModel::modelReset, this, &FaultyRows::beginAnew);
        connect(model, &QObject::destroyed, this, &FaultyRows::beginAnew);
    }
    beginAnew();
}

qint64 FaultyRows::count(RecordFault fault) const
{
    return m_counts[size_t(std::countr_zero(unsigned(fault)))];
}

bool FaultyRows::isComplete() const
{
    return !m_model || !m_model->format().isDelimited() || m_next >= m_model->rowCount();
}

void FaultyRows::beginAnew()
{
    m_rows.clear();
    m_count = 0;
    m_counts.fill(0);
    m_next = 0;
    m_lastFaults = {};
    m_tellTimer.start();
    goOn();
}

void FaultyRows::goOn()
{
    if (!isComplete() && !m_timer.isActive())
        m_timer.start(0);
}

//! The last record of a file may grow; other changes are rare.
void FaultyRows::rowsChanged(const QModelIndex &first, const QModelIndex &last)
{
    if (first.row() >= m_next)
        return;
    if (first.row() != last.row() || first.row() != m_next - 1) {
        beginAnew();
        return;
    }
    add(m_lastFaults, -1);
    --m_next;
    if (!m_rows.isEmpty() && m_rows.constLast() == m_next)
        m_rows.removeLast();
    goOn();
}

//! Indexing comes first: it is what somebody waits for.
void FaultyRows::work()
{
    if (isComplete())
        return;
    if (isBeingIndexed(*m_model)) {
        m_timer.start(s_waitForIndex);
        return;
    }
    QElapsedTimer since;
    since.start();
    while (!isComplete() && since.elapsed() < slice) {
        for (int i = 0; i < s_rowsPerLook && !isComplete(); ++i)
            look(m_next++);
    }
    goOn();
}

void FaultyRows::look(int row)
{
    m_lastFaults = m_model->faultsInTurn(row);
    if (!m_lastFaults)
        return;
    add(m_lastFaults, 1);
    if (m_rows.size() < most)
        m_rows.append(row);
}

void FaultyRows::add(RecordFaults faults, int howOften)
{
    if (!faults)
        return;
    m_count += howOften;
    for (size_t bit = 0; bit < m_counts.size(); ++bit)
        m_counts[bit] += faults.testFlag(RecordFault(1 << bit)) ? howOften : 0;
    if (!m_tellTimer.isActive())
        m_tellTimer.start();
}
