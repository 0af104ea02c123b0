// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowfollower.h"

#include "viewertable.h"

#include <QHeaderView>
#include <QScrollBar>

#include <utility>

RowFollower::RowFollower(ViewerTable *table)
    : QObject(table)
    , m_table(table)
{
    m_pinTimer.setSingleShot(true);
    connect(&m_pinTimer, &QTimer::timeout, this, &RowFollower::keepToEdge);
    const QScrollBar *bar = m_table->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &RowFollower::barMoved);
    connect(bar, &QScrollBar::rangeChanged, this, [this] {
        if (m_isFollowing)
            m_pinTimer.start(0);
    });
    connect(m_table, &ViewerTable::rowPressed, this, [this] { setFollowing(false); });
    // The newest row is where the user follows again.
    connect(m_table, &ViewerTable::rowReached, this,
            [this] { setFollowing(isNewest(m_table->currentIndex()) && isAtEdge()); });
}

void RowFollower::setEdge(Edge edge)
{
    m_edge = edge;
    setFollowing(m_isFollowing);
}

void RowFollower::setFollowing(bool on)
{
    const bool was = std::exchange(m_isFollowing, on);
    // Decides where the view keeps a table that is shorter than the window.
    const bool keepTop = on == (m_edge == Edge::Top);
    if (!m_table->header()->isSortIndicatorShown())
        m_table->header()->setSortIndicator(-1, keepTop ? Qt::AscendingOrder : Qt::DescendingOrder);
    keepToEdge();
    if (was != on)
        Q_EMIT followingChanged(on);
}

bool RowFollower::isAtEdge() const
{
    const QScrollBar *bar = m_table->verticalScrollBar();
    return bar->value() == (m_edge == Edge::Top ? bar->minimum() : bar->maximum());
}

bool RowFollower::isNewest(const QModelIndex &index) const
{
    return index.isValid()
        && index.row() == (m_edge == Edge::Top ? 0 : m_table->model()->rowCount() - 1);
}

void RowFollower::keepToEdge()
{
    QScrollBar *bar = m_table->verticalScrollBar();
    if (m_isFollowing)
        bar->setValue(m_edge == Edge::Top ? bar->minimum() : bar->maximum());
}

//! The view was connected before: what the model announces has reached it when these
//! slots run at the end of a change.
void RowFollower::follow(QAbstractItemModel *model)
{
    using Model = QAbstractItemModel;
    connect(model, &Model::modelAboutToBeReset, this, &RowFollower::beginChange,
            Qt::UniqueConnection);
    connect(model, &Model::rowsAboutToBeInserted, this, &RowFollower::beginChange,
            Qt::UniqueConnection);
    connect(model, &Model::rowsInserted, this, &RowFollower::endChange, Qt::UniqueConnection);
    connect(model, &Model::modelReset, this, &RowFollower::endChange, Qt::UniqueConnection);
    connect(model, &Model::rowsRemoved, this, &RowFollower::rowsChanged, Qt::UniqueConnection);
    endChange();
    keepToEdge();
}

//! A view at its edge stays there by itself. If that is not wanted, what is seen now is seen
//! after the change as well.
void RowFollower::beginChange()
{
    m_modelChanges = true;
    const QAbstractItemModel *model = m_table->model();
    const bool isHeld = !m_isFollowing && isAtEdge() && model && model->rowCount() > 0;
    m_held = isHeld ? model->index(qMax(m_table->firstSeenRow(), 0), 0) : QModelIndex();
}

void RowFollower::endChange()
{
    keepHeldRows();
    m_modelChanges = false;
    if (m_isFollowing)
        m_pinTimer.start(0);
    Q_EMIT rowsChanged();
}

void RowFollower::keepHeldRows()
{
    if (!m_held.isValid() || m_held.model() != m_table->model())
        return;
    m_table->verticalScrollBar()->setValue(m_held.row());
    m_held = QModelIndex();
}

void RowFollower::barMoved()
{
    const bool isMovedByUser = !m_modelChanges && !m_table->isFitting();
    if (isMovedByUser && m_isFollowing != isAtEdge())
        setFollowing(isAtEdge());
}
