// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "marksmenu.h"

#include "marksdialog.h"
#include "qtablefastview.h"
#include "search/tablefilter.h"

#include <QAbstractItemModel>

#include <algorithm>

MarksMenu::MarksMenu(TableFilter *find, QTableFastView *table, QWidget *parent)
    : QMenu(tr("&Marks"), parent)
    , m_find(find)
    , m_table(table)
{
    createActions();
    connect(find, &TableFilter::modelShown, this, &MarksMenu::followSource);
    connect(&m_marks, &MarkedRows::changed, this, &MarksMenu::updateActions);
    updateActions();
}

void MarksMenu::createActions()
{
    m_markAction = addAction(tr("&Mark or Unmark Row"), this, &MarksMenu::markCurrent);
    m_markAction->setShortcut(Qt::CTRL | Qt::Key_M);
    m_nextAction = addAction(tr("&Next Mark"), this, [this] { step(true); });
    m_nextAction->setShortcut(Qt::Key_F2);
    m_prevAction = addAction(tr("&Previous Mark"), this, [this] { step(false); });
    m_prevAction->setShortcut(Qt::SHIFT | Qt::Key_F2);
    addSeparator();
    m_listAction = addAction(tr("&List of Marks…"), this, &MarksMenu::showList);
    m_removeAction = addAction(tr("&Remove All Marks"), &m_marks, &MarkedRows::removeAll);
}

void MarksMenu::followSource()
{
    m_marks.setModel(m_find->source());
}

void MarksMenu::updateActions()
{
    for (QAction *action : {m_nextAction, m_prevAction, m_listAction, m_removeAction})
        action->setEnabled(!m_marks.isEmpty());
}

bool MarksMenu::isMarked(int row) const
{
    return !m_marks.isEmpty()
        && m_marks.isMarked(m_find->toSource(m_table->model()->index(row, 0)).row());
}

void MarksMenu::markCurrent()
{
    const QModelIndex current = m_find->toSource(m_table->currentIndex());
    Q_EMIT said(current.isValid() ? QString() : tr("Choose a row to mark."));
    m_marks.toggle(current.row());
}

//! Goes to the nearest mark in that direction, beyond the end to the one that is farthest in
//! the other. Marks that lead to the current row lead nowhere.
void MarksMenu::step(bool forward)
{
    QList<int> rows = m_marks.rows();
    if (!forward)
        std::reverse(rows.begin(), rows.end());
    const QModelIndex current = m_table->currentIndex();
    const int from = current.isValid() ? m_find->toSource(current).row() : -1;
    const bool hasFrom = from >= 0;
    const auto isAhead = [=](int row) { return forward ? row > from : !hasFrom || row < from; };
    const auto ahead = std::find_if(rows.begin(), rows.end(), isAhead);
    const qsizetype begun = ahead - rows.begin();
    std::rotate(rows.begin(), ahead, rows.end());
    const auto leads = [&](int row) {
        const int shown = m_find->rowNear(row);
        return shown >= 0 && shown != current.row();
    };
    const auto found = std::find_if(rows.begin(), rows.end(), leads);
    if (found == rows.end()) {
        Q_EMIT said(tr("There is no other mark."));
        return;
    }
    const bool isRound = begun + (found - rows.begin()) >= rows.size();
    Q_EMIT rowChosen(*found);
    if (!isRound)
        Q_EMIT said(QString());
    else
        Q_EMIT said(forward ? tr("Went on with the first mark") : tr("Went on with the last mark"));
}

void MarksMenu::showList()
{
    auto *dialog = new MarksDialog(m_marks, *m_find->source(), parentWidget());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &MarksDialog::rowChosen, this, &MarksMenu::rowChosen);
    dialog->open();
}
