// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "columnmenu.h"

#include "columnsort.h"
#include "viewertable.h"

#include <QActionGroup>
#include <QHeaderView>
#include <QSettings>

namespace {

constexpr int s_longestEntry = 40; // characters

const QLatin1String s_keepsLineNumbers("columns/keepsLineNumbers");

} // namespace

ColumnMenu::ColumnMenu(ViewerTable *table, ColumnSort *sort, QWidget *parent)
    : QMenu(tr("&Columns"), parent)
    , m_table(table)
    , m_sort(sort)
{
    table->setKeepsLineNumbers(QSettings().value(s_keepsLineNumbers, true).toBool());
    QHeaderView *header = table->header();
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, &ColumnMenu::openAt);
    connect(this, &QMenu::aboutToShow, this,
            [this] { fill(m_column >= 0 ? m_column : m_table->currentIndex().column()); });
    connect(this, &QMenu::aboutToHide, this, [this] { m_column = -1; });
}

void ColumnMenu::openAt(QPoint place)
{
    const QHeaderView *header = m_table->header();
    m_column = m_table->columnAt(place.x());
    popup(header->viewport()->mapToGlobal(place));
}

//! What can be done to \a column, if it is one, and to all of them.
void ColumnMenu::fill(int column)
{
    clear();
    if (m_table->header()->count() == 0) {
        addAction(tr("There are no columns"))->setEnabled(false);
        return;
    }
    if (column >= 0)
        addColumn(column);
    addAction(tr("Fit &All Columns"), m_table, &ViewerTable::fitColumns);
    addOptions();
    addSeparator();
    addChoices();
}

//! What all windows remember.
void ColumnMenu::addOptions()
{
    if (!m_table->hasLineNumbers())
        return;
    QAction *action = addAction(tr("&Keep Line Numbers in Sight"));
    action->setCheckable(true);
    action->setChecked(m_table->keepsLineNumbers());
    connect(action, &QAction::triggered, m_table, [this](bool on) {
        m_table->setKeepsLineNumbers(on);
        QSettings().setValue(s_keepsLineNumbers, on);
    });
}

void ColumnMenu::addColumn(int column)
{
    const QString name = nameOf(column);
    m_sort->addActions(addMenu(tr("&Sort by “%1”").arg(name)), column);
    addAction(tr("&Hide “%1”").arg(name), m_table, [this, column] {
        m_table->header()->hideSection(column);
    })->setEnabled(shownColumns() > 1);
    addAction(tr("&Fit “%1”").arg(name), m_table, [this, column] { m_table->fitColumn(column); });
    addAlignments(column);
    QAction *groups = addAction(tr("Gr&oup Digits of “%1”").arg(name));
    groups->setCheckable(true);
    groups->setChecked(m_table->hasDigitGroups(column));
    connect(groups, &QAction::triggered, m_table,
            [this, column](bool on) { m_table->setDigitGroups(column, on); });
}

void ColumnMenu::addAlignments(int column)
{
    QMenu *menu = addMenu(tr("Ali&gn “%1”").arg(nameOf(column)));
    auto *group = new QActionGroup(menu);
    const auto add = [&](const QString &text, Qt::Alignment alignment) {
        QAction *action = group->addAction(menu->addAction(text));
        action->setCheckable(true);
        action->setChecked(m_table->columnAlignment(column) == alignment);
        connect(action, &QAction::triggered, m_table,
                [this, column, alignment] { m_table->setColumnAlignment(column, alignment); });
    };
    add(tr("As the &File Wants"), Qt::Alignment());
    add(tr("&Left"), Qt::AlignLeft);
    add(tr("&Centre"), Qt::AlignHCenter);
    add(tr("&Right"), Qt::AlignRight);
}

//! The last column that is shown cannot be hidden: nobody would see where the others are.
void ColumnMenu::addChoices()
{
    QHeaderView *header = m_table->header();
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        QAction *action = addAction(nameOf(column));
        action->setCheckable(true);
        action->setChecked(!header->isSectionHidden(column));
        action->setEnabled(header->isSectionHidden(column) || shownColumns() > 1);
        connect(action, &QAction::toggled, header,
                [header, column](bool isShown) { header->setSectionHidden(column, !isShown); });
    }
}

int ColumnMenu::shownColumns() const
{
    const QHeaderView *header = m_table->header();
    return header->count() - header->hiddenSectionCount();
}

QString ColumnMenu::nameOf(int column) const
{
    QString name = m_table->model()->headerData(column, Qt::Horizontal).toString().simplified();
    if (name.size() > s_longestEntry)
        name = name.left(s_longestEntry) + QChar(0x2026);
    return name.replace(u'&', QLatin1String("&&"));
}
