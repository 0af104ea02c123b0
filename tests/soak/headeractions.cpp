// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What programs and users do to a header, at any time: while a model tells of its change,
// too, before the view hears of it and after.

#include "world.h"

#include <QHeaderView>

const QList<World::Choice> &World::headerChoices()
{
    static const QList<Choice> choices {
        {4, &World::resizeColumn},  {3, &World::moveColumn},    {3, &World::hideColumn},
        {2, &World::showColumns},   {3, &World::swapColumns},   {3, &World::stretchLast},
        {4, &World::setResizeMode}, {1, &World::setCascading},  {2, &World::setSectionBounds},
        {1, &World::saveHeader},    {1, &World::restoreHeader}, {1, &World::resizeToContents},
    };
    return choices;
}

void World::changeHeader()
{
    act(headerChoices());
}

void World::swapColumns()
{
    const int count = m_view->header()->count();
    const int a = below(count);
    const int b = below(count);
    say(QStringLiteral("swap sections %1 and %2").arg(a).arg(b));
    m_view->header()->swapSections(a, b);
}

void World::stretchLast()
{
    const bool on = chance(50);
    say(QStringLiteral("stretch the last section: %1").arg(on));
    // One hidden just before would keep its size, and the header its picture: Qt forgets
    // what it has put off when nothing stretches any more.
    (void)m_view->header()->length();
    m_view->header()->setStretchLastSection(on);
}

void World::setResizeMode()
{
    static const QHeaderView::ResizeMode modes[] = {
        QHeaderView::Interactive, QHeaderView::Interactive, QHeaderView::Stretch,
        QHeaderView::Fixed, QHeaderView::ResizeToContents};
    const QHeaderView::ResizeMode mode = modes[below(int(std::size(modes)))];
    const int column = below(m_view->header()->count());
    if (chance(20)) {
        say(QStringLiteral("resize mode %1 for all columns").arg(mode));
        m_view->header()->setSectionResizeMode(mode);
        return;
    }
    say(QStringLiteral("resize mode %1 for column %2").arg(mode).arg(column));
    if (column < m_view->header()->count())
        m_view->header()->setSectionResizeMode(column, mode);
}

void World::setCascading()
{
    say(QStringLiteral("toggle cascading resizes"));
    m_view->header()->setCascadingSectionResizes(!m_view->header()->cascadingSectionResizes());
}

void World::setSectionBounds()
{
    const int minimum = below(60);
    const int maximum = minimum + 20 + below(300);
    say(QStringLiteral("sections of %1 to %2").arg(minimum).arg(maximum));
    m_view->header()->setMinimumSectionSize(minimum);
    m_view->header()->setMaximumSectionSize(maximum);
}

void World::saveHeader()
{
    say(QStringLiteral("save the header"));
    m_headerState = m_view->header()->saveState();
    m_headerCount = m_view->header()->count();
}

void World::restoreHeader()
{
    say(QStringLiteral("restore the header"));
    // The state of another number of columns makes a header that disagrees with its model.
    if (m_headerCount == m_view->header()->count() && m_headerCount == m_model->columnCount())
        m_view->header()->restoreState(m_headerState);
}

void World::resizeToContents()
{
    say(QStringLiteral("resize to contents"));
    if (chance(50))
        m_view->resizeColumnsToContents();
    else
        m_view->resizeColumnToContents(below(m_view->header()->count()));
}

void World::replaceHeader()
{
    say(QStringLiteral("replace the header"));
    auto *header = new QHeaderView(Qt::Horizontal);
    header->setSectionsMovable(true);
    m_view->setHeader(header);
}

//! Called while the model tells of a change.
void World::intrude(Intrusion most)
{
    if (m_isIntruding || !chance(8))
        return;
    m_isIntruding = true;
    m_isDisturbed = true;
    say(QStringLiteral("meanwhile"));
    if (most == Intrusion::Header || chance(60))
        changeHeader();
    else if (most == Intrusion::Cells || chance(50))
        changeCell();
    else
        selectSomething();
    m_isIntruding = false;
}

//! Has intrude() called in the middle of the model's changes: before the view hears of
//! them if this is called before the view gets the model.
void World::listen()
{
    const auto header = [this] { intrude(Intrusion::Header); };
    const auto all = [this] { intrude(Intrusion::Selection); };
    // One who selects before the selection model has heard of a move, or of a new layout, makes
    // it forget all that is selected without a word.
    const auto cells = [this] { intrude(Intrusion::Cells); };
    SoakModel *model = m_model.get();
    QObject::connect(model, &QAbstractItemModel::rowsAboutToBeInserted, model, header);
    QObject::connect(model, &QAbstractItemModel::rowsInserted, model, all);
    QObject::connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, model, header);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, model, all);
    QObject::connect(model, &QAbstractItemModel::rowsMoved, model, cells);
    QObject::connect(model, &QAbstractItemModel::dataChanged, model, all);
    QObject::connect(model, &QAbstractItemModel::layoutAboutToBeChanged, model, header);
    QObject::connect(model, &QAbstractItemModel::layoutChanged, model, cells);
    QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, model, header);
    QObject::connect(model, &QAbstractItemModel::modelReset, model, header);
}
