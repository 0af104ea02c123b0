// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "marksmenu.h"

#include "marksdialog.h"
#include "qtablefastview.h"
#include "rowstep.h"
#include "search/tablefilter.h"

#include <QAbstractItemModel>

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

void MarksMenu::step(bool forward)
{
    const RowStep next = stepAmong(m_marks.rows(), forward, *m_find, *m_table);
    if (next.row < 0) {
        Q_EMIT said(tr("There is no other mark."));
        return;
    }
    Q_EMIT rowChosen(next.row);
    if (!next.isRound)
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
